#include "model/project_file.h"

#include <bit>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::size_t kNumAreas = 30, kRoomDims = 32, kArea3 = 88, kProjectName = 128;
constexpr std::size_t kCounts = 428, kBassCount = 434, kAllType = 436, kAllAngle = 500,
                      kArrayType = 564, kBassBox = 582, kMounting = 584, kAngleOrPin = 586,
                      kSubArray = 588;

Bytes sample(std::int16_t system = kStandardSystem)
{
    return writeProject(newProject(system));
}

void put16(Bytes& bytes, std::size_t at, int value)
{
    bytes[at] = static_cast<std::byte>(value & 0xFF);
    bytes[at + 1] = static_cast<std::byte>((value >> 8) & 0xFF);
}

void putFloat(Bytes& bytes, std::size_t at, float value)
{
    const auto bits = std::bit_cast<std::uint32_t>(value);
    put16(bytes, at, static_cast<int>(bits & 0xFFFF));
    put16(bytes, at + 2, static_cast<int>(bits >> 16));
}

/// The standard sample in the layout of version 0 or 1: no bass count, no system.
Bytes older(int version)
{
    const Bytes current = sample();
    Bytes bytes;
    for (std::size_t at = 0; at < (version == 0 ? kSubArray : current.size()); ++at)
        if (at / 2 != kBassCount / 2 && at / 2 != kArrayType / 2)
            bytes.push_back(current[at]);
    put16(bytes, 12, version);
    return bytes;
}

TEST(ProjectFile, IsReadAsItWasWritten)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem}) {
        Project project = newProject(system);
        ASSERT_TRUE(project.room.GBSetProjectName("Große Bühne – Köln €"));
        project.array.GBSetBassBox(false);
        project.subArray.SubPos[3] = -2.5F;
        Bytes bytes = writeProject(project);
        ASSERT_EQ(bytes.size(), kProjectFileBytes);
        bytes.resize(bytes.size() + 5); // what follows is accepted
        const auto loaded = readProject(bytes, "p.lad");
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->version, 2);
        EXPECT_EQ(loaded->project, project);
        EXPECT_EQ(loaded->project.array.GFFirstAngle(), project.array.GFFirstAngle());
    }
}

TEST(ProjectFile, FreeBytesOfTextsSurvive)
{
    Bytes bytes = sample();
    const std::byte free[] = {std::byte{0x81}, std::byte{0x8D}, std::byte{0x8F},
                              std::byte{0x90}, std::byte{0x9D}, std::byte{0x00}};
    std::copy(std::begin(free), std::end(free), bytes.begin() + kProjectName);
    const auto loaded = readProject(bytes, "p.lad");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(writeProject(loaded->project), bytes);
}

TEST(ProjectFile, OlderVersionsAreConverted)
{
    for (const int version : {0, 1}) {
        SCOPED_TRACE(version);
        Bytes bytes = older(version);
        ASSERT_EQ(bytes.size(), version == 0 ? 584U : 628U);
        put16(bytes, kCounts, 20); // the stored counts are not used
        if (version == 1)
            putFloat(bytes, bytes.size() - 4, 90);
        const auto loaded = readProject(bytes, "p.lad");
        ASSERT_TRUE(loaded);
        const LineArray& array = loaded->project.array;
        // positions 0..23 of the sample: six of each kind, then 0, 1, 0, 1, ...
        EXPECT_EQ(array.GIGetNumGerade(), 12);
        EXPECT_EQ(array.GIGetNumSchräg(), 12);
        EXPECT_EQ(array.GIGetNumSpeakers(), 24);
        EXPECT_EQ(array.GIGetNumBass(), 0);
        EXPECT_EQ(array.GIGetArrayType(), kStandardSystem);
        EXPECT_EQ(loaded->project.subArray.SubPos, SubArray::kDefaultPositions);
        EXPECT_EQ(loaded->project.subArray.openingAngleDeg, version == 0 ? 45 : 90);
        EXPECT_EQ(loaded->version, version);
    }
}

