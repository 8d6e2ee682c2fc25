#pragma once

namespace orva::ui {

/// Gives the application the program's own colours, where the desktop is a light one.
void useColours();

} // namespace orva::ui
