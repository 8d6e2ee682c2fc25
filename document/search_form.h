#pragma once

#include "drawing/curve_drawing.h"
#include "lang/text_ids.h"
#include "optimize/measure.h"

#include <optional>
#include <string_view>

namespace orva {

/// What the search dialog shows and allows in each of its states.
class SearchForm {
public:
    enum class State { Ready, Running, Paused, Finished };

    State state() const { return m_state; }
    Text caption() const;
    Text buttonText() const;
    /// The button that begins, pauses and continues.
    bool buttonEnabled() const { return m_state != State::Finished && m_countable; }
    bool optionsEnabled() const { return m_state == State::Ready; }
    bool cancelEnabled() const { return m_state != State::Running; }
    bool acceptEnabled() const { return m_state != State::Running && m_selected >= 0; }
    bool resultsShown() const { return m_state == State::Paused || m_state == State::Finished; }

    /// Whether the configurations can be counted; otherwise nothing can begin.
    void setCountable(bool countable) { m_countable = countable; }
    /// The first time or again.
    void begin();
    /// The search has stopped, with something left to test or not; whether anything was tested.
    void stop(bool finished, bool tested);
    /// A result of the list, from 0; -1 for none.
    void select(int index) { m_selected = index; }
    int selected() const { return m_selected; }

private:
    State m_state = State::Ready;
    bool m_countable = true;
    int m_selected = -1;
    bool m_tested = false;
};

/// The target that a fit line asks for on an area `lengthM` long. What lies beside the area counts
/// for nothing. None where less than `shortestM` is left.
std::optional<FitLineTarget> targetUnder(const FitLine& line, double lengthM, double shortestM);

/// The number of points that a user typed: its whole part without sign, 2 to 10,000. What is no
/// number gives `before`.
int typedPoints(std::string_view text, int before);

} // namespace orva