TEST(ProjectFile, ACompactArrayWithoutABoxGetsOne)
{
    Bytes bytes = sample(kCompactSystem);
    put16(bytes, kCounts + 2, 2);  // trapezoidal
    put16(bytes, kCounts + 6, 32); // bass: the scan ends with the list
    for (std::size_t i = 0; i < 32; ++i)
        put16(bytes, kAllType + 2 * i, 1);
    const auto loaded = readProject(bytes, "p.lad");
    ASSERT_TRUE(loaded);
    const LineArray& array = loaded->project.array;
    EXPECT_EQ(array.GIAGetAllType()[0], 0);
    EXPECT_EQ(array.boxCount(), 1);
    EXPECT_EQ(array.GIGetNumSchräg(), 1);

    put16(bytes, kAllType + 62, 0); // one box is enough, and the counts stay
    const auto kept = readProject(bytes, "p.lad");
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->project.array.GIGetNumBass(), 32);
}

TEST(ProjectFile, EveryShorterFileIsRefused)
{
    for (const Bytes& whole : {sample(), older(1), older(0)})
        for (std::size_t size = 0; size < whole.size(); ++size)
            EXPECT_FALSE(readProject(std::span(whole).first(size), "p.lad")) << size;
}

TEST(ProjectFile, CorruptFieldsAreRefusedWithTheirPlace)
{
    const std::pair<std::size_t, int> fields[] = {
        // header, areas, counts, booleans
        {0, 0x4546},       {6, 2},           {8, 21},       {10, 0x7879},
        {26, 30},          {12, 3},          {12, -1},      {kNumAreas, 0},
        {kNumAreas, 4},    {kCounts, 33},    {kCounts, -1}, {kCounts + 2, 33},
        {kCounts + 4, 0},  {kBassCount, 33}, {kBassBox, 0}, {kMounting, 2},
        {kAngleOrPin, 255}};
    for (const auto& [at, value] : fields) {
        SCOPED_TRACE(at);
        Bytes bytes = sample();
        put16(bytes, at, value);
        const auto loaded = readProject(bytes, "p.lad");
        ASSERT_FALSE(loaded);
        EXPECT_EQ(loaded.error().where.rfind("p.lad", 0), 0U);
        if (at < kCounts + 8) { // fields that are judged one by one
            EXPECT_EQ(loaded.error().where, "p.lad, byte " + std::to_string(at));
        }
    }
    const float bad[] = {std::numeric_limits<float>::quiet_NaN(),
                         std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity()};
    for (const std::size_t at :
         {kRoomDims, kRoomDims + 4, std::size_t{40}, kArea3 + 20, std::size_t{112},
          std::size_t{124}, std::size_t{566}, std::size_t{578}, kSubArray, kProjectFileBytes - 4})
        for (const float value : bad) {
            Bytes bytes = sample();
            putFloat(bytes, at, value);
            EXPECT_FALSE(readProject(bytes, "p.lad")) << at;
        }
    for (const float size : {0.0F, -0.0F, -3.0F}) {
        Bytes bytes = sample();
        putFloat(bytes, kRoomDims + 4, size);
        EXPECT_FALSE(readProject(bytes, "p.lad")) << size;
    }
}

TEST(ProjectFile, WhatIsOddButHarmlessLoads)
{
    const std::tuple<const char*, std::size_t, int> fields[] = {
        {"most boxes", kCounts + 4, 32},
        {"33 boxes", kCounts + 6, 21},
        {"unknown code", kAllType, 99},
        {"splay beyond the array", kAllAngle + 24, 99},
        {"splay beyond the table", kAllAngle + 2, 7},
        {"splay below 0", kAllAngle + 22, -1},
        {"pin beyond the frame", kAllAngle, 11},
        {"pin below 0", kAllAngle, -1},
        {"unknown system", kArrayType, 5}};
    for (const auto& [what, at, value] : fields) {
        Bytes bytes = sample();
        put16(bytes, at, value);
        const auto loaded = readProject(bytes, "p.lad");
        ASSERT_TRUE(loaded) << what << ": " << loaded.error().text();
        EXPECT_EQ(writeProject(loaded->project), bytes) << what;
    }
    Bytes stacked = sample();
    put16(stacked, kMounting, -1);
    put16(stacked, kAllAngle, 99); // no pin carries a stack
    EXPECT_TRUE(readProject(stacked, "p.lad"));
}

} // namespace
} // namespace orva
