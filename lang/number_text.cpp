#include "lang/number_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace orva {

double roundedTo(double value, int decimals)
{
    double factor = 1;
    for (int i = 0; i < decimals; ++i)
        factor *= 10;
    return std::nearbyint(value * factor) / factor;
}

std::string fixedText(double value, int decimals)
{
    std::array<char, 330> buffer; // 309 digits of the largest double, sign, point, 9 places
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, decimals)
                         .ptr;
    std::string text(buffer.data(), end);
    if (text.front() == '-' && text.find_first_not_of("-0.") == std::string::npos)
        text.erase(0, 1);
    return text;
}

std::string levelText(double levelDb)
{
    return std::isfinite(levelDb) ? fixedText(levelDb, 1) : "-";
}

std::string plainText(double value, int decimals)
{
    std::string text = fixedText(value, decimals);
    if (text.find('.') != std::string::npos)
        text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text;
}

std::string floatText(float value)
{
    std::array<char, 64> buffer; // 39 digits of the largest float, or 45 places of the smallest
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed)
            .ptr;
    return {buffer.data(), end};
}

} // namespace orva
