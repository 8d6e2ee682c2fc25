#pragma once

#include "document/history.h"
#include "model/result.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace orva {

/// The setup's lists and entries as they stand, appended.
void writeSetup(ByteWriter& out, const SetupForm& setup);
/// The next setup; an error for a count, choice, system or number that none can have.
Result<SetupForm> readSetup(ByteReader& in);

/// A state as bytes, invalid lists included: readState() gives an equal one.
std::vector<std::byte> writeState(const DocumentState& state);
/// `name` stands for the file in the error.
Result<DocumentState> readState(std::span<const std::byte> bytes, std::string_view name);

} // namespace orva
