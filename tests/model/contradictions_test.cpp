#include "model/contradictions.h"
#include "model/project.h"

#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(Contradictions, AreCountsThatAreNotTheColumnsAndUnknownCodes)
{
    using Change = void (*)(LineArray&);
    const auto withCode = [](LineArray& array, std::size_t position, std::int16_t code) {
        LineArray::Positions types = array.GIAGetAllType();
        types[position] = code;
        array.GBSetAllType(types);
    };
    static const auto setCode = withCode;
    // A new project: six straight boxes above six trapezoidal ones, no bass box.
    const std::tuple<Change, std::vector<const char*>> cases[] = {
        {[](LineArray&) {}, {}},
        {[](LineArray& array) { array.GBSetNumGerade(5); }, {"5 straight boxes, its column has 6"}},
        {[](LineArray& array) { array.GBSetNumSchräg(0); }, {"0 trapezoidal boxes"}},
        {[](LineArray& array) { array.GBSetNumSpeakers(1); }, {"has 1:", "has 0:"}},
        {[](LineArray& array) { array.GBSetNumBass(2); },
         {"6 straight boxes, its column has 7", "2 bass boxes, its column has 0"}},
        {[](LineArray& array) { setCode(array, 0, 2); }, {"5:", "0 bass boxes, its column has 1"}},
        {[](LineArray& array) { setCode(array, 1, 9); }, {"has 5:", ": 2 (9)"}},
        {[](LineArray& array) { setCode(array, 31, 9); }, {}}, // where no box hangs
        {[](LineArray& array) { array.GBSetArrayType(7); }, {"system number 7"}}};
    for (const auto& [change, parts] : cases) {
        LineArray array = newProject(kStandardSystem).array;
        change(array);
        std::string all;
        for (const std::string& line : contradictions(array, Language::English))
            all += line + '\n';
        EXPECT_EQ(all.empty(), parts.empty()) << all;
        for (const char* part : parts)
            EXPECT_NE(all.find(part), std::string::npos) << part << " in " << all;
        EXPECT_EQ(all.find('%'), std::string::npos);
    }
    EXPECT_TRUE(contradictions(newProject(kCompactSystem).array, Language::German).empty());
}

TEST(Contradictions, WhatAPinLacksOfATypedAngleIsSaid)
{
    const std::tuple<bool, bool, int, const char*> cases[] = {
        {true, true, 0, nullptr},     // hung from a pin
        {false, false, 350, nullptr}, // a stack
        {true, false, 350, "Pin 11 alone gives -"},
        {true, false, -350, "Pin 1 alone gives "}};
    for (const auto& [flown, pin, tenths, said] : cases) {
        LineArray array = newProject(kStandardSystem).array;
        array.GBSetMounting(flown);
        array.GBSetAngleOrPin(pin);
        LineArray::Positions angles = array.GIAGetAllAngle();
        angles[0] = static_cast<std::int16_t>(tenths);
        array.GBSetAllAngle(angles);
        array.GFACalcCOM();
        const std::optional<Message> missing = pinFallsShort(array);
        ASSERT_EQ(missing.has_value(), said != nullptr);
        if (said) {
            EXPECT_EQ(missing->text().find(said), 0U) << missing->text();
        }
    }
}

} // namespace
} // namespace orva
