#include "drawing/room_view.h"

#include "drawing/array_drawing.h"
#include "drawing/room_drawing.h"

namespace orva {

void DrawRoomView(DrawingSurface& surface, const Room& room, const LineArray& array,
                  const RoomViewContent& content, double speedOfSound,
                  const DrawingOptions& options)
{
    const bool drawable = !array.fault();
    const auto drawArray = [&] {
        const FloatPair cradle = array.GFAGetCradleCoord();
        if (drawable)
            DrawLineArray(surface, array, {cradle[0], -static_cast<double>(cradle[1])}, false,
                          options);
    };
    const auto drawAimingLines = [&] {
        if (drawable && content.aimingLines)
            DrawAimingLines(surface, aimingLines(room, array), content.bassBox, room.GFAGetFOH(),
                            speedOfSound, options);
    };

    surface.clear();
    GRoomSetup(surface, room);
    if (content.map) {
        RenderSPLMap(surface, room, *content.grid, *content.map, options);
        drawArray();
        GDrawRoomBasic(surface, room, options, false);
        drawAimingLines();
        DrawMapLegend(surface, *content.map, options);
        return;
    }
    GDrawRoomBasic(surface, room, options, false);
    drawAimingLines();
    if (drawable && content.fohDb)
        drawFohLevel(surface, room, *content.fohDb, content.aWeighted);
    drawArray();
}

} // namespace orva
