#pragma once

#include "engine/line_spl.h"

#include <optional>
#include <span>

namespace orva {

/// Receivers along an audience area from which its figures come.
constexpr int kAreaReceivers = 200;

/// How loud and how even an area is, dB.
struct AreaFigures {
    double mean;   ///< arithmetic mean of the dB figures
    double spread; ///< largest less smallest
};

/// Of the levels of an area; silent receivers do not count. None where all are silent.
std::optional<AreaFigures> areaFigures(std::span<const float> levels);

/// The mean over areas, each of which counts alike.
std::optional<double> audienceMean(std::span<const std::optional<AreaFigures>> areas);

} // namespace orva
