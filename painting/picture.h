#pragma once

#include "drawing/drawing_surface.h"

#include <functional>
#include <string>

namespace orva {

/// Fonts need an application object: where there is none yet one is made that shows nothing, and
/// stays until the program ends.
void needApplication();

/// A PNG of `width` x `height` pixels (both above 0) that `draw` has drawn on, white before. Needs
/// no display: where the program has no window system yet it makes one that shows nothing. A line
/// one pixel wide in the drawing covers `ratio` pixels of the picture.
std::string pngPicture(int width, int height, const std::function<void(DrawingSurface&)>& draw,
                       double ratio = 1);

} // namespace orva
