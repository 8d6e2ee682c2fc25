#include "model/line_array_old.h"

#include "model/line_array_file.h"

#include <algorithm>
#include <tuple>

namespace orva {

Result<Done> LineArray_old::GBReadFromFile(ByteReader& in)
{
    if (auto there = in.need(kFileBytes, Text::BlockArray); !there)
        return there;
    for (const auto& [count, what, low] : {std::tuple(&NumGerade, Text::KindStraight, 0),
                                           std::tuple(&NumSchräg, Text::KindTrapezoidal, 0),
                                           std::tuple(&NumSpeakers, Text::KindMidHigh, 1)})
        if (auto read = readBoxCount(in, what, low, *count); !read)
            return read;
    readPositions(in, AllType);
    readPositions(in, AllAngle);
    const Result<ArrayPlacing> placing = readPlacing(in);
    if (!placing)
        return placing.error();
    CradleCoord = placing->cradleCoord;
    BassBoxCoord = placing->bassBoxCoord;
    BassBox = placing->bassBox;
    Mounting = placing->mounting;
    AngleOrPin = placing->angleOrPin;
    return Done{};
}

LineArray ConvertOldLineArray(const LineArray_old& old)
{
    const LineArray::Positions types = old.GIAGetAllType();
    const auto countOf = [&](std::int16_t code) {
        return static_cast<std::int16_t>(std::count(types.begin(), types.begin() + 24, code));
    };
    const std::int16_t straight = countOf(0);
    const std::int16_t trapezoidal = countOf(1);

    LineArray array;
    array.GBSetNumGerade(straight);
    array.GBSetNumSchräg(trapezoidal);
    array.GBSetNumBass(0);
    array.GBSetNumSpeakers(static_cast<std::int16_t>(straight + trapezoidal));
    array.GBSetArrayType(kStandardSystem);
    array.GBSetAllType(types);
    array.GBSetAllAngle(old.GIAGetAllAngle());
    array.GBSetCradleCoord(old.GFAGetCradleCoord());
    array.GBSetBassBoxCoord(old.GFAGetBassBoxCoord());
    array.GBSetBassBox(old.GBGetBassBox());
    array.GBSetMounting(old.GBGetMounting());
    array.GBSetAngleOrPin(old.GBGetAngleOrPin());
    array.GFACalcCOM();
    return array;
}

} // namespace orva
