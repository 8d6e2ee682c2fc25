#include "model/line_array.h"
#include "model/project.h"

#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(LineArray, CountsAreClamped)
{
    using Set = bool (LineArray::*)(std::int16_t);
    using Get = std::int16_t (LineArray::*)() const;
    const std::tuple<const char*, Set, Get, std::int16_t, std::int16_t> counts[] = {
        {"straight", &LineArray::GBSetNumGerade, &LineArray::GIGetNumGerade, 0, 24},
        {"trapezoidal", &LineArray::GBSetNumSchräg, &LineArray::GIGetNumSchräg, 0, 24},
        {"bass", &LineArray::GBSetNumBass, &LineArray::GIGetNumBass, 0, 20},
        {"mid/high", &LineArray::GBSetNumSpeakers, &LineArray::GIGetNumSpeakers, 1, 24}};
    for (const auto& [what, set, get, low, high] : counts) {
        SCOPED_TRACE(what);
        const std::tuple<std::int16_t, std::int16_t> cases[] = {
            {-3, low}, {0, low}, {1, 1}, {7, 7}, {high, high}, {25, high}, {32767, high}};
        for (const auto& [given, kept] : cases) {
            LineArray array;
            EXPECT_TRUE((array.*set)(given));
            EXPECT_EQ((array.*get)(), kept) << given;
        }
    }
}

TEST(LineArray, ListsAreTakenWholeOrNotAtAll)
{
    LineArray array = newProject(kStandardSystem).array;
    const LineArray before = array;
    EXPECT_FALSE(array.GBSetAllType(std::vector<std::int16_t>(31, 2)));
    EXPECT_FALSE(array.GBSetAllAngle(std::vector<std::int16_t>(33, 2)));
    EXPECT_EQ(array, before);
    EXPECT_TRUE(array.GBSetAllType(std::vector<std::int16_t>(32, 2)));
    EXPECT_EQ(array.GIAGetAllType()[31], 2);
}

TEST(LineArray, DuplicateIsEqualHangsTheSameAndClamps)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem}) {
        const LineArray array = newProject(system).array;
        EXPECT_EQ(array.Duplicate(), array);
        EXPECT_EQ(array.Duplicate().GFFirstAngle(), array.GFFirstAngle());
    }
    EXPECT_EQ(LineArray().Duplicate().GIGetNumSpeakers(), 1);
}

TEST(LineArray, NewProjects)
{
    const LineArray standard = newProject(kStandardSystem).array;
    EXPECT_EQ(standard.boxCount(), 12);
    EXPECT_EQ(standard.GIAGetAllType()[13], 1);
    EXPECT_EQ(standard.GIAGetAllAngle()[11], 5);
    const LineArray compact = newProject(kCompactSystem).array;
    EXPECT_EQ(compact.boxCount(), 8);
    EXPECT_EQ(compact.GIAGetAllAngle()[7], 6);
    // The same code is another box in the other system.
    EXPECT_EQ(standard.system().kindOf(1), BoxKind::Trapezoidal);
    EXPECT_EQ(compact.system().kindOf(1), BoxKind::Bass);
    EXPECT_EQ(compact.system().kindOf(2), std::nullopt);
}

TEST(LineArray, BoundsOfEveryPairInEitherOrder)
{
    const std::tuple<std::int16_t, std::int16_t, std::int16_t, AngleBounds> cases[] = {
        {0, 0, 0, {0, 0}},
        {0, 0, 1, {0, 3}},
        {0, 1, 1, {3, 6}},
        {0, 2, 2, {0, 0}},
        {0, 2, 0, {0, 1}},
        {0, 2, 1, {3, 4}},
        {0, 7, 1, {0, 0}},
        {1, 0, 0, {0, 6}},
        {1, 1, 1, {0, 0}},
        {1, 1, 0, {0, 0}},
        {1, 0, 2, {0, 0}},
        // a trapezoidal box of the compact system: a code that only a file can hold
        {1, -2, 0, {0, 3}},
        {1, -2, -2, {3, 6}},
        {1, -2, 1, {0, 6}}};
    for (const auto& [system, a, b, bounds] : cases) {
        LineArray array;
        array.GBSetArrayType(system);
        array.GBSetNumSpeakers(3);
        LineArray::Positions types{};
        types[0] = a;
        types[1] = b;
        types[2] = a;
        array.GBSetAllType(types);
        EXPECT_EQ(array.IAGetAngleBounds(), (std::vector{bounds, bounds})) << system << a << b;
    }
    LineArray single;
    single.GBSetNumSpeakers(1);
    EXPECT_TRUE(single.IAGetAngleBounds().empty());
}

