#pragma once

// What the benches of the window share: a program without a display, with the shipped data.
#include "app/state/memory.h"
#include "app/state/memory_settings.h"
#include "main/main_window.h"

#include <QApplication>
#include <algorithm>
#include <cstdlib>
#include <vector>

namespace orva {

/// Made before anything else of the window.
struct WindowBench {
    WindowBench(int& argc, char** argv) : application((withoutDisplay(), argc), argv)
    {
        session.state().settings.ShowNewQuery = false;
        if (!LoadSystemData(session.state(), session.programFolder() / "bin"))
            std::exit(1);
    }
    static void withoutDisplay()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        returnLargeMemory();
    }

    QApplication application;
    MemorySettings store;
    ui::Session session{store, {QCoreApplication::applicationDirPath().toStdString() + "/.."}};
};

/// Sorts the figures.
inline double median(std::vector<double>& figures)
{
    std::sort(figures.begin(), figures.end());
    return figures[figures.size() / 2];
}

} // namespace orva
