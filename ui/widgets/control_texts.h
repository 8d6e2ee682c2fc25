#pragma once

#include "widgets/session.h"

#include <QWidget>

namespace orva::ui {

/// Says of each control in a window what it is (to those who hear it read) and, as its tip, what it
/// is for, its unit and its range; in the current language.
void explainControls(QWidget& window, const Session& session);

} // namespace orva::ui
