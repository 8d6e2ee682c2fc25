#pragma once

#include "document/history.h"

namespace orva {

/// Copies the current setup to another variant, which stays beside it; false for the current one.
bool keepAs(DocumentState& state, std::size_t variant);
/// Makes a kept variant current; the one that was is kept. False where there is none.
bool makeCurrent(DocumentState& state, std::size_t variant);
/// What is longer than a name may be is cut between characters; control characters go.
bool nameVariant(DocumentState& state, std::size_t variant, std::string_view name);
/// The array of a variant that is kept; null where there is none, its lists stand for no array
/// (then it would be the last one that they stood for), or it cannot be calculated.
const LineArray* keptArray(const DocumentState& state, std::size_t variant);
/// The first kept variant whose lists stand for no array; none: all may be written to a file.
std::optional<std::size_t> invalidVariant(const DocumentState& state);
/// "B: Narrow", or the letter alone.
std::string variantTitle(const Variants& variants, std::size_t variant);

} // namespace orva
