#include "model/project.h"

#include <cassert>

namespace orva {

namespace {

LineArray newLineArray(std::int16_t arrayType)
{
    LineArray array;
    array.GBSetArrayType(arrayType);
    const NewArray& first = array.system().newArray;
    array.GBSetNumGerade(first.straight);
    array.GBSetNumSchräg(first.trapezoidal);
    array.GBSetNumSpeakers(static_cast<std::int16_t>(first.straight + first.trapezoidal));
    array.GBSetCradleCoord({1.0F, 7.5F});
    array.GBSetBassBoxCoord({1.0F, 0.0F});
    array.GBSetBassBox(true);
    array.GBSetMounting(true);
    array.GBSetNumBass(0);
    array.GBSetAngleOrPin(true);
    array.GBSetAllAngle(first.angles);
    array.GBSetAllType(first.types);
    array.GFACalcCOM();
    return array;
}

Room newRoom()
{
    Room room;
    [[maybe_unused]] const bool accepted =
        room.GBSetNumAreas(3) &&
        room.GBSetAudienceArea1(SegmentFigures{5, 1.7F, 20, 1.7F, 0, 15}) &&
        room.GBSetAudienceArea2(SegmentFigures{20, 1.7F, 25, 2.14F, 5.03F, 5.02F}) &&
        room.GBSetAudienceArea3(SegmentFigures{18, 3.5F, 27.4F, 6.93F, 20, 10}) &&
        room.GBSetRoomDims(FloatPair{30, 8}) && room.GBSetFOH(FloatPair{20, 2.2F}) &&
        room.GBSetPointOfRef(FloatPair{0, 0});
    assert(accepted);
    return room;
}

} // namespace

Project newProject(std::int16_t arrayType)
{
    return {newRoom(), newLineArray(arrayType), SubArray{}};
}

Extent extentOf(const Room& room, const LineArray& array)
{
    const std::array<float, 4> bounds = array.GFAGetBounds();
    const double x = array.GFAGetCradleCoord()[0] + room.reference().x;
    const double y = array.GFAGetCradleCoord()[1] + room.reference().y;
    const bool flown = array.GBGetMounting();
    return {x + bounds[2], x + bounds[0], flown ? y - bounds[1] : y,
            flown ? y - bounds[3] : y - bounds[1]};
}

bool fitsIn(const Room& room, const Extent& extent)
{
    const auto [width, height] = room.GFAGetRoomDims();
    return extent.left >= 0 && extent.right <= width && extent.lowest >= 0 &&
           extent.highest <= height;
}

} // namespace orva
