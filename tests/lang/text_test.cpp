#include "lang/decimal_text.h"
#include "lang/number_text.h"
#include "lang/typed_number.h"
#include "lang/utf8.h"
#include "lang/windows1252.h"

#include <limits>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(DecimalText, TakesTheLeadingNumber)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    // clang-format off
    const std::tuple<const char*, double> cases[] = {
        {"", 0}, {"abc", 0}, {"1.5°", 1.5}, {"1,5", 1.5}, {"1,5,7", 1.5}, {"  12 ", 12},
        {" \t-3.25dB", -3.25}, {"+7", 7}, {".5", 0.5}, {"-.5", -0.5}, {".", 0}, {"-", 0},
        {"- 5", 0}, {"--5", 0}, {"1.2.3", 1.2}, {"5.", 5}, {"1e3", 1000}, {"1e", 1},
        {"2E-1x", 0.2}, {"nan", 0}, {"inf", 0}, {"-inf", 0}, {"0x10", 0}, {"1e999", kLargest},
        {"-1e999", -kLargest}, {"1e-999", 0}, {"3.44dB", 3.44}};
    // clang-format on
    for (const auto& [text, value] : cases)
        EXPECT_EQ(ParseDecimalText(text), value) << text;
    EXPECT_EQ(leadingNumber("100,50"), 100);
    EXPECT_EQ(numberAtStart(" 0dB"), 0.0);
    EXPECT_FALSE(numberAtStart("-x") || numberAtStart(""));
}

TEST(NumberText, RoundsToPlacesWithoutMinusZero)
{
    const std::tuple<double, int, const char*> cases[] = {
        {1.2345, 3, "1.234"},
        {-1.0006, 3, "-1.001"},
        {-0.0004, 3, "0.000"},
        {-0.0, 0, "0"},
        {12.5, 0, "12"},
        {1e15, 1, "1000000000000000.0"},
        {-std::numeric_limits<double>::infinity(), 3, "-inf"}};
    for (const auto& [value, decimals, text] : cases)
        EXPECT_EQ(fixedText(value, decimals), text);
}

TEST(Utf8, WhatCannotBeShownIsEscaped)
{
    const std::pair<std::string_view, const char*> cases[] = {
        {"Bühne \\ 5°", "Bühne \\ 5°"},     {"a\nb\tc\r", "a\\nb\\tc\\x0d"},
        {"\x1b[31m\x7f", "\\x1b[31m\\x7f"}, {"\u009bx", "\\xc2\\x9bx"},
        {"\xFE.lad", "\\xfe.lad"},          {std::string_view("\0", 1), "\\x00"}};
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(printable(text), shown);
}

TEST(Windows1252, EveryByteSurvivesTheWayThroughUtf8)
{
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        EXPECT_EQ(windows1252FromUtf8(utf8FromWindows1252(one)), one) << byte;
    }
    EXPECT_EQ(utf8FromWindows1252("\x80 \xE4\xDF \x96"), "€ äß –");
}

TEST(Windows1252, WhatItLacksBecomesOneQuestionMark)
{
    const std::tuple<const char*, const char*> cases[] = {{"Ω", "?"},
                                                          {"日本", "??"},
                                                          {"😀!", "?!"},
                                                          {"\xE4", "?"},
                                                          {"\xC3", "?"},
                                                          {"\xC0\x80", "??"},
                                                          {"\xED\xA0\x80", "???"},
                                                          {"a\xFFz", "a?z"},
                                                          {"\xF4\x90\x80\x80", "????"}};
    for (const auto& [utf8, bytes] : cases)
        EXPECT_EQ(windows1252FromUtf8(utf8), bytes) << utf8;
}

TEST(TypedNumber, IsTheWholeTextOrNone)
{
    const std::tuple<const char*, std::optional<double>, const char*> cases[] = {
        {"12", 12, ""},      {" -0,5 ", -0.5, ""}, {"+3.", 3, ""},    {".5", 0.5, ""},
        {"-.5", -0.5, ""},   {"33ft", 33, "ft"},   {"10 m", 10, "m"}, {"4'", 4, "'"},
        {"7°", 7, "°"},      {"", {}, ""},         {"-", {}, ""},     {".", {}, ""},
        {"1.234,5", {}, ""}, {"1,2,3", {}, ""},    {"1e3", {}, ""},   {"5-3", {}, ""},
        {"--5", {}, ""},     {"m", {}, ""},        {"1 2", {}, ""},   {"nan", {}, ""}};
    for (const auto& [text, value, unit] : cases) {
        SCOPED_TRACE(text);
        const std::optional<TypedNumber> typed = typedNumber(text);
        ASSERT_EQ(typed.has_value(), value.has_value());
        if (!typed)
            continue;
        EXPECT_EQ(typed->value, *value);
        EXPECT_EQ(typed->unit, unit);
    }
    EXPECT_EQ(typedAngle("7 °"), 7);
    EXPECT_FALSE(typedAngle("7 m"));
    EXPECT_FALSE(typedFigure("7°"));
}

} // namespace
} // namespace orva
