#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace orva {

/// A line with bar, percent, rate and time left that is written over itself. Shows nothing unless
/// `shown`. Ends its line when it goes.
class ProgressBar {
public:
    /// `unit`: what is counted, "rows".
    ProgressBar(std::ostream& err, bool shown, std::string label, std::string unit);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// `note` follows the figures.
    void update(std::uint64_t done, std::uint64_t total, const std::string& note = {});

private:
    using Clock = std::chrono::steady_clock;

    std::ostream& m_err;
    bool m_shown;
    std::string m_label;
    std::string m_unit;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_lastDrawn;
    bool m_drawn = false;
};

} // namespace orva
