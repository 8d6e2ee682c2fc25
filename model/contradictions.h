#pragma once

#include "lang/language.h"
#include "lang/message.h"
#include "model/line_array.h"

#include <optional>
#include <string>
#include <vector>

namespace orva {

/// What in an array contradicts itself, each a line in the language; empty where nothing does.
/// Numbers of boxes that are not those of the column put the centre of gravity in a wrong place,
/// and with it angles and pins; a box of unknown code weighs nothing. Everything can be calculated
/// all the same: see LineArray::fault() for what cannot.
std::vector<std::string> contradictions(const LineArray& array, Language language);

/// What the pin of a flown array lacks of an angle that was typed, where it is a tenth of a degree
/// or more: whoever hung the array from that pin alone would aim it elsewhere.
std::optional<Message> pinFallsShort(const LineArray& array);

/// That more hangs or stands than is allowed, where it does.
std::optional<Message> overload(const LineArray& array);

} // namespace orva
