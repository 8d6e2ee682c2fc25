#pragma once

#include "document/history.h"

namespace orva {

/// Copies the current setup to another variant, which stays beside it; false for the current one.
bool keepAs(DocumentState& state, std::size_t variant);
/// Makes a kept variant current; the one that was is kept. False where there is none.
bool makeCurrent(DocumentState& state, std::size_t variant);
/// What is longer than a name may be is cut between characters; control characters go.
bool nameVariant(DocumentState& state, std::size_t variant, std::string_view name);
/// "B: Narrow", or the letter alone.
std::string variantTitle(const Variants& variants, std::size_t variant);

} // namespace orva
