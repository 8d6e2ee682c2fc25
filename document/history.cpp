#include "document/history.h"

#include <tuple>

namespace orva {

namespace {

/// The part itself, or the one before where both are equal.
template<typename Part>
std::shared_ptr<const Part> shared(const Part& part, const std::shared_ptr<const Part>& before)
{
    return before && *before == part ? before : std::make_shared<const Part>(part);
}

} // namespace

bool History::ByContent::operator()(const ChoiceList& a, const ChoiceList& b) const
{
    return std::tie(a.selected, a.invalid, a.items) < std::tie(b.selected, b.invalid, b.items);
}

History::History(const DocumentState& first)
    : m_lists(std::make_unique<std::set<ChoiceList, ByContent>>())
{
    m_steps.push_back(packed(first, nullptr));
}

History::Step History::packed(const DocumentState& state, const Step* before)
{
    static const Step kNone{};
    const Step& last = before ? *before : kNone;
    Setup setup{{}, state.setup.rest()};
    auto* place = setup.lists.data();
    SetupForm::eachList(state.setup,
                        [&](const ChoiceList& list) { *place++ = &*m_lists->insert(list).first; });
    const bool same =
        last.setup && last.setup->lists == setup.lists && unpacked(last).setup == state.setup;
    return {shared(state.project.room, last.room),
            shared(state.project.array, last.array),
            shared(state.project.subArray, last.subArray),
            same ? last.setup : std::make_shared<const Setup>(setup),
            shared(Beside{state.project.variants, state.keptSetups}, last.beside),
            {},
            {}};
}

DocumentState History::unpacked(const Step& step)
{
    DocumentState state{
        {*step.room, *step.array, *step.subArray, step.beside->variants}, {}, step.beside->setups};
    const auto* const* place = step.setup->lists.data();
    SetupForm::eachList(state.setup, [&](ChoiceList& list) { list = **place++; });
    state.setup.setRest(step.setup->rest);
    return state;
}

void History::add(const DocumentState& state, const StepName& what, Gesture gesture)
{
    m_steps.resize(m_at + 1);
    const bool joins = m_at > 0 && gesture.id != 0 && m_steps.back().gesture == gesture;
    Step step = packed(state, &m_steps.back());
    step.what = what;
    step.gesture = gesture;
    if (joins)
        m_steps.back() = std::move(step);
    else
        m_steps.push_back(std::move(step));
    m_at = m_steps.size() - 1;
}

std::optional<DocumentState> History::forget(Gesture gesture)
{
    if (m_at == 0 || gesture.id == 0 || m_steps[m_at].gesture != gesture)
        return std::nullopt;
    m_steps.resize(m_at);
    --m_at;
    return unpacked(m_steps[m_at]);
}

std::optional<StepName> History::undoName() const
{
    return m_at > 0 ? std::optional(m_steps[m_at].what) : std::nullopt;
}

std::optional<StepName> History::redoName() const
{
    return m_at + 1 < m_steps.size() ? std::optional(m_steps[m_at + 1].what) : std::nullopt;
}

std::optional<DocumentState> History::undo()
{
    if (m_at == 0)
        return std::nullopt;
    return unpacked(m_steps[--m_at]);
}

std::optional<DocumentState> History::redo()
{
    if (m_at + 1 == m_steps.size())
        return std::nullopt;
    return unpacked(m_steps[++m_at]);
}

} // namespace orva
