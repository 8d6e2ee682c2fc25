#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "model/line_array.h"

namespace orva {

/// Draws the array with its cradle so that its carrying pin (flown) or its base (stacked) comes to
/// `origin`, in metres. Simple: outlines and the centre of gravity. Detailed: pins, the carrying
/// pin in red with a line from the centre of gravity, the boxes' numbers and splay angles, a red
/// square at each acoustic source point. The array must have no fault().
void DrawLineArray(DrawingSurface& surface, const LineArray& array, Point origin, bool detailed,
                   const DrawingOptions& options);

/// The rigging view: the array in detail, as large as fits, over its grid.
void DrawRiggingView(DrawingSurface& surface, const LineArray& array,
                     const DrawingOptions& options);

} // namespace orva
