#include "document/search_form.h"

#include "lang/typed_number.h"

#include <algorithm>
#include <cmath>

namespace orva {

Text SearchForm::caption() const
{
    switch (m_state) {
    case State::Running:
        return Text::SearchRunning;
    case State::Paused:
        return Text::SearchPaused;
    case State::Finished:
        return Text::SearchFinished;
    case State::Ready:
        break;
    }
    return Text::SearchTitle;
}

Text SearchForm::buttonText() const
{
    if (m_state == State::Running)
        return Text::PauseSearch;
    return m_tested ? Text::ContinueSearch : Text::BeginSearch;
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

std::optional<FitLineTarget> targetUnder(const FitLine& line, double lengthM, double shortestM)
{
    const double from = std::clamp(line.first.alongM, 0.0, lengthM);
    const double to = std::clamp(line.second.alongM, 0.0, lengthM);
    if (to <= from || to - from < shortestM)
        return std::nullopt;
    const double slope =
        (line.second.levelDb - line.first.levelDb) / (line.second.alongM - line.first.alongM);
    return FitLineTarget{from, std::max(0.001, to - from), slope,
                         line.first.levelDb + (from - line.first.alongM) * slope};
}

int typedPoints(std::string_view text, int before)
{
    constexpr double kFewest = 2;
    constexpr double kMost = 10000;
    const std::optional<double> typed = typedFigure(text);
    return typed ? static_cast<int>(std::clamp(std::trunc(std::abs(*typed)), kFewest, kMost))
                 : before;
}

} // namespace orva
