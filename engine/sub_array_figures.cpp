#include "engine/sub_array_figures.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

double rounded(double value)
{
    return std::nearbyint(value * 100) / 100;
}

} // namespace

SubArrayFigures subArrayFigures(const SubArray& subArray, double speedOfSound, double lengthFactor)
{
    const double h = std::tan(subArray.openingAngleDeg * 0.017453292 / 2);
    SubArrayFigures figures{};
    for (std::size_t i = 0; i < subArray.SubPos.size(); ++i) {
        const double distance = std::abs(subArray.SubPos[i] * h);
        figures.virtualDistance[i] = rounded(distance * lengthFactor) / lengthFactor;
        figures.delay[i] = rounded(1000 / speedOfSound * rounded(distance));
    }
    return figures;
}

double openingAngle(double degrees)
{
    return std::clamp(rounded(degrees), 0.0, 270.0);
}

} // namespace orva
