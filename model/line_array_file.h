#pragma once

#include "model/byte_stream.h"
#include "model/vector_math.h"

#include <array>
#include <cstdint>

namespace orva {

/// Fields that the current and the previous layout of the array block have in common.

/// A box count from `low` to 32; `kind` names the boxes in the error. Stored only when in range.
Result<Done> readBoxCount(ByteReader& in, Text kind, int low, std::int16_t& count);

void readPositions(ByteReader& in, std::array<std::int16_t, 32>& list);

/// The end that both layouts share: the two points and three booleans (+1 true, -1 false, anything
/// else an error).
struct ArrayPlacing {
    FloatPair cradleCoord;
    FloatPair bassBoxCoord;
    bool bassBox;
    bool mounting;
    bool angleOrPin;
};
Result<ArrayPlacing> readPlacing(ByteReader& in);

} // namespace orva
