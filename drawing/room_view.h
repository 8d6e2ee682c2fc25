#pragma once

#include "drawing/aiming_drawing.h"
#include "drawing/spl_map_drawing.h"
#include "model/line_array.h"
#include "model/room.h"

#include <optional>

namespace orva {

/// What the room view shows besides the room and the array.
struct RoomViewContent {
    const MapGrid* grid = nullptr; ///< with `map`
    const SummedMap* map = nullptr;
    bool aimingLines = true;
    BassBoxView bassBox;
    std::optional<float> fohDb; ///< level to print at the FOH
    bool aWeighted = false;
};

/// The side section with map, array, aiming lines and the level at the FOH. An array with a fault()
/// is left out, with all that hangs on it. Leaves the scale of GRoomSetup().
void DrawRoomView(DrawingSurface& surface, const Room& room, const LineArray& array,
                  const RoomViewContent& content, double speedOfSound,
                  const DrawingOptions& options);

} // namespace orva
