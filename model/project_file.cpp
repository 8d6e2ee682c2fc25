#include "model/project_file.h"

#include "model/line_array_old.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <optional>

namespace orva {

namespace {

constexpr std::string_view kMagic = "VELRIA";
constexpr std::string_view kFiller = "xx";
constexpr std::size_t kHeaderBytes = 30;
constexpr std::size_t kSubArrayBytes = 44;
constexpr std::int16_t kWrittenVersion = 2;

/// An array without any mid/high box where the counts place one gets one on top.
void giveMidHigh(LineArray& array)
{
    LineArray::Positions types = array.GIAGetAllType();
    const int last =
        std::clamp(array.GIGetNumSchräg() + array.GIGetNumBass(), 0, LineArray::kPositions - 1);
    if (std::count(types.begin(), types.begin() + last + 1, 0) > 0)
        return;
    types[0] = 0;
    array.GBSetAllType(types);
    array.GBSetNumSchräg(1);
    array.GBSetNumBass(0);
    array.GBSetNumSpeakers(1);
}

Result<LineArray> readArray(ByteReader& in, int version)
{
    if (version < 2) {
        LineArray_old old;
        if (auto read = old.GBReadFromFile(in); !read)
            return read.error();
        return ConvertOldLineArray(old);
    }
    LineArray array;
    if (auto read = array.GBReadFromFile(in); !read)
        return read.error();
    if (array.system().needsMidHigh)
        giveMidHigh(array);
    array.GFACalcCOM();
    return array;
}

Result<SubArray> readSubArray(ByteReader& in)
{
    SubArray subArray;
    if (auto there = in.need(kSubArrayBytes, Text::BlockSubArray); !there)
        return there.error();
    if (auto read = in.finite(subArray.SubPos, Text::FieldSubArray); !read)
        return read.error();
    if (auto read = in.finite(std::span(&subArray.openingAngleDeg, 1), Text::FieldOpeningAngle);
        !read)
        return read.error();
    return subArray;
}

} // namespace

void WriteProjectHeader(ByteWriter& out)
{
    out.chars(kMagic);
    out.i16(1);
    out.i16(20);
    out.chars(kFiller);
    out.i16(kWrittenVersion);
    for (const std::int32_t field : {0, 0, 0, 31})
        out.i32(field);
}

Result<int> ReadProjectHeader(ByteReader& in)
{
    if (auto there = in.need(kHeaderBytes, Text::BlockHeader); !there)
        return there.error();
    std::optional<Error> first;
    const auto require = [&](bool holds, const Message& what) {
        if (!holds && !first)
            first = in.error(what);
    };
    const Message foreign(Text::ForeignHeader);
    require(in.chars(kMagic.size()) == kMagic, foreign);
    require(in.i16() == 1, foreign);
    require(in.i16() == 20, foreign);
    require(in.chars(kFiller.size()) == kFiller, foreign);
    const std::int16_t version = in.i16();
    require(version >= 0 && version <= kWrittenVersion,
            Message(Text::ForeignVersion, {number(version)}));
    for (const std::int32_t field : {0, 0, 0, 31})
        require(in.i32() == field, foreign);
    if (first)
        return *first;
    return version;
}

Result<LoadedProject> readProject(std::span<const std::byte> bytes, std::string_view name)
{
    ByteReader in(bytes, name);
    LoadedProject loaded;
    const Result<int> version = ReadProjectHeader(in);
    if (!version)
        return version.error();
    loaded.version = *version;

    if (auto read = loaded.project.room.GBReadFromFile(in); !read)
        return read.error();

    Result<LineArray> array = readArray(in, *version);
    if (!array)
        return array.error();
    // An array with a fault() is kept: such a project can be opened and mended.
    loaded.project.array = *array;

    if (*version > 0) {
        const Result<SubArray> subArray = readSubArray(in);
        if (!subArray)
            return subArray.error();
        loaded.project.subArray = *subArray;
    }
    return loaded;
}

std::vector<std::byte> writeProject(const Project& project)
{
    ByteWriter out;
    WriteProjectHeader(out);
    project.room.GBWriteToFile(out);
    project.array.GBWriteToFile(out);
    out.f32(project.subArray.SubPos);
    out.f32(project.subArray.openingAngleDeg);
    assert(out.bytes().size() == kProjectFileBytes);
    return out.bytes();
}

} // namespace orva
