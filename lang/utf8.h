#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orva {

/// Takes one character off the front of `utf8`, which is not empty; none, and one byte taken, where
/// it is malformed.
std::optional<char32_t> takeCharacter(std::string_view& utf8);

/// `text` on one line: control characters and bytes that are no UTF-8 as "\n", "\x1b".
std::string printable(std::string_view text);

} // namespace orva
