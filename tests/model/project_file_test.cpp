#include "model/project_file.h"

#include <algorithm>
#include <array>
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

/// A project with two variants beside the current one, which is C.
Project withVariants(std::int16_t system)
{
    Project project = newProject(system);
    project.variants.current = 2;
    project.variants.names = {"", "Näher €", "", "leer"};
    project.variants.kept[0] = KeptSetup{project.array, project.subArray};
    project.variants.kept[1] = KeptSetup{project.array, project.subArray};
    project.variants.kept[1]->array.GBSetCradleCoord({2, 6});
    project.variants.kept[1]->array.GFACalcCOM();
    project.variants.kept[1]->subArray.SubPos[4] = 0.25F;
    return project;
}

TEST(ProjectFile, VariantsStandBehindWhatOlderProgramsRead)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem}) {
        const Project project = withVariants(system);
        Bytes bytes = writeProject(project);
        Project alone = project;
        alone.variants = {};
        const Bytes given = writeProject(alone);
        ASSERT_EQ(given.size(), kProjectFileBytes) << "without variants nothing follows";
        EXPECT_TRUE(std::equal(given.begin(), given.end(), bytes.begin()));
        bytes.resize(bytes.size() + 7);
        const auto loaded = readProject(bytes, "p.lad");
        ASSERT_TRUE(loaded) << loaded.error().text();
        EXPECT_EQ(loaded->project, project);
        EXPECT_EQ(loaded->size, bytes.size() - 7);
        EXPECT_EQ(loaded->project.variants.kept[1]->array.GFFirstAngle(),
                  project.variants.kept[1]->array.GFFirstAngle());
    }
}

