#pragma once

#include "widgets/session.h"

#include <QWidget>

namespace orva::ui {

/// Has the platform open a file or folder with the program for its kind, which outlives this one.
/// When none did, at once or later, `window` says so as long as it lives.
void openOutside(const Session& session, const QString& file, QWidget* window);

} // namespace orva::ui
