#pragma once

#include "engine/spl_map.h"

#include <optional>
#include <span>

namespace orva {

/// B less A in dB; minus infinity where one of them is silent.
float levelDifference(float a, float b);

/// That of each cell of two maps of the same grid, with its largest and smallest finite value; both
/// minus infinity where there is none.
SummedMap mapDifference(const SummedMap& a, const SummedMap& b);

/// B less A along the same receivers, dB; where one is silent they do not count.
struct DifferenceFigures {
    double mean;
    float max;
    float min;
};
/// None where one is silent everywhere.
std::optional<DifferenceFigures> differenceFigures(std::span<const float> a,
                                                   std::span<const float> b);

} // namespace orva
