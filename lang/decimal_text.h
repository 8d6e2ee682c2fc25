#pragma once

#include <optional>
#include <string_view>

namespace orva {

/// Like leadingNumber(); none when no number stands there.
std::optional<double> numberAtStart(std::string_view text);

/// The number that `text` begins with, "." as the decimal point: blanks, a sign, digits, a
/// fraction and an exponent may stand there. 0 when no number stands there. Always finite: what is
/// too large becomes the largest double. The user's locale plays no part.
double leadingNumber(std::string_view text);

/// leadingNumber() of the text with its first "," replaced by "."; the reading of everything that
/// a user types and of angle values in speaker data.
double ParseDecimalText(std::string_view text);

/// Takes the part before the first `separator`, and the separator, off the front of `text`; all of
/// it where there is none.
std::string_view takeUpTo(std::string_view& text, char separator);

} // namespace orva
