#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orva {

/// The byte that stands for a character; none where the code page lacks it.
std::optional<char> windows1252Byte(char32_t character);

/// UTF-8 to Windows-1252, one byte a character. A character that the code page lacks, and every
/// byte that is no valid UTF-8, becomes "?". The code page's five free bytes (81, 8D, 8F, 90, 9D)
/// stand for the control characters of the same number, so they survive both ways.
std::string windows1252FromUtf8(std::string_view utf8);

/// Windows-1252 to UTF-8; the inverse of windows1252FromUtf8 for every byte.
std::string utf8FromWindows1252(std::string_view bytes);

} // namespace orva
