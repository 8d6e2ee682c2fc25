#include "model/room.h"

#include "lang/windows1252.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace orva {

namespace {

/// Takes `from` when it has as many figures as `to`, all of them finite and accepted.
template<std::size_t n, typename Accepts>
bool take(std::span<const float> from, std::array<float, n>& to, Accepts accepts)
{
    const auto finite = [](float figure) { return std::isfinite(figure); };
    if (from.size() != n || !std::all_of(from.begin(), from.end(), finite) || !accepts())
        return false;
    std::copy(from.begin(), from.end(), to.begin());
    return true;
}

bool notBelowZero(std::span<const float> figures)
{
    return std::all_of(figures.begin(), figures.end(), [](float figure) { return figure >= 0; });
}

bool takeText(std::string_view utf8, std::string& padded)
{
    std::string bytes = windows1252FromUtf8(utf8);
    if (bytes.size() > padded.size())
        return false;
    bytes.resize(padded.size(), ' ');
    padded = std::move(bytes);
    return true;
}

} // namespace

std::string Room::GSGetProjectName() const
{
    return utf8FromWindows1252(ProjectName);
}

std::string Room::GSGetAuthorName() const
{
    return utf8FromWindows1252(AuthorName);
}

std::string Room::GSGetComment() const
{
    return utf8FromWindows1252(Comment);
}

bool Room::GBSetNumAreas(std::int16_t count)
{
    if (count < 1 || count > kAreas)
        return false;
    NumAreas = count;
    return true;
}

bool Room::GBSetRoomDims(std::span<const float> dims)
{
    return take(dims, RoomDims, [&] { return dims[0] > 0 && dims[1] > 0; });
}

bool Room::GBSetPointOfRef(std::span<const float> point)
{
    return take(point, PointOfRef, [&] { return notBelowZero(point); });
}

bool Room::GBSetFOH(std::span<const float> point)
{
    return take(point, FOH, [&] { return notBelowZero(point); });
}

bool Room::setArea(std::size_t index, std::span<const float> area)
{
    return take(area, m_areas[index], [&] { return area[5] >= 0; });
}

bool Room::GBSetProjectName(std::string_view name)
{
    return takeText(name, ProjectName);
}

bool Room::GBSetAuthorName(std::string_view name)
{
    return takeText(name, AuthorName);
}

bool Room::GBSetComment(std::string_view comment)
{
    return takeText(comment, Comment);
}

void Room::takeTexts(const Room& other)
{
    ProjectName = other.ProjectName;
    AuthorName = other.AuthorName;
    Comment = other.Comment;
}

std::optional<SegmentFigures> Room::GFAGetAudienceAreaSelect(int number) const
{
    if (number < 1 || number > kAreas)
        return std::nullopt;
    return m_areas[static_cast<std::size_t>(number - 1)];
}

Segment Room::area(int number) const
{
    assert(number >= 1 && number <= kAreas);
    return segmentOf(m_areas[static_cast<std::size_t>(number - 1)]);
}

SegmentFigures Room::GFAGetRoomWalls(int number) const
{
    const auto [width, height] = RoomDims;
    const float left = -PointOfRef[0];
    const float floor = -PointOfRef[1];
    const float right = width - PointOfRef[0];
    const float ceiling = height - PointOfRef[1];
    switch (number) {
    case 1:
        return {left, ceiling, right, ceiling, 0, width};
    case 2:
        return {right, ceiling, right, floor, -180, height};
    case 3:
        return {left, floor, right, floor, 0, width};
    case 4:
        return {left, ceiling, left, floor, -180, height};
    default:
        return {};
    }
}

void Room::GBWriteToFile(ByteWriter& out) const
{
    out.i16(NumAreas);
    out.f32(RoomDims);
    for (const SegmentFigures& area : m_areas)
        out.f32(area);
    out.f32(PointOfRef);
    out.f32(FOH);
    out.chars(ProjectName);
    out.chars(AuthorName);
    out.chars(Comment);
}

Result<Done> Room::GBReadFromFile(ByteReader& in)
{
    if (auto there = in.need(kFileBytes, Text::BlockRoom); !there)
        return there;
    NumAreas = in.i16();
    if (NumAreas < 1 || NumAreas > kAreas)
        return in.error(Message(Text::AreaCountOutside, {number(NumAreas)}));
    if (auto read = in.finite(RoomDims, Text::FieldRoomSize); !read)
        return read;
    if (RoomDims[0] <= 0 || RoomDims[1] <= 0)
        return in.error(Message(Text::RoomWithoutSize));
    for (SegmentFigures& area : m_areas)
        if (auto read = in.finite(area, Text::FieldArea); !read)
            return read;
    if (auto read = in.finite(PointOfRef, Text::FieldReference); !read)
        return read;
    if (auto read = in.finite(FOH, Text::FieldFoh); !read)
        return read;
    for (std::string* text : {&ProjectName, &AuthorName, &Comment})
        *text = in.chars(text->size());
    return Done{};
}

} // namespace orva
