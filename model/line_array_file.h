#pragma once

#include "model/byte_stream.h"

#include <array>
#include <cstdint>

namespace orva {

/// Fields that the current and the previous layout of the array block have in common.

/// A box count from `low` to 32; `kind` names the boxes in the error. Stored only when in range.
Result<Done> readBoxCount(ByteReader& in, std::string_view kind, int low, std::int16_t& count);

void readPositions(ByteReader& in, std::array<std::int16_t, 32>& list);

/// A boolean of the file: +1 true, -1 false, anything else an error.
Result<Done> readBoolean(ByteReader& in, bool& value);

} // namespace orva
