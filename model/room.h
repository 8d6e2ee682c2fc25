#pragma once

#include "model/byte_stream.h"
#include "model/result.h"
#include "model/segment.h"
#include "model/vector_math.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orva {

/// The venue as a side section: room, point of reference, FOH, audience areas, and the project's
/// texts. A plain value; shows no messages. Setters return false, and change nothing, when they
/// refuse a value; figures that are not finite are always refused.
class Room {
public:
    static constexpr std::int16_t kAreas = 3;

    std::int16_t GIGetNumAreas() const { return NumAreas; }
    /// Width, height in metres.
    FloatPair GFAGetRoomDims() const { return RoomDims; }
    /// Metres from the room's lower-left corner.
    FloatPair GFAGetPointOfRef() const { return PointOfRef; }
    /// Whether the other's places are places of this room: same size and point of reference.
    bool sameFrame(const Room& other) const
    {
        return RoomDims == other.RoomDims && PointOfRef == other.PointOfRef;
    }
    /// Metres from the point of reference, as everything below.
    FloatPair GFAGetFOH() const { return FOH; }
    SegmentFigures GFAGetAudienceArea1() const { return m_areas[0]; }
    SegmentFigures GFAGetAudienceArea2() const { return m_areas[1]; }
    SegmentFigures GFAGetAudienceArea3() const { return m_areas[2]; }
    /// Texts in UTF-8, padded with blanks to 50, 50 and 200 characters.
    std::string GSGetProjectName() const;
    std::string GSGetAuthorName() const;
    std::string GSGetComment() const;

    /// 1 to 3 areas in use.
    bool GBSetNumAreas(std::int16_t count);
    /// Two figures, both above 0.
    bool GBSetRoomDims(std::span<const float> dims);
    /// Two figures, neither below 0.
    bool GBSetPointOfRef(std::span<const float> point);
    /// Two figures, neither below 0.
    bool GBSetFOH(std::span<const float> point);
    /// Six figures, the length not below 0.
    bool GBSetAudienceArea1(std::span<const float> area) { return setArea(0, area); }
    bool GBSetAudienceArea2(std::span<const float> area) { return setArea(1, area); }
    bool GBSetAudienceArea3(std::span<const float> area) { return setArea(2, area); }
    /// UTF-8 of at most 50, 50 and 200 characters. A character that Windows-1252 lacks becomes "?".
    bool GBSetProjectName(std::string_view name);
    bool GBSetAuthorName(std::string_view name);
    bool GBSetComment(std::string_view comment);
    /// Takes the three texts of another room.
    void takeTexts(const Room& other);

    /// Area 1 to 3; none for any other number.
    std::optional<SegmentFigures> GFAGetAudienceAreaSelect(int number) const;
    /// Ceiling 1, right wall 2, floor 3, left wall 4; six zeros for any other number. The angle of
    /// an upright wall is -180.
    SegmentFigures GFAGetRoomWalls(int number) const;

    // The same as values

    /// Area 1 to 3.
    Segment area(int number) const;
    /// Wall 1 to 4.
    Segment wall(int number) const { return segmentOf(GFAGetRoomWalls(number)); }
    Size size() const { return {RoomDims[0], RoomDims[1]}; }
    /// From the room's lower-left corner.
    Point reference() const { return {PointOfRef[0], PointOfRef[1]}; }
    Point foh() const { return {FOH[0], FOH[1]}; }

    static constexpr std::size_t kFileBytes = 398;
    /// Appends the 398-byte block.
    void GBWriteToFile(ByteWriter& out) const;
    /// Reads the block: 1 to 3 areas, a room larger than 0, finite figures. After an error the
    /// object is half read.
    Result<Done> GBReadFromFile(ByteReader& in);

    friend bool operator==(const Room&, const Room&) = default;

private:
    bool setArea(std::size_t index, std::span<const float> area);

    std::int16_t NumAreas = 1;
    FloatPair RoomDims{};
    std::array<SegmentFigures, kAreas> m_areas{};
    FloatPair PointOfRef{};
    FloatPair FOH{};
    // Windows-1252, one byte a character, padded with blanks
    std::string ProjectName = std::string(50, ' ');
    std::string AuthorName = std::string(50, ' ');
    std::string Comment = std::string(200, ' ');
};

} // namespace orva
