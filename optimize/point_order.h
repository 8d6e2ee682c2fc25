#pragma once

#include "optimize/measure.h"

#include <cstddef>
#include <vector>

namespace orva {

/// In which order the levels along a target are calculated when configurations are told apart, and
/// after how many of them it is asked whether they tell enough.
struct PointOrder {
    /// After the first `end` points of the order.
    struct Stage {
        std::size_t end;
        std::vector<std::size_t> known; ///< these points, ascending
    };

    std::vector<std::size_t> points; ///< each of them once
    std::vector<Stage> stages;       ///< the last one knows all points; ends are whole groups

    /// Points that are calculated together.
    static constexpr std::size_t kGroup = 8;

    /// Spread over the whole line, then the points between them. 2 points or more.
    static PointOrder coarseToFine(std::size_t points);

    /// Those points first that tell soonest that the given samples are worse than the third best
    /// of them. A sample holds the distances of all levels from the wanted ones in dB.
    static PointOrder learned(Measure measure, const std::vector<std::vector<double>>& samples);
};

} // namespace orva
