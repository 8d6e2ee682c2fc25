#pragma once

#include "model/line_array.h"
#include "model/room.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orva {

/// First and last joint, from 0; the range is empty when the last is below the first.
struct JointRange {
    int first = 0;
    int last = -1;

    friend bool operator==(const JointRange&, const JointRange&) = default;
};

/// The joints between the boxes that aim at audience area `number` (1..3), from the first of them
/// to the last or, where the lowest box aims at it, to that; none when no box does. An area drawn
/// from right to left counts like one drawn from left to right.
std::optional<JointRange> GetAreaSpeakers(const Room& room, const LineArray& array, int number);

/// Every joint of the array.
JointRange allJoints(const LineArray& array);

/// The configurations of a search in their order: like an odometer over the joints of the range,
/// the first joint fastest, each from its lowest to its highest splay angle.
class CandidateSet {
public:
    /// `neighbours`: only angles next to the present one. The array must have no fault().
    CandidateSet(const LineArray& array, JointRange range, bool neighbours);

    JointRange range() const { return m_range; }
    /// How many there are, at least 1; none when they are more than 64 bits count.
    std::optional<std::uint64_t> NumConfigs() const { return m_count; }
    /// The angle indices of configuration `number`, from 0; joints outside the range keep theirs.
    LineArray::Positions anglesOf(std::uint64_t number) const;
    /// The number of the configuration with those angles, each brought within its bounds.
    std::uint64_t numberOf(const LineArray::Positions& angles) const;

    /// Lowest and highest angle index of a joint of the range.
    AngleBounds boundsOf(int joint) const { return m_bounds[static_cast<std::size_t>(joint)]; }

    /// How many angles a joint of the range can have.
    std::uint64_t widthOf(int joint) const;

private:
    LineArray::Positions m_angles;
    JointRange m_range;
    std::vector<AngleBounds> m_bounds;
    std::optional<std::uint64_t> m_count;
};

} // namespace orva
