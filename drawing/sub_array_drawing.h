#pragma once

#include "drawing/drawing_surface.h"
#include "engine/sub_array_figures.h"

namespace orva {

/// The row of the sub array in black and, in blue, where each box seems to stand; metres.
void DrawSubArray(DrawingSurface& surface, const SubArray& subArray,
                  const SubArrayFigures& figures);

} // namespace orva
