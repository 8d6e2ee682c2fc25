#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "drawing/label_places.h"
#include "model/room.h"

namespace orva {

/// Fits the room with a margin of 30 pixels, or the surface's part of that view, in metres, the
/// point of reference at (0, 0): a room point (x, y) is drawn at (x, -y). Returns how far the point
/// of reference lies from the left and the top.
Point GRoomSetup(DrawingSurface& surface, const Room& room);

/// The scale that GRoomSetup() gives a surface so many pixels large.
Scale roomViewScale(const Room& room, double pixelWidth, double pixelHeight);

/// Metres that a device pixel covers there, `ratio` of them to a pixel of the surface.
Size devicePixel(const Room& room, double pixelWidth, double pixelHeight, double ratio);

void DrawRoomGrid(DrawingSurface& surface, const DrawingOptions& options);

/// Walls, floor and ceiling.
void GDrawRoomOutline(DrawingSurface& surface, const Room& room);

/// Axis cross in the room's lower left corner and, in the surface's upper left one, the unit of a
/// grid that is drawn.
void GDrawCoord(DrawingSurface& surface, const Room& room, const DrawingOptions& options);

/// Audience areas, point of reference and FOH.
void GDrawAreas(DrawingSurface& surface, const Room& room, const DrawingOptions& options);

/// All of these, after GRoomSetup().
void GDrawRoomBasic(DrawingSurface& surface, const Room& room, const DrawingOptions& options,
                    bool clear);

/// The level at the FOH, "-" for minus infinity.
void drawFohLevel(LabelPlaces& labels, const Room& room, float levelDb, bool aWeighted);

} // namespace orva
