#include "drawing/room_view.h"

#include "drawing/array_drawing.h"
#include "drawing/contours.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_drawing.h"

namespace orva {

void DrawRoomView(DrawingSurface& surface, const Room& room, const LineArray& array,
                  const RoomViewContent& content, double speedOfSound,
                  const DrawingOptions& options)
{
    const bool drawable = !array.fault();
    const auto [cradleX, cradleY] = array.GFAGetCradleCoord();
    surface.clear();
    GRoomSetup(surface, room);
    LabelPlaces labels(surface);
    if (content.map) {
        const SummedMap& map = *content.map;
        const LevelColours colours =
            content.figures == MapFigures::Differences
                ? LevelColours::ofDifference(map.min, map.max)
            : content.figures == MapFigures::Evenness
                ? LevelColours::ofEvenness(map.min)
                : LevelColours(options.map, map.max, content.audienceMeanDb);
        RenderSPLMap(surface, room, *content.grid, *content.map, colours);
        occupyMapLegend(labels, surface, *content.map, options);
        if (options.map.contours)
            DrawContours(surface, *content.grid, *content.map, colours, labels);
    }
    // The given colours are for the given scheme.
    surface.setRims(content.map && (options.map.colours != MapColours::Classic ||
                                    surface.colour(Role::Canvas) != kWhite));
    if (drawable)
        DrawLineArray(surface, array, {cradleX, -static_cast<double>(cradleY)}, false, options);
    GDrawRoomBasic(surface, room, options, false);
    if (drawable && content.fohDb && !content.map)
        drawFohLevel(labels, room, *content.fohDb, content.aWeighted);
    if (drawable && content.aimingLines)
        DrawAimingLines(surface, aimingLines(room, array), content.bassBox, speedOfSound, options,
                        labels, content.map ? colourBarHeight(surface) : 0);
    DrawProfiles(surface, room, content.profiles);
    surface.setRims(false);
    if (content.map)
        DrawMapLegend(surface, *content.map, options);
}

std::vector<int> profilePointsOf(const Room& room, double pixelWidth, double pixelHeight)
{
    const double metresPerPixel = roomViewScale(room, pixelWidth, pixelHeight).width / pixelWidth;
    std::vector<int> points;
    for (int number = 1; number <= room.GIGetNumAreas(); ++number)
        points.push_back(profilePoints(metresPerPixel, room.area(number)));
    return points;
}

} // namespace orva
