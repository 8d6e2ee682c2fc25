// How long an edit and its undoing take until the levels are on the screen: 24 boxes, broadband,
// 1920 x 1080.

#include "window_bench.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <cstdio>
#include <functional>
#include <vector>

using namespace orva;

namespace {

void choose(QComboBox& box, int index)
{
    box.setCurrentIndex(index);
    emit box.activated(index);
}

/// Prints how long it takes until what `act` does is on the screen; whether the median is below
/// `mostMs`.
bool within(const char* what, double mostMs, QWidget& window, const std::function<void()>& act)
{
    std::vector<double> ms;
    for (int i = 0; i < 50; ++i) {
        QElapsedTimer timer;
        timer.start();
        act();
        QApplication::processEvents();
        window.grab();
        ms.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    const double middle = median(ms);
    std::printf("%s, 24 boxes, 1920 x 1080: median %.1f ms, largest %.1f ms (median must be below "
                "%.0f)\n",
                what, middle, ms.back(), mostMs);
    return middle < mostMs;
}

} // namespace

int main(int argc, char** argv)
{
    WindowBench program(argc, argv);
    ui::MainWindow window(program.session);
    window.resize(1920, 1080);
    window.begin();
    window.show();
    window.findChild<QTabWidget*>("Main_SSTab")->setCurrentIndex(1);
    choose(*window.findChild<QComboBox*>("cmbNumSpk"), 23);
    window.grab();

    auto& joint = *window.findChild<QComboBox*>("cmbAngle(5)");
    const bool edits = within("edit", 50, window,
                              [&] { choose(joint, (joint.currentIndex() + 1) % joint.count()); });
    auto& undo = *window.findChild<QAction*>("mnuUndo");
    const bool undos = within("undo", 16, window, [&] { undo.trigger(); });
    return edits && undos ? 0 : 1;
}
