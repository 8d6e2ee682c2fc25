#include "cli/progress_bar.h"

#include "lang/number_text.h"

#include <algorithm>
#include <ostream>

namespace orva {

ProgressBar::ProgressBar(std::ostream& err, bool shown, std::string label, std::string unit)
    : m_err(err), m_shown(shown), m_label(std::move(label)), m_unit(std::move(unit))
{
}

ProgressBar::~ProgressBar()
{
    if (m_drawn)
        m_err << '\n';
}

void ProgressBar::update(std::uint64_t done, std::uint64_t total, const std::string& note)
{
    const Clock::time_point now = Clock::now();
    const bool due =
        !m_drawn || done == total || now - m_lastDrawn > std::chrono::milliseconds(100);
    if (!m_shown || !due)
        return;
    m_lastDrawn = now;
    m_drawn = true;

    constexpr std::size_t kWidth = 30;
    const double share = total == 0 ? 1 : static_cast<double>(done) / static_cast<double>(total);
    const int percent = static_cast<int>(share * 100);
    std::string bar(kWidth, ' ');
    std::fill_n(bar.begin(), static_cast<std::size_t>(percent) * kWidth / 100, '#');
    const double seconds = std::max(1e-9, std::chrono::duration<double>(now - m_start).count());
    const double rate = static_cast<double>(done) / seconds;
    const double left = static_cast<double>(total - done) / std::max(1e-9, rate);
    m_err << '\r' << m_label << " [" << bar << "] " << percent << " %  " << fixedText(rate, 0)
          << ' ' << m_unit << "/s  " << fixedText(left, 0) << " s left"
          << (note.empty() ? "" : "  ") << note << "   " << std::flush;
}

} // namespace orva
