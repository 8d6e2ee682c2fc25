#include "lang/windows1252.h"

#include "lang/utf8.h"

#include <algorithm>
#include <array>

namespace orva {

namespace {

/// Characters of the bytes 80..9F; all other bytes stand for the character of the same number.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void appendUtf8(std::string& out, char32_t character)
{
    const auto continuation = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0 | (character >> 6));
        out += continuation(character);
    } else {
        out += static_cast<char>(0xE0 | (character >> 12));
        out += continuation(character >> 6);
        out += continuation(character);
    }
}

} // namespace

std::optional<char> windows1252Byte(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto* found = std::find(kHighControls.begin(), kHighControls.end(), character);
    return found == kHighControls.end()
               ? std::nullopt
               : std::optional(static_cast<char>(0x80 + (found - kHighControls.begin())));
}

std::string windows1252FromUtf8(std::string_view utf8)
{
    std::string bytes;
    while (!utf8.empty()) {
        const std::optional<char32_t> character = takeCharacter(utf8);
        bytes += character ? windows1252Byte(*character).value_or('?') : '?';
    }
    return bytes;
}

std::string utf8FromWindows1252(std::string_view bytes)
{
    std::string utf8;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        appendUtf8(utf8, byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80] : byte);
    }
    return utf8;
}

} // namespace orva
