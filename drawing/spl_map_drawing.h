#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "drawing/label_places.h"
#include "drawing/level_colours.h"
#include "engine/spl_map.h"
#include "model/room.h"

namespace orva {

/// The colours of the map over the room (after GRoomSetup()) and the colour bar along the bottom
/// edge, for the room to be drawn over them. Cells where nothing radiates stay as the canvas is.
void RenderSPLMap(DrawingSurface& surface, const Room& room, const MapGrid& grid,
                  const SummedMap& map, const LevelColours& colours);

/// How high the colour bar is, pixels.
double colourBarHeight(DrawingSurface& surface);

/// Keeps the place of DrawMapLegend() free of labels.
void occupyMapLegend(LabelPlaces& labels, DrawingSurface& surface, const SummedMap& map,
                     const DrawingOptions& options);

/// Largest and smallest level in the upper left corner, over the rest.
void DrawMapLegend(DrawingSurface& surface, const SummedMap& map, const DrawingOptions& options);

} // namespace orva
