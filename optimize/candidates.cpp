#include "optimize/candidates.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orva {

namespace {

/// Whether the axis of a box meets the area ahead of it.
bool aimsAt(const AreaSegment& area, double x, double y, double angleDeg)
{
    const double x1 = area[0];
    const double y1 = area[1];
    const double x2 = area[2];
    const double y2 = area[3];
    const double radians = angleDeg * static_cast<double>(kRadiansPerDegree);
    const double cosine = std::cos(radians);
    const double sine = std::sin(radians);
    if (x1 == x2) {
        const double t = cosine == 0 ? -1 : (x1 - x) / cosine;
        const double hit = y + t * sine;
        return t > 0 && hit >= std::min(y1, y2) && hit <= std::max(y1, y2);
    }
    const double slope = (y2 - y1) / (x2 - x1);
    const double steepness = sine - slope * cosine;
    const double t = steepness == 0 ? -1 : ((x - x1) * slope + y1 - y) / steepness;
    const double hit = x + t * cosine;
    return t > 0 && hit >= std::min(x1, x2) && hit <= std::max(x1, x2);
}

} // namespace

std::optional<JointRange> GetAreaSpeakers(const Room& room, const LineArray& array, int number)
{
    const std::optional<AreaSegment> area = room.GFAGetAudienceAreaSelect(number);
    if (!area)
        return std::nullopt;
    const std::array<float, 96> origins = array.GFAGetOriginPTSandAng(true);
    int first = -1;
    int last = -1;
    for (int i = 0; i < array.boxCount(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const bool aims = aimsAt(*area, origins[at], origins[32 + at], origins[64 + at]);
        if (aims && first == -1)
            first = i;
        if (!aims && first != -1 && last == -1)
            last = i - 1;
        if (aims && i == array.boxCount() - 1)
            last = i;
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
