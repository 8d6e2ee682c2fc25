#include "model/project.h"

#include <algorithm>
#include <cassert>
#include <initializer_list>

namespace orva {

namespace {

/// The list's entries first, `rest` at the remaining positions.
LineArray::Positions positions(std::initializer_list<std::int16_t> first, std::int16_t rest)
{
    LineArray::Positions list;
    list.fill(rest);
    std::copy(first.begin(), first.end(), list.begin());
    return list;
}

LineArray newLineArray(std::int16_t arrayType)
{
    LineArray array;
    array.GBSetArrayType(arrayType);
    LineArray::Positions types{};
    LineArray::Positions angles{};
    if (arrayType == kStandardSystem) {
        types = positions({0, 0, 0, 1, 0, 1, 0, 1, 0, 1, 1, 1}, 0);
        for (std::size_t i = 12; i < types.size(); ++i)
            types[i] = static_cast<std::int16_t>(i % 2);
        angles = positions({4, 0, 0, 1, 1, 1, 2, 2, 2, 3, 4, 5}, 3);
        array.GBSetNumGerade(6);
        array.GBSetNumSchräg(6);
        array.GBSetNumSpeakers(12);
    } else {
        types = positions({}, array.system().TypeCodeGerade);
        angles = positions({5, 0, 1, 2, 3, 3, 5, 6}, 3);
        array.GBSetNumGerade(8);
        array.GBSetNumSchräg(0);
        array.GBSetNumSpeakers(8);
    }
    array.GBSetCradleCoord({1.0F, 7.5F});
    array.GBSetBassBoxCoord({1.0F, 0.0F});
    array.GBSetBassBox(true);
    array.GBSetMounting(true);
    array.GBSetNumBass(0);
    array.GBSetAngleOrPin(true);
    array.GBSetAllAngle(angles);
    array.GBSetAllType(types);
    array.GFACalcCOM();
    return array;
}

Room newRoom()
{
    Room room;
    [[maybe_unused]] const bool accepted =
        room.GBSetNumAreas(3) && room.GBSetAudienceArea1(AreaSegment{5, 1.7F, 20, 1.7F, 0, 15}) &&
        room.GBSetAudienceArea2(AreaSegment{20, 1.7F, 25, 2.14F, 5.03F, 5.02F}) &&
        room.GBSetAudienceArea3(AreaSegment{18, 3.5F, 27.4F, 6.93F, 20, 10}) &&
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

} // namespace orva