TEST(ProjectFile, DamagedVariantsAreRefused)
{
    const Bytes whole = writeProject(withVariants(kStandardSystem));
    constexpr std::size_t kBlock = kProjectFileBytes;
    constexpr std::size_t kName = kBlock + 16;
    constexpr std::size_t kArray = kName + 4; // of variant A
    const std::tuple<std::size_t, int, const char*> kWrong[] = {
        {kBlock + 8, 2, "version"},
        {kBlock + 10, 1, "length"},
        {kBlock + 12, 0x7FFF, "length"},
        {kBlock + 14, 4, "current"},
        {kBlock + 14, -1, "current"},
        {kBlock + 14, 0, "current and kept"},
        {kName, 65, "name"},
        {kName, -1, "name"},
        {kName + 2, 2, "kept"},
        {kArray, 40, "boxes"},
        {kArray + 136, 1, "system"}};
    for (const auto& [at, value, what] : kWrong) {
        Bytes bytes = whole;
        put16(bytes, at, value);
        EXPECT_FALSE(readProject(bytes, "p.lad")) << what << ' ' << at;
    }
    for (std::size_t size = kBlock + 14; size < whole.size(); size += 3)
        EXPECT_FALSE(readProject(std::span(whole).first(size), "p.lad")) << size;
    Bytes infinite = whole;
    putFloat(infinite, kArray + 138, std::numeric_limits<float>::infinity());
    EXPECT_FALSE(readProject(infinite, "p.lad"));
    EXPECT_TRUE(readProject(std::span(whole).first(kBlock + 13), "p.lad")) << "no mark";
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

/// The array block of versions 0 and 1, every field with a value of its own.
struct OldArray {
    std::array<int, 3> counts = {20, 21, 22}; // straight, trapezoidal, mid/high: checked, not used
    std::array<int, 32> types{};
    std::array<int, 32> angles{};
    std::array<float, 4> points = {2.5F, 6.25F, 3.75F, -0.5F}; // cradle, bass box
    std::array<int, 3> booleans = {1, 1, 1};                   // bass box, flown, pin

    OldArray()
    {
        // Of the first 24 positions five hold 0 and three 1, the last of each at 22 and 23.
        const int codes[] = {1, 0, 0, 2, 0, 9, 1, 0};
        types.fill(2);
        std::copy(std::begin(codes), std::end(codes), types.begin());
        types[22] = 0;
        types[23] = 1;
        std::fill(types.begin() + 24, types.end(), 0);
        types[24] = 1;
        for (int i = 0; i < 32; ++i)
            angles[static_cast<std::size_t>(i)] = i < 8 ? 7 - std::max(i, 1) : 100 + i;
    }

    Bytes file(int version) const
    {
        Bytes bytes = older(version);
        std::size_t at = kCounts;
        for (const auto& list : {std::span<const int>(counts), std::span<const int>(types),
                                 std::span<const int>(angles)})
            for (const int value : list) {
                put16(bytes, at, value);
                at += 2;
            }
        for (const float value : points) {
            putFloat(bytes, at, value);
            at += 4;
        }
        for (const int value : booleans) {
            put16(bytes, at, value);
            at += 2;
        }
        EXPECT_EQ(at, 584U);
        for (int i = 0; version > 0 && i < 11; ++i)
            putFloat(bytes, at + static_cast<std::size_t>(4 * i), static_cast<float>(0.25 * i - 3));
        return bytes;
    }
};

TEST(ProjectFile, EveryFieldOfAnOlderVersionArrives)
{
    for (const int version : {0, 1})
        for (const std::array<int, 3> booleans :
             {std::array{1, 1, 1}, {-1, 1, 1}, {1, -1, 1}, {1, 1, -1}, {-1, -1, -1}}) {
            SCOPED_TRACE(version);
            OldArray old;
            old.booleans = booleans;
            const auto loaded = readProject(old.file(version), "p.lad");
            ASSERT_TRUE(loaded) << loaded.error().text();
            const LineArray& array = loaded->project.array;
            EXPECT_EQ(array.GIGetNumGerade(), 5);
            EXPECT_EQ(array.GIGetNumSchräg(), 3);
            EXPECT_EQ(array.GIGetNumSpeakers(), 8);
            EXPECT_EQ(array.GIGetNumBass(), 0);
            EXPECT_EQ(array.GIGetArrayType(), kStandardSystem);
            for (std::size_t i = 0; i < 32; ++i) {
                EXPECT_EQ(array.GIAGetAllType()[i], old.types[i]) << i;
                EXPECT_EQ(array.GIAGetAllAngle()[i], old.angles[i]) << i;
            }
            EXPECT_EQ(array.GFAGetCradleCoord(), (FloatPair{2.5F, 6.25F}));
            EXPECT_EQ(array.GFAGetBassBoxCoord(), (FloatPair{3.75F, -0.5F}));
            EXPECT_EQ(array.GBGetBassBox(), booleans[0] == 1);
            EXPECT_EQ(array.GBGetMounting(), booleans[1] == 1);
            EXPECT_EQ(array.GBGetAngleOrPin(), booleans[2] == 1);
            // ready to hang: its centre of gravity is there, and so is its sign
            EXPECT_EQ(array.GFAngleFromPin(0), array.Duplicate().GFAngleFromPin(0));
            EXPECT_NE(array.GFAngleFromPin(0), LineArray().GFAngleFromPin(0));
            EXPECT_EQ(array, array.Duplicate());
            const SubArray& subArray = loaded->project.subArray;
            for (std::size_t i = 0; i < 10; ++i)
                EXPECT_EQ(subArray.SubPos[i], version == 0 ? 2.0 * static_cast<double>(i) - 9
                                                           : 0.25 * static_cast<double>(i) - 3);
            EXPECT_EQ(subArray.openingAngleDeg, version == 0 ? 45 : -0.5);
        }
    OldArray bare; // neither straight nor trapezoidal: the setter's least
    bare.types.fill(2);
    const auto loaded = readProject(bare.file(0), "p.lad");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->project.array.GIGetNumSpeakers(), 1);
}

TEST(ProjectFile, CorruptFieldsOfAnOlderVersionAreRefused)
{
    const std::tuple<std::size_t, int, bool> counts[] = {
        // which, value, whether it loads
        {0, -1, false}, {0, 0, true}, {0, 32, true}, {0, 33, false},
        {1, -1, false}, {1, 0, true}, {1, 32, true}, {1, 33, false},
        {2, 0, false},  {2, 1, true}, {2, 32, true}, {2, 33, false}};
    for (const auto& [which, value, loads] : counts) {
        OldArray old;
        old.counts[which] = value;
        const auto loaded = readProject(old.file(1), "p.lad");
        EXPECT_EQ(static_cast<bool>(loaded), loads) << which << ' ' << value;
        if (!loaded) {
            EXPECT_EQ(loaded.error().where, "p.lad, byte " + std::to_string(kCounts + 2 * which));
        }
    }
    for (const std::size_t which : {0U, 1U, 2U})
        for (const int value : {0, 2, -2, 255}) {
            OldArray old;
            old.booleans[which] = value;
            EXPECT_FALSE(readProject(old.file(0), "p.lad")) << which << ' ' << value;
        }
    for (const std::size_t which : {0U, 1U, 2U, 3U}) {
        OldArray old;
        old.points[which] = std::numeric_limits<float>::infinity();
        EXPECT_FALSE(readProject(old.file(0), "p.lad")) << which;
    }
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
