#include "app/search_form.h"

#include "lang/decimal_text.h"

#include <algorithm>
#include <cmath>

namespace orva {

int SearchForm::caption() const
{
    switch (m_state) {
    case State::Running:
        return 228;
    case State::Paused:
        return 230;
    case State::Finished:
        return 231;
    case State::Ready:
        break;
    }
    return 147;
}

int SearchForm::buttonText() const
{
    if (m_state == State::Running)
        return 223;
    return m_tested ? 224 : 154;
}

void SearchForm::begin()
{
    m_state = State::Running;
    m_selected = -1;
}

void SearchForm::stop(bool finished, bool tested)
{
    m_tested = tested;
    m_state = finished ? State::Finished : State::Paused;
    m_selected = finished ? 0 : -1;
}

std::optional<FitLineTarget> targetUnder(const FitLine& line, double end, double lengthM,
                                         double bottomDb)
{
    constexpr double kShortest = 2;
    const double from = std::clamp(line.first.x, 0.0, end);
    const double to = std::clamp(line.second.x, 0.0, end);
    if (to - from < kShortest)
        return std::nullopt;
    const double rise = (line.second.y - line.first.y) / (line.second.x - line.first.x);
    const double metres = lengthM / end;
    // Downward is less.
    return FitLineTarget{from * metres, std::max(0.001, (to - from) * metres), -rise / metres,
                         bottomDb - (line.first.y + (from - line.first.x) * rise)};
}

int typedPoints(std::string_view text, int before)
{
    constexpr double kFewest = 2;
    constexpr double kMost = 10000;
    const std::size_t number = text.find_first_not_of(" +-.,");
    if (number == std::string_view::npos || text[number] < '0' || text[number] > '9')
        return before;
    return static_cast<int>(
        std::clamp(std::trunc(std::abs(ParseDecimalText(text))), kFewest, kMost));
}

} // namespace orva
