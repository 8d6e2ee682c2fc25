#pragma once

#include "model/system_record.h"

#include <span>

namespace orva {

/// Every loudspeaker system that the program knows, at the place of its number. The only list of
/// them: another system is another record here, its data file and its texts.
std::span<const SystemRecord* const> allSystems();

constexpr std::int16_t kStandardSystem = 0;
constexpr std::int16_t kCompactSystem = 1;

/// Whether a system has that number.
bool isSystem(std::int16_t arrayType);
/// Its record; for any other number that of the compact system.
const SystemRecord& systemRecord(std::int16_t arrayType);

} // namespace orva
