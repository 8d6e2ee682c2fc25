#pragma once

#include <QSocketNotifier>
#include <functional>

namespace orva::ui {

/// An end that comes unasked: a signal (SIGTERM, SIGHUP, SIGINT), a lost display. `save` runs once,
/// then the program ends by that signal.
class Emergency {
public:
    explicit Emergency(std::function<void()> save);
    ~Emergency();
    Emergency(const Emergency&) = delete;
    Emergency& operator=(const Emergency&) = delete;

private:
    void signalCame();

    std::function<void()> m_save;
    QSocketNotifier m_notifier;
};

} // namespace orva::ui
