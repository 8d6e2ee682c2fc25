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

int typedPoints(std::string_view text, int before)
{
    constexpr double kFewest = 2;
    constexpr double kMost = 10000;
    if (text.find_first_of("0123456789") == std::string_view::npos)
        return before;
    return static_cast<int>(
        std::clamp(std::trunc(std::abs(ParseDecimalText(text))), kFewest, kMost));
}

} // namespace orva
