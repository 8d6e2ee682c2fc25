#pragma once

#include "optimize/evaluator.h"

#include <string>

namespace orva {

/// 16 hexadecimal digits over all that changes a measure or the order of the configurations: array,
/// areas with targets and weights, the number of the first, measure with its change per doubling,
/// points, bands, weighting, loudspeaker data, air, joints and their bounds, what else is free.
/// Equal on every machine: FNV-1a, 64 bits, over the fields one after another, whole numbers as 8
/// bytes and figures as the 8 bytes of a double, both from the lowest byte on.
std::string searchFingerprint(const SearchTask& task, const CandidateSet& candidates, int area);

} // namespace orva
