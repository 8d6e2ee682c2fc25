#pragma once

namespace orva::ui {

/// Whether the desktop shows bright text on dark.
bool isDark();

/// Gives the application the program's own colours: a background where the desktop is a light one,
/// and readable figures where they are locked.
void useColours();

} // namespace orva::ui
