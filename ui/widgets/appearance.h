#pragma once

#include "app/state/settings.h"
#include "drawing/colour_scheme.h"

namespace orva::ui {

/// Gives the program the colours and the style of an appearance; may be called again at any time.
/// Where something warns, its foreground role is
/// QPalette::BrightText; where it divides, QPalette::Link.
void useAppearance(Appearance appearance);

/// Of the drawings, in the appearance in use.
const ColourScheme& drawingScheme();

/// Whether what is shown is bright text on dark.
bool isDark();

} // namespace orva::ui
