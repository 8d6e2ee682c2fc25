#pragma once

#include "model/line_array.h"

#include <optional>
#include <span>
#include <vector>

namespace orva {

/// An array whose angles change again and again, as a search has it: what the boxes above the first
/// one that turned come to is kept. All figures are to the bit those of LineArray.
class HungArray {
public:
    /// The array must have no fault().
    explicit HungArray(const LineArray& array);

    const LineArray& array() const { return m_array; }
    /// Other angles, of which those of the boxes in use count.
    void turn(const LineArray::Positions& angles);
    /// Another height of the pick point, metres.
    void hoist(float heightM);
    /// LineArray::axes().
    const std::vector<LineArray::BoxAxis>& axes() const { return m_axes; }

    /// How far the axis of a box may get from where it is.
    struct Play {
        double moveM = 0;
        double turnDeg = 0;
    };
    /// Of each box, when the joints from `first` on turn by up to so many degrees each, either way;
    /// never less than what LineArray, in 32 bits, comes to. None where another pin might come to
    /// carry the array, which would move all of it, or the array might turn over.
    std::optional<std::vector<Play>> play(int first, std::span<const double> degrees) const;

private:
    std::optional<int> certainPin(double centreMovesM) const;
    /// By up to how many degrees the array under its pin turns.
    double swingDeg(int pin, double centreMovesM) const;
    void hang(std::size_t kept);

    LineArray m_array;
    std::vector<LineArray::HungBox> m_level; ///< under a cradle that is not tilted
    std::vector<FloatPair> m_moments;        ///< of each of them and those above
    float m_tiltDeg = 0;
    FloatPair m_zero{};
    std::vector<LineArray::HungBox> m_tilted; ///< under the tilted one
    std::vector<LineArray::BoxAxis> m_axes;
};

} // namespace orva
