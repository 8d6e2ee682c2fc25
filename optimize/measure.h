#pragma once

#include "model/room.h"

#include <limits>
#include <span>
#include <vector>

namespace orva {

/// What the levels along an area are measured against.
enum class Measure { FitToLine, SmoothArea };

/// Stands for the measure of levels of which one is minus infinity: worse than any other.
constexpr double kNoMeasure = std::numeric_limits<double>::max();

/// The part of an audience area that is measured, and the levels wanted there: a straight line.
struct FitLineTarget {
    double startM = 0; ///< from the area's start, along it
    double lengthM = 0;
    double slopeDbPerM = 0;
    double levelDb = 0; ///< wanted at the start; absolute

    /// The whole area, 0 dB, level.
    static FitLineTarget wholeArea(const AreaSegment& area);
};

/// The part of the area that the target covers, 0.001 m long at least.
AreaSegment measuredSegment(const AreaSegment& area, const FitLineTarget& target);

/// Wanted levels at `points` (at least 2) receivers, the last at the target's end.
std::vector<float> fitReference(const FitLineTarget& target, int points);

/// Root of the mean squared distance in dB of the levels from a reference of the same length.
double RmsToFitLine(std::span<const float> levels, std::span<const float> reference);

/// Root of the mean squared difference in dB of each step between neighbouring levels (2 or more)
/// from the wanted step.
double RmsSmooth(std::span<const float> levels, double step);

} // namespace orva
