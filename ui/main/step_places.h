#pragma once

#include "document/history.h"

#include <QString>

namespace orva::ui {

/// Where the window shows what a step changed.
struct StepPlace {
    int page; ///< of the main window
    QString control;
};
StepPlace placeOf(const StepName& step);

} // namespace orva::ui
