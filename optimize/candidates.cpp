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

CandidateSet::CandidateSet(const LineArray& array, JointRange range, bool neighbours,
                           const Freedom& freedom)
    : m_angles(array.GIAGetAllAngle()),
      m_range(range),
      m_bounds(array.IAGetAngleBounds()),
      m_freedom(freedom),
      m_heightM(array.GFAGetCradleCoord()[1]),
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
        m_widths.push_back(widthOf(joint));
    }
    if (freedom.pins)
        m_widths.push_back(static_cast<std::uint64_t>(array.system().cradle.pinCount()));
    if (!freedom.heightsM.empty())
        m_widths.push_back(freedom.heightsM.size());
    for (const std::uint64_t width : m_widths)
        if (!m_count || *m_count > std::numeric_limits<std::uint64_t>::max() / width)
            m_count.reset();
        else
            *m_count *= width;
}

std::uint64_t CandidateSet::widthOf(int joint) const
{
    const AngleBounds bounds = boundsOf(joint);
    return static_cast<std::uint64_t>(bounds[1] - bounds[0]) + 1;
}

CandidateSet::Digits CandidateSet::digitsOf(std::uint64_t number) const
{
    Digits digits;
    for (const std::uint64_t width : m_widths) {
        digits.push_back(number % width);
        number /= width;
    }
    return digits;
}

std::uint64_t CandidateSet::numberOf(const Digits& digits) const
{
    std::uint64_t number = 0;
    for (std::size_t digit = digits.size(); digit > 0; --digit)
        number = number * m_widths[digit - 1] + digits[digit - 1];
    return number;
}

Configuration CandidateSet::configurationOf(std::uint64_t number) const
{
    Configuration configuration{m_angles, {}};
    for (std::size_t digit = 0; digit < m_widths.size(); ++digit) {
        turn(configuration, digit, number % m_widths[digit]);
        number /= m_widths[digit];
    }
    return configuration;
}

std::uint64_t CandidateSet::numberOf(const LineArray::Positions& angles) const
{
    Digits digits;
    for (int joint = m_range.first; joint <= m_range.last; ++joint) {
        const AngleBounds bounds = boundsOf(joint);
        const std::int16_t angle =
            std::clamp(angles[static_cast<std::size_t>(joint) + 1], bounds[0], bounds[1]);
        digits.push_back(static_cast<std::uint64_t>(angle - bounds[0]));
    }
    if (m_freedom.pins)
        digits.push_back(std::clamp<std::uint64_t>(
            static_cast<std::uint64_t>(std::max<std::int16_t>(0, angles[0])), 0,
            m_widths[joints()] - 1));
    if (!m_freedom.heightsM.empty()) { // the one nearest to the present height
        const auto& heights = m_freedom.heightsM;
        const auto nearest =
            std::min_element(heights.begin(), heights.end(), [this](float a, float b) {
                return std::abs(a - m_heightM) < std::abs(b - m_heightM);
            });
        digits.push_back(static_cast<std::uint64_t>(nearest - heights.begin()));
    }
    return numberOf(digits);
}

CandidateWalk::CandidateWalk(const CandidateSet& set, const std::vector<std::size_t>& turning,
                             std::uint64_t base)
    : m_set(set), m_base(base), m_number(base), m_configuration(set.configurationOf(base))
{
    for (const std::size_t digit : turning) {
        std::uint64_t stride = 1;
        for (std::size_t faster = 0; faster < digit; ++faster)
            stride *= set.widths()[faster];
        m_wheels.push_back({digit, set.widths()[digit], stride, 0});
    }
}

void CandidateWalk::seek(std::uint64_t place)
{
    m_number = m_base;
    for (Wheel& wheel : m_wheels) {
        wheel.place = place % wheel.width;
        place /= wheel.width;
        m_number += wheel.place * wheel.stride;
        m_set.turn(m_configuration, wheel.digit, wheel.place);
    }
}

void CandidateWalk::next()
{
    for (Wheel& wheel : m_wheels) {
        const bool over = ++wheel.place == wheel.width;
        if (over)
            wheel.place = 0;
        m_set.turn(m_configuration, wheel.digit, wheel.place);
        if (!over) {
            m_number += wheel.stride;
            return;
        }
        m_number -= (wheel.width - 1) * wheel.stride;
    }
}

} // namespace orva
