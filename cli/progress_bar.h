#pragma once

#include <chrono>
#include <iosfwd>
#include <string>

namespace orva {

/// A line with bar, percent, rate and time left that is written over itself. Shows nothing unless
/// `shown`. Ends its line when it goes.
class ProgressBar {
public:
    ProgressBar(std::ostream& err, bool shown, std::string label);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// `done` of `total` rows; always true: go on.
    bool update(int done, int total);

private:
    using Clock = std::chrono::steady_clock;

    std::ostream& m_err;
    bool m_shown;
    std::string m_label;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_lastDrawn;
    bool m_drawn = false;
};

} // namespace orva
