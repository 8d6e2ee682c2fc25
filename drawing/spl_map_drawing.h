#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "engine/spl_map.h"
#include "model/room.h"

namespace orva {

/// The colours of the map over the room (after GRoomSetup()), largest and smallest level in the
/// upper left corner, the colour bar along the bottom edge. Cells where nothing radiates stay
/// white.
void RenderSPLMap(DrawingSurface& surface, const Room& room, const MapGrid& grid,
                  const SummedMap& map, const DrawingOptions& options);

/// Legend and colour bar alone, for whoever draws a grid over the map.
void DrawMapLegend(DrawingSurface& surface, const SummedMap& map, const DrawingOptions& options);

} // namespace orva
