#include "cli/interruption.h"

#include <atomic>

namespace orva {

namespace {

std::atomic<bool> signalCame = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a handler may touch no other");

void onSignal(int)
{
    signalCame = true;
    for (const int number : {SIGINT, SIGTERM}) {
        struct sigaction now = {};
        if (::sigaction(number, nullptr, &now) == 0 && now.sa_handler == onSignal)
            ::signal(number, SIG_DFL);
    }
}

} // namespace

Interruption::Interruption() : m_before{{SIGINT, {}}, {SIGTERM, {}}}
{
    signalCame = false;
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (Before& before : m_before)
        if (::sigaction(before.number, nullptr, &before.action) == 0 &&
            before.action.sa_handler != SIG_IGN)
            ::sigaction(before.number, &action, nullptr);
}

Interruption::~Interruption()
{
    for (const Before& before : m_before)
        ::sigaction(before.number, &before.action, nullptr);
}

bool Interruption::came()
{
    return signalCame;
}

} // namespace orva
