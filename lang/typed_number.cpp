#include "lang/typed_number.h"

#include "lang/decimal_text.h"

#include <algorithm>

namespace orva {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kMarks = "0123456789.,+-";

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// A sign, digits, and a point or comma once.
bool isNumber(std::string_view text)
{
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    const auto points =
        std::count_if(text.begin(), text.end(), [](char c) { return c == '.' || c == ','; });
    return points <= 1 && text.find_first_of(kDigits) != std::string_view::npos &&
           text.find_first_of("+-") == std::string_view::npos;
}

} // namespace

std::optional<TypedNumber> typedNumber(std::string_view text)
{
    text = trimmed(text);
    const std::string_view number =
        text.substr(0, std::min(text.size(), text.find_first_not_of(kMarks)));
    const std::string_view unit = trimmed(text.substr(number.size()));
    if (!isNumber(number) || unit.find_first_of(kMarks) != std::string_view::npos)
        return std::nullopt;
    return TypedNumber{ParseDecimalText(number), unit};
}

std::optional<double> typedFigure(std::string_view text)
{
    const std::optional<TypedNumber> typed = typedNumber(text);
    return typed && typed->unit.empty() ? std::optional(typed->value) : std::nullopt;
}

std::optional<double> typedAngle(std::string_view text)
{
    const std::optional<TypedNumber> typed = typedNumber(text);
    return typed && (typed->unit.empty() || typed->unit == "°") ? std::optional(typed->value)
                                                                : std::nullopt;
}

} // namespace orva
