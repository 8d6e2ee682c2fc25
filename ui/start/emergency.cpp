#include "start/emergency.h"

#include <array>
#include <csignal>
#include <cstdlib>

#include <sys/socket.h>
#include <unistd.h>

namespace orva::ui {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};

/// A handler may do next to nothing: it writes the number here, and the event loop reads it.
std::array<int, 2> signalSockets = {-1, -1};
/// What exit() has to do where the toolkit ends the program, as when its display is lost.
std::function<void()>* saveAtExit = nullptr;

void onSignal(int number)
{
    const auto byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = ::write(signalSockets[0], &byte, 1);
}

int madeSockets()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalSockets.data()) != 0)
        signalSockets = {-1, -1};
    return signalSockets[1];
}

} // namespace

Emergency::Emergency(std::function<void()> save)
    : m_save(std::move(save)), m_notifier(madeSockets(), QSocketNotifier::Read)
{
    if (signalSockets[0] < 0)
        return;
    saveAtExit = &m_save;
    std::atexit([] {
        if (saveAtExit)
            (*saveAtExit)();
    });
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                     [this] { signalCame(); });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (const int number : kSignals) {
        struct sigaction before = {};
        // What the caller wants ignored (nohup) stays ignored.
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(number, &action, nullptr);
    }
}

Emergency::~Emergency()
{
    saveAtExit = nullptr;
}

void Emergency::signalCame()
{
    char number = 0;
    if (::read(signalSockets[1], &number, 1) != 1)
        return;
    saveAtExit = nullptr;
    m_save();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace orva::ui
