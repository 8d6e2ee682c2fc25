#include "engine/sub_array_figures.h"

#include "lang/number_text.h"

#include <algorithm>
#include <cmath>

namespace orva {

SubArrayFigures subArrayFigures(const SubArray& subArray, double speedOfSound, double lengthFactor)
{
    const double h = std::tan(subArray.openingAngleDeg * 0.017453292 / 2);
    SubArrayFigures figures{};
    for (std::size_t i = 0; i < subArray.SubPos.size(); ++i) {
        const double distance = std::abs(subArray.SubPos[i] * h);
        figures.virtualDistance[i] = roundedTo(distance * lengthFactor, 2) / lengthFactor;
        figures.delay[i] = roundedTo(1000 / speedOfSound * roundedTo(distance, 2), 2);
    }
    return figures;
}

double openingAngle(double degrees)
{
    return std::clamp(roundedTo(degrees, 2), 0.0, 270.0);
}

} // namespace orva
