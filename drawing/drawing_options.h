#pragma once

#include "lang/text_options.h"

namespace orva {

/// How drawings are made for the user: the grids in the unit of `text`. The values are those of a
/// first start, in metres.
struct DrawingOptions {
    TextOptions text;
    float GridUnit_Room = 5;
    float GridUnit_Rigging = 0.5F;
    float GridUnit_Area = 1;
};

} // namespace orva