TEST(LineArray, FaultsThatForbidCalculating)
{
    const auto with = [](std::size_t position, std::int16_t angle, bool flown, bool pin) {
        LineArray array = newProject(kStandardSystem).array;
        LineArray::Positions angles = array.GIAGetAllAngle();
        angles[position] = angle;
        array.GBSetAllAngle(angles);
        array.GBSetMounting(flown);
        array.GBSetAngleOrPin(pin);
        return array.fault().has_value();
    };
    const std::tuple<const char*, std::size_t, std::int16_t, bool, bool, bool> cases[] = {
        {"last pin", 0, 10, true, true, false},        {"no such pin", 0, 11, true, true, true},
        {"pin -1", 0, -1, true, true, true},           {"an angle", 0, 11, true, false, false},
        {"stacked", 0, 99, false, true, false},        {"largest splay", 11, 6, true, true, false},
        {"splay 7", 11, 7, true, true, true},          {"splay -1", 1, -1, true, true, true},
        {"beyond the array", 12, 7, true, true, false}};
    for (const auto& [what, position, angle, flown, pin, fault] : cases)
        EXPECT_EQ(with(position, angle, flown, pin), fault) << what;

    LineArray crowded = newProject(kStandardSystem).array;
    crowded.GBSetNumSpeakers(24);
    crowded.GBSetNumBass(9);
    EXPECT_TRUE(crowded.fault());
    EXPECT_FALSE(crowded.angleFault());
    EXPECT_EQ(crowded.boxCount(), 32);
}

TEST(LineArray, Weights)
{
    LineArray array = newProject(kStandardSystem).array;
    EXPECT_FLOAT_EQ(array.GFGetSpeakerByType(0), 181.2F);
    EXPECT_FLOAT_EQ(array.GFGetSpeakerByType(1), 178.2F);
    EXPECT_FLOAT_EQ(array.GFGetSpeakerWeight(), 359.4F);
    EXPECT_FLOAT_EQ(array.GFGetCableWeight(), 8);
    array.GBSetNumSpeakers(13);
    EXPECT_FLOAT_EQ(array.GFGetCableWeight(), 8);
    EXPECT_FLOAT_EQ(newProject(kCompactSystem).array.GFGetSpeakerWeight(), 146.4F);
    array.GBSetAllType(std::vector<std::int16_t>(32, 9));
    EXPECT_EQ(array.GFGetSpeakerByType(9), 0) << "no box of the system";
    // 5 kg and 0.5 kg for each full pair
    const std::tuple<std::int16_t, std::int16_t, float> cables[] = {
        {1, 0, 5}, {1, 1, 5.5F}, {3, 0, 5.5F}, {24, 8, 13}};
    for (const auto& [midHigh, bass, kg] : cables) {
        array.GBSetNumSpeakers(midHigh);
        array.GBSetNumBass(bass);
        EXPECT_EQ(array.GFGetCableWeight(), kg) << midHigh;
    }
}

TEST(NewArray, BoxesThatAreAddedAreStraightAndTrapezoidalInTurn)
{
    const auto& types = newProject(kStandardSystem).array.GIAGetAllType();
    for (std::size_t position = 12; position < types.size(); ++position)
        EXPECT_EQ(types[position], position % 2) << position;
}

} // namespace
} // namespace orva
