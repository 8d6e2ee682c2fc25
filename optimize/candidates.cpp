#include "optimize/candidates.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orva {

std::optional<JointRange> GetAreaSpeakers(const Room& room, const LineArray& array, int number)
{
    if (number < 1 || number > Room::kAreas)
        return std::nullopt;
    const Segment area = room.area(number);
    int first = -1;
    int last = -1;
    int i = 0;
    for (const LineArray::BoxAxis& axis : array.axes()) {
        const bool aims = Ray(axis.from, axis.angleDeg).meets(area).has_value();
        if (aims && first == -1)
            first = i;
        if (!aims && first != -1 && last == -1)
            last = i - 1;
        if (aims && i == array.boxCount() - 1)
            last = i;
        ++i;
    }
    if (first == -1)
        return std::nullopt;
    // From boxes to the joints above them.
    JointRange range = {std::max(first - 1, 0), std::max(last - 1, 0)};
    range.last = std::min(range.last, array.boxCount() - 2);
    return range;
}

JointRange allJoints(const LineArray& array)
{
    return {0, array.boxCount() - 2};
}

CandidateSet::CandidateSet(const LineArray& array, JointRange range, bool neighbours)
    : m_angles(array.GIAGetAllAngle()),
      m_range(range),
      m_bounds(array.IAGetAngleBounds()),
      m_count(1)
{
    for (int joint = range.first; joint <= range.last; ++joint) {
        AngleBounds& bounds = m_bounds[static_cast<std::size_t>(joint)];
        const std::int16_t now = m_angles[static_cast<std::size_t>(joint) + 1];
        if (neighbours) {
            const auto low = static_cast<std::int16_t>(now - 1);
            const auto high = static_cast<std::int16_t>(now + 1);
            const std::int16_t nearest = std::clamp(now, bounds[0], bounds[1]);
            bounds = {std::max(bounds[0], low), std::min(bounds[1], high)};
            if (bounds[0] > bounds[1]) // the present angle is not allowed
                bounds = {nearest, nearest};
        }
        if (!m_count || *m_count > std::numeric_limits<std::uint64_t>::max() / widthOf(joint))
            m_count.reset();
        else
            *m_count *= widthOf(joint);
    }
}

std::uint64_t CandidateSet::widthOf(int joint) const
{
    const AngleBounds bounds = boundsOf(joint);
    return static_cast<std::uint64_t>(bounds[1] - bounds[0]) + 1;
}

LineArray::Positions CandidateSet::anglesOf(std::uint64_t number) const
{
    LineArray::Positions angles = m_angles;
    for (int joint = m_range.first; joint <= m_range.last; ++joint) {
        const std::uint64_t width = widthOf(joint);
        angles[static_cast<std::size_t>(joint) + 1] =
            static_cast<std::int16_t>(boundsOf(joint)[0] + static_cast<int>(number % width));
        number /= width;
    }
    return angles;
}

std::uint64_t CandidateSet::numberOf(const LineArray::Positions& angles) const
{
    std::uint64_t number = 0;
    for (int joint = m_range.last; joint >= m_range.first; --joint) {
        const AngleBounds bounds = boundsOf(joint);
        const std::int16_t angle =
            std::clamp(angles[static_cast<std::size_t>(joint) + 1], bounds[0], bounds[1]);
        number = number * widthOf(joint) + static_cast<std::uint64_t>(angle - bounds[0]);
    }
    return number;
}

} // namespace orva
