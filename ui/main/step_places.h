#pragma once

#include "document/history.h"

#include <QString>

namespace orva::ui {

/// The pages of the main window, and what they are called.
enum PageTab { RoomTab, SetupTab, RiggingTab, SubArrayTab };
constexpr Text kPageTitles[] = {Text::LocationPage, Text::SetupPage, Text::RiggingPage,
                                Text::SubArrayPage};

/// Where the window shows what a step changed.
struct StepPlace {
    PageTab page;
    QString control;
};
StepPlace placeOf(const StepName& step);

} // namespace orva::ui
