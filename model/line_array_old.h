#pragma once

#include "model/line_array.h"

namespace orva {

/// The array block of project versions 0 and 1: always the standard system, no bass boxes.
class LineArray_old {
public:
    std::int16_t GIGetNumGerade() const { return NumGerade; }
    std::int16_t GIGetNumSchräg() const { return NumSchräg; }
    std::int16_t GIGetNumSpeakers() const { return NumSpeakers; }
    LineArray::Positions GIAGetAllType() const { return AllType; }
    LineArray::Positions GIAGetAllAngle() const { return AllAngle; }
    FloatPair GFAGetCradleCoord() const { return CradleCoord; }
    FloatPair GFAGetBassBoxCoord() const { return BassBoxCoord; }
    bool GBGetBassBox() const { return BassBox; }
    bool GBGetMounting() const { return Mounting; }
    bool GBGetAngleOrPin() const { return AngleOrPin; }

    static constexpr std::size_t kFileBytes = 156;
    /// Reads the block under the same rules as LineArray::GBReadFromFile.
    Result<Done> GBReadFromFile(ByteReader& in);

private:
    std::int16_t NumGerade = 0;
    std::int16_t NumSchräg = 0;
    std::int16_t NumSpeakers = 0;
    LineArray::Positions AllType{};
    LineArray::Positions AllAngle{};
    FloatPair CradleCoord{};
    FloatPair BassBoxCoord{};
    bool BassBox = false;
    bool Mounting = false;
    bool AngleOrPin = false;
};

/// The same array in the current layout. The counts come from the codes at positions 0..23; the
/// stored ones are not used.
LineArray ConvertOldLineArray(const LineArray_old& old);

} // namespace orva
