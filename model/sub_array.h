#pragma once

#include <array>

namespace orva {

/// The ground-stacked sub array: where its ten elements stand across the stage, metres from the
/// middle, and how wide it opens. Shown in the unit of the user; held in metres always.
struct SubArray {
    static constexpr std::array<float, 10> kDefaultPositions = {-9, -7, -5, -3, -1, 1, 3, 5, 7, 9};

    std::array<float, 10> SubPos = kDefaultPositions;
    float openingAngleDeg = 45;

    friend bool operator==(const SubArray&, const SubArray&) = default;
};

} // namespace orva
