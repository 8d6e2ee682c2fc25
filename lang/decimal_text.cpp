#include "lang/decimal_text.h"

#include <charconv>
#include <locale>
#include <sstream>
#include <string>

namespace orva {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// A stream gives the largest double where std::from_chars only says "out of range".
double saturated(std::string_view number)
{
    std::istringstream in{std::string(number)};
    in.imbue(std::locale::classic());
    double value = 0;
    in >> value;
    return value;
}

} // namespace

std::optional<double> numberAtStart(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(start);

    const bool negative = text.front() == '-';
    if (negative || text.front() == '+')
        text.remove_prefix(1);
    const bool number = !text.empty() && (isDigit(text[0]) ||
                                          (text.size() > 1 && text[0] == '.' && isDigit(text[1])));
    if (!number)
        return std::nullopt;

    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range)
        value = saturated(text.substr(0, static_cast<std::size_t>(end - text.data())));
    return negative ? -value : value;
}

double leadingNumber(std::string_view text)
{
    return numberAtStart(text).value_or(0);
}

double ParseDecimalText(std::string_view text)
{
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos)
        return leadingNumber(text);
    std::string pointed(text);
    pointed[comma] = '.';
    return leadingNumber(pointed);
}

std::string_view takeUpTo(std::string_view& text, char separator)
{
    const std::size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

} // namespace orva
