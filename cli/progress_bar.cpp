#include "cli/progress_bar.h"

#include "engine/spl_map.h"
#include "lang/number_text.h"

#include <algorithm>
#include <ostream>

namespace orva {

ProgressBar::ProgressBar(std::ostream& err, bool shown, std::string label)
    : m_err(err), m_shown(shown), m_label(std::move(label))
{
}

ProgressBar::~ProgressBar()
{
    if (m_drawn)
        m_err << '\n';
}

bool ProgressBar::update(int done, int total)
{
    const Clock::time_point now = Clock::now();
    const bool due =
        !m_drawn || done == total || now - m_lastDrawn > std::chrono::milliseconds(100);
    if (!m_shown || !due)
        return true;
    m_lastDrawn = now;
    m_drawn = true;

    constexpr std::size_t kWidth = 30;
    const auto percent = rowPercent(done, total);
    std::string bar(kWidth, ' ');
    std::fill_n(bar.begin(), static_cast<std::size_t>(percent) * kWidth / 100, '#');
    const double seconds = std::max(1e-9, std::chrono::duration<double>(now - m_start).count());
    const double rate = done / seconds;
    m_err << '\r' << m_label << " [" << bar << "] " << percent << " %  " << fixedText(rate, 0)
          << " rows/s  " << fixedText((total - done) / rate, 0) << " s left   " << std::flush;
    return true;
}

} // namespace orva
