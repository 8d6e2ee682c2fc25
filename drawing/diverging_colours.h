#pragma once

#include "drawing/colour_scheme.h"

namespace orva {

/// The colour of a difference: blue for -1, white for 0, orange for 1, what lies beyond as its end.
/// Steps are even to the eye (OKLab); blue and orange are told apart with any colour blindness.
Colour divergingColour(double share);

} // namespace orva
