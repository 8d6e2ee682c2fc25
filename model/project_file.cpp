#include "model/project_file.h"

#include "lang/utf8.h"
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

/// A block of the current version: an array and a sub array.
constexpr std::size_t kKeptBytes = LineArray::kFileBytes + kSubArrayBytes;
constexpr std::int16_t kVariantsVersion = 1;
constexpr std::size_t kVariantsHeaderBytes = 8 + 2 + 4;

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

void writeSubArray(ByteWriter& out, const SubArray& subArray)
{
    out.f32(subArray.SubPos);
    out.f32(subArray.openingAngleDeg);
}

/// A name of a variant: UTF-8 without control characters.
bool isName(std::string_view name)
{
    return printable(name) == name;
}

Result<Done> readVariant(ByteReader& in, const LineArray& current, std::size_t number,
                         Variants& variants)
{
    const auto wrong = [&] { return in.error(Message(Text::NoSuchVariant)); };
    if (auto there = in.need(2, Text::BlockVariants); !there)
        return there;
    const std::int16_t length = in.i16();
    if (length < 0 || static_cast<std::size_t>(length) > Variants::kLongestName)
        return wrong();
    if (auto there = in.need(static_cast<std::size_t>(length) + 2, Text::BlockVariants); !there)
        return there;
    variants.names[number] = in.chars(static_cast<std::size_t>(length));
    if (!isName(variants.names[number]))
        return wrong();
    const std::int16_t kept = in.i16();
    if (kept != 0 && (kept != 1 || number == variants.current))
        return wrong();
    if (kept == 0)
        return Done{};
    if (auto there = in.need(kKeptBytes, Text::BlockVariants); !there)
        return there;
    Result<LineArray> array = readArray(in, kWrittenVersion);
    if (!array)
        return array.error();
    if (array->GIGetArrayType() != current.GIGetArrayType())
        return wrong();
    Result<SubArray> subArray = readSubArray(in);
    if (!subArray)
        return subArray.error();
    variants.kept[number] = KeptSetup{*array, *subArray};
    return Done{};
}

/// What stands behind the mark.
Result<Variants> readVariants(ByteReader& in, const LineArray& current)
{
    in.chars(kVariantsMark.size());
    const std::int16_t version = in.i16();
    if (version != kVariantsVersion)
        return in.error(Message(Text::ForeignVariants, {number(version)}));
    const std::int32_t length = in.i32();
    if (length < 2)
        return in.error(Message(Text::NoSuchVariant));
    if (auto there = in.need(static_cast<std::size_t>(length), Text::BlockVariants); !there)
        return there.error();
    const std::size_t start = in.offset();
    Variants variants;
    const std::int16_t now = in.i16();
    if (now < 0 || static_cast<std::size_t>(now) >= Variants::kMost)
        return in.error(Message(Text::NoSuchVariant));
    variants.current = static_cast<std::size_t>(now);
    for (std::size_t i = 0; i < Variants::kMost; ++i)
        if (auto read = readVariant(in, current, i, variants); !read)
            return read.error();
    if (in.offset() != start + static_cast<std::size_t>(length))
        return in.error(Message(Text::NoSuchVariant));
    return variants;
}

void writeVariants(ByteWriter& out, const Variants& variants)
{
    ByteWriter block;
    block.i16(static_cast<std::int16_t>(variants.current));
    for (std::size_t i = 0; i < Variants::kMost; ++i) {
        block.i16(static_cast<std::int16_t>(variants.names[i].size()));
        block.chars(variants.names[i]);
        block.i16(variants.kept[i] ? 1 : 0);
        if (variants.kept[i]) {
            variants.kept[i]->array.GBWriteToFile(block);
            writeSubArray(block, variants.kept[i]->subArray);
        }
    }
    out.chars(kVariantsMark);
    out.i16(kVariantsVersion);
    out.i32(static_cast<std::int32_t>(block.bytes().size()));
    out.append(block.bytes());
}

bool marksVariants(std::span<const std::byte> bytes)
{
    return bytes.size() >= kVariantsHeaderBytes &&
           std::equal(kVariantsMark.begin(), kVariantsMark.end(), bytes.begin(),
                      [](char c, std::byte b) { return static_cast<std::byte>(c) == b; });
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
    loaded.size = in.offset();
    if (*version == kWrittenVersion && marksVariants(bytes.subspan(loaded.size))) {
        Result<Variants> variants = readVariants(in, loaded.project.array);
        if (!variants)
            return variants.error();
        loaded.project.variants = std::move(*variants);
        loaded.size = in.offset();
    }
    return loaded;
}

std::vector<std::byte> writeProject(const Project& project)
{
    ByteWriter out;
    WriteProjectHeader(out);
    project.room.GBWriteToFile(out);
    project.array.GBWriteToFile(out);
    writeSubArray(out, project.subArray);
    assert(out.bytes().size() == kProjectFileBytes);
    if (project.variants.any())
        writeVariants(out, project.variants);
    return out.bytes();
}

} // namespace orva
