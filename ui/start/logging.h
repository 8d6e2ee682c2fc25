#pragma once

#include <string>

namespace orva::ui {

/// From now on the toolkit's messages and the program's own go to that file; those of the toolkit
/// to the console as before.
void startLog(const std::string& file);
/// Versions, screens, vector instructions, once there is an application.
void logStartFacts();

} // namespace orva::ui
