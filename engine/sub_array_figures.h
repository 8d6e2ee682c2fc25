#pragma once

#include "model/sub_array.h"

#include <array>

namespace orva {

/// What makes a straight row of bass boxes act like an arc.
struct SubArrayFigures {
    std::array<double, 10> virtualDistance; ///< how far each box seems to stand back, metres
    std::array<double, 10> delay;           ///< ms
};

/// Rounded to two decimals; the distance in the unit that is shown (`lengthFactor` per metre), the
/// delay from the distance in metres. Never below 0.
SubArrayFigures subArrayFigures(const SubArray& subArray, double speedOfSound,
                                double lengthFactor = 1);

/// An opening angle as it is kept: two decimals, 0 to 270.
double openingAngle(double degrees);

} // namespace orva
