#pragma once

#include "engine/kernel_tables.h"
#include "optimize/amplitude_ball.h"

#include <span>

namespace orva {

/// What a box that is not certain to stay where it is can change of the pressure at a receiver: at
/// most over * min(spread + largest * (phase + nearer), 2 * largest) in each band.
struct BallAt {
    const AmplitudeBall::Row* row;
    const float* phase; ///< AmplitudeBall::kLanes of them
    float over;         ///< 1 / least distance, 1/m
    float nearer;
};

/// Least and largest weighted sum of the bands' powers at receivers: of their complex sums of
/// pressures (BandRow each), which so many boxes each may change. `factors`: of each lane. With the
/// machine's widest vectors up to eight.
void powerRanges(const float* sums, std::span<const BallAt> balls, std::size_t boxes,
                 const float* factors, std::span<float> low, std::span<float> high);

} // namespace orva
