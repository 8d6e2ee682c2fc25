#pragma once

#include <csignal>

namespace orva {

/// While one lives, the first SIGINT or SIGTERM is only noted, so that what was calculated can be
/// printed; the second ends the program as if there were none. Signals that the caller wants
/// ignored stay ignored. One at a time.
class Interruption {
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// Whether a signal came since the last one was made; may be asked from any thread.
    static bool came();

private:
    struct Before {
        int number;
        struct sigaction action;
    };
    Before m_before[2];
};

} // namespace orva
