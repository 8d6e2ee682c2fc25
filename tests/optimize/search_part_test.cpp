#include "optimize/search_fingerprint.h"
#include "optimize/search_part.h"

#include <functional>
#include <tuple>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace orva {
namespace {

using Json = nlohmann::json;

/// Configurations 4 to 13 of 20; the joints 2 and 3 varied.
Json soundPart()
{
    std::vector<int> original(32);
    original[0] = -30;
    original[31] = 99; // where no box hangs
    std::vector<int> angles = original;
    angles[3] = 6;
    const Json first = {{"angles", angles}, {"rms", 0.5}, {"number", 4}};
    const Json second = {{"angles", original}, {"rms", nullptr}, {"number", 13}};
    return {{"task", "0123456789abcdef"},
            {"configurations", 20},
            {"first", 4},
            {"tested", 10},
            {"range", {2, 3}},
            {"original", {{"angles", original}}},
            {"best", {first, second}},
            {"warnings", {"told"}}};
}

TEST(SearchPart, IsReadAsItWasPrinted)
{
    const Result<PartResult> part = readPart(soundPart().dump(), "a.json");
    ASSERT_TRUE(part) << part.error().text();
    EXPECT_EQ(part->part.first, 4U);
    EXPECT_EQ(part->part.best[0].angles[3], 6);
    EXPECT_EQ(part->part.best[1].rms, kNoMeasure);
    Json pinned = soundPart();
    pinned["best"][0]["angles"][0] = 0; // the first pin
    pinned["best"][0]["pin"] = 0;
    const Result<PartResult> byPin = readPart(pinned.dump(), "a.json");
    ASSERT_TRUE(byPin) << byPin.error().text();
    EXPECT_TRUE(byPin->part.best[0].pin);
    PartResult other = *part;
    EXPECT_TRUE(part->belongsTo(other));
    other.task[0] = 'f';
    EXPECT_FALSE(part->belongsTo(other));
}

TEST(SearchPart, RefusesWhatNoSearchPrints)
{
    const std::tuple<const char*, Json> changes[] = {
        {"/configurations", 13},
        {"/configurations", -20},
        {"/configurations", 20.0},
        {"/tested", 0},
        {"/tested", 21},
        {"/tested", 18446744073709551615U},
        {"/first", 11},
        {"/first", 18446744073709551610U},
        {"/range", {2}},
        {"/range", {2, 31}},
        {"/range", {3, 1}},
        {"/range", {-1, 3}},
        {"/range", {3, 3}}, // the joint of angle 3 is no longer varied
        {"/original/angles/0", 70000},
        {"/original/angles", Json::array()},
        {"/original", 5},
        {"/task", "0123456789ABCDEF"},
        {"/task", "0123"},
        {"/task", nullptr},
        {"/best", Json::array()},
        {"/best", {{"rms", 1}}},
        {"/best/2", soundPart()["best"][0]}, // after a worse one
        {"/best/0", nullptr},
        {"/best/0/number", 3},
        {"/best/0/number", 14},
        {"/best/0/rms", -0.5},
        {"/best/0/rms", "0.5"},
        {"/best/0/angles/3", 7},
        {"/best/0/angles/3", -1},
        {"/best/0/angles/3", 70000},
        {"/best/0/angles/3", 1.5},
        {"/best/0/angles/5", 1},
        {"/best/0/angles/0", 0},
        {"/evaluations", 7}};
    for (const auto& [place, value] : changes) {
        Json part = soundPart();
        part[Json::json_pointer(place)] = value;
        const Result<PartResult> read = readPart(part.dump(), "a.json");
        EXPECT_FALSE(read) << place << ' ' << value;
        EXPECT_EQ(read ? "" : read.error().where, "a.json");
    }
    const std::string sound = soundPart().dump();
    const std::string deep(100'000, '[');
    Json four = soundPart();
    four["best"] = Json(4, four["best"][0]);
    for (const std::string& text :
         {std::string(), deep, "{\"best\":" + deep, sound.substr(0, sound.size() - 1), four.dump(),
          sound.substr(0, sound.size() - 1) + ",\"x\":" + deep + std::string(100'000, ']') + "}",
          sound + std::string(kPartMaxBytes, ' ')})
        EXPECT_FALSE(readPart(text, "a.json"));
}

TEST(SearchFingerprint, ChangesWithAllThatChangesAMeasureOrTheOrder)
{
    struct Asked {
        SearchTask task;
        JointRange range = {1, 3};
        bool neighbours = false;
        int area = 1;

        Freedom freedom{};
        std::string print() const
        {
            return searchFingerprint(task, CandidateSet(task.array, range, neighbours, freedom),
                                     area);
        }
    };
    Asked asked;
    asked.task.array.GBSetNumSpeakers(6);
    LineArray::Positions filled;
    filled.fill(1); // trapezoidal, 1.5 degrees apart
    asked.task.array.GBSetAllType(filled);
    asked.task.array.GBSetAllAngle(filled);
    const std::string before = asked.print();
    EXPECT_EQ(before.size(), 16U);
    EXPECT_EQ(asked.print(), before);
    const std::function<void(Asked&)> changes[] = {
        [](Asked& a) { a.task.array.GBSetNumSchräg(1); },
        [](Asked& a) { a.task.area.lengthM = 1; },
        [](Asked& a) { a.task.target.slopeDbPerM = -0.1; },
        [](Asked& a) { a.task.target.levelDb = 1; },
        [](Asked& a) { a.task.measure = Measure::FitToLine; },
        [](Asked& a) { a.task.points = 201; },
        [](Asked& a) { a.task.weight = 2; },
        [](Asked& a) { a.task.otherAreas.push_back({}); },
        [](Asked& a) { a.task.perDoublingDb = -3; },
        [](Asked& a) { a.freedom.pins = true; },
        [](Asked& a) { a.freedom.heightsM = {6}; },
        [](Asked& a) { a.task.choice.bands.from = 1; },
        [](Asked& a) { a.task.choice.bands.to = 1; },
        [](Asked& a) { a.task.choice.field = LevelField::Peak; },
        [](Asked& a) { a.task.choice.aWeighted = true; },
        [](Asked& a) { a.task.air = airAt(22); },
        [](Asked& a) { a.task.speakerData.directivity.DirMagnitude[3][4] = 1; },
        [](Asked& a) { a.task.speakerData.directivity.DirPhase[3][4] = 1; },
        [](Asked& a) { a.task.speakerData.BandLevel[3].Continuous = 1; },
        [](Asked& a) { a.range.last = 4; },
        [](Asked& a) { a.neighbours = true; },
        [](Asked& a) { a.area = 2; }};
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        Asked changed = asked;
        changes[i](changed);
        EXPECT_NE(changed.print(), before) << i;
    }
    asked.task.target.slopeDbPerM = -0.0;
    EXPECT_EQ(asked.print(), before);
}

} // namespace
} // namespace orva
