#pragma once

#include "drawing/aiming_drawing.h"
#include "drawing/spl_map_drawing.h"
#include "model/line_array.h"
#include "model/room.h"

#include <optional>
#include <vector>

namespace orva {

enum class MapFigures { Levels, Differences, Evenness };

/// What the room view shows besides the room and the array.
struct RoomViewContent {
    const MapGrid* grid = nullptr; ///< with `map`
    const SummedMap* map = nullptr;
    MapFigures figures = MapFigures::Levels; ///< that the map shows
    std::optional<double> audienceMeanDb;    ///< of the levels along the areas
    bool aimingLines = true;
    BassBoxView bassBox;
    std::optional<float> fohDb; ///< level to print at the FOH
    bool aWeighted = false;
    std::vector<std::vector<float>> profiles; ///< levels along audience areas 1, 2, ...
};

/// How many points the profile of each area has in a view so many pixels large.
std::vector<int> profilePointsOf(const Room& room, double pixelWidth, double pixelHeight);

/// The side section with map, array, aiming lines, the level at the FOH and the profiles. An array
/// with a fault() is left out, with all that hangs on it. Leaves the scale of GRoomSetup().
void DrawRoomView(DrawingSurface& surface, const Room& room, const LineArray& array,
                  const RoomViewContent& content, double speedOfSound,
                  const DrawingOptions& options);

} // namespace orva
