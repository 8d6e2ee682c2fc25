#pragma once

#include "drawing/drawing_options.h"
#include "drawing/label_places.h"
#include "drawing/level_colours.h"
#include "engine/spl_map.h"

#include <span>
#include <vector>

namespace orva {

/// A piece of a line of equal level.
struct ContourPiece {
    Point from;
    Point to;
    int levelDb;
};

/// The lines at every multiple of `stepDb` in a grid of levels (`columns` x `rows`, row by row),
/// in grid units: (0, 0) is the middle of the first cell. Squares with a level that is not finite
/// have none.
std::vector<ContourPiece> contourPieces(std::span<const float> levels, int columns, int rows,
                                        int stepDb);

/// Lines of equal level every 3 dB over a map, with their levels, in the room view's scale.
void DrawContours(DrawingSurface& surface, const MapGrid& grid, const SummedMap& map,
                  const LevelColours& colours, LabelPlaces& labels);

} // namespace orva
