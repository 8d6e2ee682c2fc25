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

/// What a search varies besides joints.
struct Freedom {
    bool pins = false;             ///< every pin of the frame; the array is flown, in pin mode
    std::vector<float> heightsM{}; ///< of the pick point; none: as it is
};

/// One arrangement of an array: its angles (in pin mode the first one is the pin) and, where it is
/// varied, the height of its pick point in metres.
struct Configuration {
    LineArray::Positions angles{};
    std::optional<float> heightM{};

    friend bool operator==(const Configuration&, const Configuration&) = default;
};

/// The configurations of a search in their order: like an odometer over its digits, the first
/// fastest: the joints of the range, each from its lowest to its highest splay angle; then, where
/// they are free, the pin and the height.
class CandidateSet {
public:
    /// `neighbours`: only angles next to the present one. The array must have no fault().
    CandidateSet(const LineArray& array, JointRange range, bool neighbours,
                 const Freedom& freedom = {});

    JointRange range() const { return m_range; }
    /// How many there are, at least 1; none when they are more than 64 bits count.
    std::optional<std::uint64_t> NumConfigs() const { return m_count; }
    /// Configuration `number`, from 0; joints outside the range keep their angles.
    Configuration configurationOf(std::uint64_t number) const;
    LineArray::Positions anglesOf(std::uint64_t number) const
    {
        return configurationOf(number).angles;
    }
    const Freedom& freedom() const { return m_freedom; }

    /// The places of the digits of a configuration, the fastest first.
    using Digits = std::vector<std::uint64_t>;
    /// How many places each digit has.
    const Digits& widths() const { return m_widths; }
    Digits digitsOf(std::uint64_t number) const;
    std::uint64_t numberOf(const Digits& digits) const;
    /// Turns one digit of a configuration of this set to a place.
    void turn(Configuration& configuration, std::size_t digit, std::uint64_t place) const
    {
        const auto joint = m_range.first + static_cast<int>(digit);
        if (joint <= m_range.last)
            configuration.angles[static_cast<std::size_t>(joint) + 1] =
                static_cast<std::int16_t>(boundsOf(joint)[0] + static_cast<int>(place));
        else if (joint == m_range.last + 1 && m_freedom.pins)
            configuration.angles[0] = static_cast<std::int16_t>(place);
        else
            configuration.heightM = m_freedom.heightsM[place];
    }
    /// The number of the configuration with those angles, each brought within its bounds, and the
    /// height nearest to the present one.
    std::uint64_t numberOf(const LineArray::Positions& angles) const;

    /// Lowest and highest angle index of a joint of the range.
    AngleBounds boundsOf(int joint) const { return m_bounds[static_cast<std::size_t>(joint)]; }

    /// How many angles a joint of the range can have.
    std::uint64_t widthOf(int joint) const;
    /// How many joints there are: the first digits.
    std::size_t joints() const
    {
        return static_cast<std::size_t>(m_range.last + 1) - static_cast<std::size_t>(m_range.first);
    }

private:
    LineArray::Positions m_angles;
    JointRange m_range;
    std::vector<AngleBounds> m_bounds;
    Freedom m_freedom;
    float m_heightM; ///< as it is
    Digits m_widths;
    std::optional<std::uint64_t> m_count;
};

/// Some configurations of a set in an order of one's own: an odometer over some of its digits,
/// without a division for each step.
class CandidateWalk {
public:
    /// `turning`: the digits, the fastest first; the others stay as in configuration `base`, of
    /// which these are 0. The set outlives it. At place 0.
    CandidateWalk(const CandidateSet& set, const std::vector<std::size_t>& turning,
                  std::uint64_t base);

    void seek(std::uint64_t place);
    /// After the last place comes the first.
    void next();
    const Configuration& configuration() const { return m_configuration; }
    std::uint64_t number() const { return m_number; }

private:
    struct Wheel {
        std::size_t digit;
        std::uint64_t width;
        std::uint64_t stride; ///< of a step, in the set's order
        std::uint64_t place;
    };

    const CandidateSet& m_set;
    std::vector<Wheel> m_wheels;
    std::uint64_t m_base;
    std::uint64_t m_number;
    Configuration m_configuration;
};

} // namespace orva
