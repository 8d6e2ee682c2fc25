#include "document/section_handle.h"

#include "document/room_form.h"
#include "document/setup_edit.h"
#include "lang/number_text.h"

#include <algorithm>
#include <cmath>

namespace orva {

StepName Handle::step() const
{
    switch (kind) {
    case HandleKind::PickPoint:
        return {Text::StepCradle};
    case HandleKind::BassBox:
        return {Text::StepBassBox};
    case HandleKind::Foh:
        return {Text::StepFoh};
    case HandleKind::Reference:
        return {Text::StepReference};
    case HandleKind::AreaStart:
    case HandleKind::AreaEnd:
    case HandleKind::Area:
        break;
    }
    return {Text::StepArea, area};
}

Point placeOf(const DocumentState& state, const Handle& handle)
{
    const Room& room = state.project.room;
    const LineArray& array = state.project.array;
    switch (handle.kind) {
    case HandleKind::PickPoint:
        return {array.GFAGetCradleCoord()[0], array.GFAGetCradleCoord()[1]};
    case HandleKind::BassBox:
        return {array.GFAGetBassBoxCoord()[0], array.GFAGetBassBoxCoord()[1]};
    case HandleKind::Foh:
        return room.foh();
    case HandleKind::Reference:
        return room.reference();
    case HandleKind::AreaEnd:
        return room.area(handle.area).end;
    case HandleKind::AreaStart:
    case HandleKind::Area:
        break;
    }
    return room.area(handle.area).start;
}

std::optional<Handle> handleAt(const DocumentState& state, const Point& point, double reachM,
                               bool withArray)
{
    const Room& room = state.project.room;
    std::optional<Handle> nearest;
    double least = reachM;
    const auto offer = [&](const Handle& handle, double distance) {
        if (distance > least || (nearest && distance == least))
            return;
        least = distance;
        nearest = handle;
    };
    const auto offerPoint = [&](const Handle& handle) {
        Point place = placeOf(state, handle);
        if (handle.kind == HandleKind::Reference)
            place = {}; // everything else is seen from there
        offer(handle, std::hypot(place.x - point.x, place.y - point.y));
    };
    if (withArray) {
        offerPoint({HandleKind::PickPoint});
        if (state.project.array.GBGetBassBox())
            offerPoint({HandleKind::BassBox});
    }
    offerPoint({HandleKind::Foh});
    offerPoint({HandleKind::Reference});
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        offerPoint({HandleKind::AreaStart, number});
        offerPoint({HandleKind::AreaEnd, number});
    }
    if (nearest)
        return nearest;
    for (int number = 1; number <= room.GIGetNumAreas(); ++number)
        offer({HandleKind::Area, number}, room.area(number).distanceTo(point));
    return nearest;
}

namespace {

/// As it would be typed, in the unit of the user.
double typed(double metres, const Shift& shift)
{
    const double shown = shift.inMetres ? metres : metres / kMetresPerFoot;
    return roundedTo(shown, shift.onRaster ? 1 : 2);
}

bool moveArea(Room& room, const Room& start, const Handle& handle, const Point& from,
              const Shift& shift)
{
    const auto [byX, byY] = shift.byM;
    SegmentFigures area = *start.GFAGetAudienceAreaSelect(handle.area);
    const auto type = [&](AreaEntry entry, double figure) {
        area = SyncAreaEntries(area, entry, figure, shift.inMetres);
    };
    const bool end = handle.kind == HandleKind::AreaEnd;
    const double unit = shift.inMetres ? 1 : kMetresPerFoot;
    const double endX = area[2] / unit;
    const double endY = area[3] / unit;
    if (byX != 0)
        type(end ? AreaEntry::X2 : AreaEntry::X1, typed(from.x + byX, shift));
    if (byY != 0)
        type(end ? AreaEntry::Y2 : AreaEntry::Y1, typed(from.y + byY, shift));
    if (handle.kind == HandleKind::AreaStart) {
        type(AreaEntry::X2, roundedTo(endX, 3));
        type(AreaEntry::Y2, roundedTo(endY, 3));
    }
    return setArea(room, handle.area, area);
}

} // namespace

bool moveHandle(DocumentState& state, const DocumentState& start, const Handle& handle,
                const Shift& dragged, bool autoCorrect)
{
    Shift shift = dragged;
    Size& by = shift.byM;
    if (shift.alongOneAxis)
        (std::abs(by.width) < std::abs(by.height) ? by.width : by.height) = 0;
    const Point from = placeOf(start, handle);
    // What does not move keeps its figure, be it on the raster or not.
    const auto figure = [&](double was, double moved) {
        return moved == 0 ? static_cast<float>(was)
                          : static_cast<float>(metresOf(typed(was + moved, shift), shift.inMetres));
    };
    const FloatPair pair = {figure(from.x, by.width), figure(from.y, by.height)};
    const FloatPair above = {std::max(0.0F, pair[0]), std::max(0.0F, pair[1])};
    Room& room = state.project.room;
    LineArray& array = state.project.array;
    switch (handle.kind) {
    case HandleKind::PickPoint:
        return array.GBSetCradleCoord(pair) && applySetup(state, autoCorrect);
    case HandleKind::BassBox:
        return array.GBSetBassBoxCoord(pair) && applySetup(state, autoCorrect);
    case HandleKind::Foh:
        return room.GBSetFOH(above);
    case HandleKind::Reference:
        return room.GBSetPointOfRef(above);
    case HandleKind::AreaStart:
    case HandleKind::AreaEnd:
    case HandleKind::Area:
        break;
    }
    return moveArea(room, start.project.room, handle, from, shift);
}

} // namespace orva
