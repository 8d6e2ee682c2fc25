#pragma once

#include "model/vector_math.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace orva {

enum class BoxKind { Straight, Trapezoidal, Bass };

/// One kind of box in its own frame: origin at the top front corner, the hinge by which it hangs
/// from the box above; x forward along its axis, y down the front; metres.
struct BoxShape {
    FloatPair hinge; ///< bottom front corner: the top front corner of the next box
    FloatPair bottomRear;
    FloatPair topRear;
    float weightKg;
    FloatPair centerOfGravity;
    FloatPair source; ///< acoustic source point
};

/// Dimensions and weights of a system's boxes.
struct BoxGeometry {
    FloatPair topFront;
    BoxShape straight;
    BoxShape trapezoidal;
    BoxShape bass;
    std::array<FloatPair, 3> marks; ///< triangle of the horn, drawn in each mid/high box
    std::array<float, 3> drawing;   ///< further drawing constants

    const BoxShape& shape(BoxKind kind) const;
};

/// The cradle (rigging frame) in the array frame: origin at the top front corner of the top box,
/// x forward, y down, before any tilt; metres.
struct CradleGeometry {
    std::array<FloatPair, 4> outline;
    float pinRadius;
    std::vector<float> PinX; ///< pin 0 nearest the front
    std::vector<float> PinY;

    std::int16_t pinCount() const { return static_cast<std::int16_t>(PinX.size()); }
};

/// Lowest and highest splay-angle index that a joint allows, inclusive.
using AngleBounds = std::array<std::int16_t, 2>;

/// Everything in which the two systems differ; immutable.
struct SystemRecord {
    BoxGeometry boxes;
    CradleGeometry cradle;
    std::int16_t TypeCodeGerade;
    std::int16_t TypeCodeSchräg;
    std::int16_t TypeCodeBass;
    AngleBounds bassBass;
    AngleBounds bassTrapezoidal;
    AngleBounds bassStraight;
    AngleBounds straightStraight;
    AngleBounds straightTrapezoidal;
    AngleBounds trapezoidalTrapezoidal;

    /// None for a code that is no box of this system.
    std::optional<BoxKind> kindOf(std::int16_t typeCode) const;
};

constexpr std::int16_t kStandardSystem = 0;
constexpr std::int16_t kCompactSystem = 1;

/// The standard system for 0, the compact system for any other value.
const SystemRecord& systemRecord(std::int16_t arrayType);

} // namespace orva
