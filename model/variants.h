#pragma once

#include "model/line_array.h"
#include "model/sub_array.h"

#include <array>
#include <optional>
#include <string>

namespace orva {

/// A setup that is kept beside the current one.
struct KeptSetup {
    LineArray array;
    SubArray subArray;

    friend bool operator==(const KeptSetup&, const KeptSetup&) = default;
};

/// Setups A to D of one room. The current one is the project's own array and sub array; it is not
/// kept a second time.
struct Variants {
    static constexpr std::size_t kMost = 4;
    static constexpr std::size_t kLongestName = 64; ///< bytes of UTF-8

    std::size_t current = 0;
    std::array<std::string, kMost> names; ///< UTF-8; empty: the letter alone
    std::array<std::optional<KeptSetup>, kMost> kept;

    /// Whether there is more than the one setup without a name.
    bool any() const { return *this != Variants{}; }
    static char letterOf(std::size_t variant) { return static_cast<char>('A' + variant); }

    friend bool operator==(const Variants&, const Variants&) = default;
};

} // namespace orva
