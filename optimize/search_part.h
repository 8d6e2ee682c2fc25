#pragma once

#include "optimize/candidates.h"
#include "optimize/search.h"

#include <string>
#include <string_view>

namespace orva {

/// What a run over a part of a search tells: enough to join it with the others of the same search.
struct PartResult {
    std::uint64_t configurations = 0; ///< of the whole search
    JointRange range;
    LineArray::Positions original{}; ///< the angles before the search
    std::string task;                ///< see searchFingerprint()
    SearchPart part;

    /// Whether both are parts of one search.
    bool belongsTo(const PartResult& other) const;
};

constexpr std::size_t kPartMaxBytes = 1 << 20;

/// Reads what `optimize` printed (JSON, members beyond those needed are passed over). An error for
/// anything that it cannot have printed: figures out of range, configurations that were not tested,
/// angles outside the joints varied that are not the original ones, a quick search, which tests no
/// part of the order. `name` stands for the file in it.
Result<PartResult> readPart(std::string_view text, std::string_view name);

} // namespace orva
