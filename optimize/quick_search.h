#pragma once

#include "optimize/search.h"

namespace orva {

/// What a quick search found, and after how many evaluations.
struct QuickResult {
    Ranking ranking;
    std::uint64_t evaluations = 0; ///< configurations measured
    bool proved = false;           ///< every configuration was measured: there is no better one
};

/// Goes from the present setup to better ones by changing one joint or two neighbouring ones at a
/// time; then starts again, always in the same way, until several starts in a row found nothing
/// better. Finds the best of a large set after a small part of it, but only an exhaustive search
/// can tell that it is the best. `better`, which may be empty, is told of every improvement;
/// `stop`, asked before each measurement, ends it.
QuickResult quickSearch(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const std::function<bool()>& stop,
                        const std::function<void(const QuickResult&)>& better = {});

} // namespace orva
