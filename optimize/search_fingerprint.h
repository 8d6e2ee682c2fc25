#pragma once

#include "optimize/evaluator.h"

#include <string>

namespace orva {

/// 16 hexadecimal digits over all that changes a measure or the order of the configurations: array,
/// area and its number, target, measure, points, bands, weighting, loudspeaker data, air, joints
/// and their bounds. Equal on every machine: FNV-1a, 64 bits, over the fields one after another,
/// whole numbers as 8 bytes and figures as the 8 bytes of a double, both from the lowest byte on.
std::string searchFingerprint(const SearchTask& task, const CandidateSet& candidates, int area);

} // namespace orva
