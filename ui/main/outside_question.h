#pragma once

#include "widgets/session.h"

#include <QWidget>

namespace orva::ui {

enum class OutsideAnswer { Reload, KeepMine, SaveAs, None };

/// What becomes of a project whose file another program has changed, or removed. `loses`: what was
/// edited here would go with a reload.
OutsideAnswer askOutside(const Session& session, QWidget* window, const QString& file, bool removed,
                         bool loses);

} // namespace orva::ui
