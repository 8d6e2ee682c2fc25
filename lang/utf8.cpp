#include "lang/utf8.h"

#include <array>

namespace orva {

std::optional<char32_t> takeCharacter(std::string_view& utf8)
{
    const auto lead = static_cast<unsigned char>(utf8.front());
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    char32_t character = length < 2 ? lead : lead & (0xFFU >> (length + 1));
    bool sound = length > 0 && length <= utf8.size();
    for (std::size_t i = 1; sound && i < length; ++i) {
        const auto next = static_cast<unsigned char>(utf8[i]);
        sound = (next & 0xC0) == 0x80;
        character = (character << 6) | (next & 0x3F);
    }
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (!sound || character < kSmallest[length] || surrogate || character > 0x10FFFF) {
        utf8.remove_prefix(1);
        return std::nullopt;
    }
    utf8.remove_prefix(length);
    return character;
}

std::string printable(std::string_view text)
{
    constexpr std::string_view kHex = "0123456789abcdef";
    std::string line;
    while (!text.empty()) {
        const std::string_view before = text;
        const std::optional<char32_t> character = takeCharacter(text);
        const std::string_view bytes = before.substr(0, before.size() - text.size());
        const bool shown =
            character && *character >= 0x20 && (*character < 0x7F || *character > 0x9F);
        if (shown)
            line += bytes;
        else if (bytes == "\n")
            line += "\\n";
        else if (bytes == "\t")
            line += "\\t";
        else
            for (const char byte : bytes)
                line += {'\\', 'x', kHex[static_cast<unsigned char>(byte) >> 4], kHex[byte & 0xF]};
    }
    return line;
}

} // namespace orva
