#include "app/forms/search_run.h"

#include "engine/parallel.h"

#include <algorithm>
#include <cmath>

namespace orva {

SearchRun::SearchRun(ApplicationState& state, const Project& project, const SearchChoice& choice)
    : m_state(state), m_project(project)
{
    choose(choice);
}

void SearchRun::choose(const SearchChoice& choice)
{
    m_choice = choice;
    m_candidates = std::make_unique<CandidateSet>(searchedSet(
        m_project.array, aimingJoints(m_project, choice.areas).value_or(JointRange{}), choice));
    m_form.setCountable(count().has_value());
}

void SearchRun::begin(const Quick& quick)
{
    m_quick = quick;
    m_testedBefore = progress().tested;
    m_form.begin();
    if (!m_search)
        m_asked = searchTask(m_state, m_project, m_choice);
    m_since = std::chrono::steady_clock::now();
}

void SearchRun::work(const Stop& stop)
{
    if (!m_search)
        m_search = std::make_unique<Search>(withKernel(*m_asked), *m_candidates, 0, *count());
    if (!measureOriginal(stop))
        return;
    // Of a large set the third best of a quick search spares more than it costs.
    const bool quickly = m_quick.first || m_quick.only || *count() > QuickSearch::kWorthALook;
    if (quickly && !m_quickResult && !searchQuickly(stop))
        return;
    if (m_quick.only)
        return;
    if (quickly)
        m_search->expect(m_quickResult->ranking.limit());
    m_shown = m_search.get();
    for (bool finished = false; !stop() && !finished;) {
        finished = m_search->advance(coreCount(), stop);
        keepBest(m_search->bestSoFar());
    }
}

/// The setup as it was; false when stopped.
bool SearchRun::measureOriginal(const Stop& stop)
{
    if (m_originalRms)
        return true;
    SearchTask task = *m_asked;
    task.array = m_project.array;
    m_originalRms = Evaluator(std::make_shared<SearchTask>(std::move(task)))
                        .measure({m_project.array.GIAGetAllAngle(), std::nullopt}, stop);
    return m_originalRms.has_value();
}

/// Whether it has ended.
bool SearchRun::searchQuickly(const Stop& stop)
{
    if (!m_quickSearch)
        m_quickSearch =
            std::make_unique<QuickSearch>(m_search->task(), m_search->candidates(), m_quick.budget);
    const auto better = [this](const QuickResult& result) { keepBest(result.ranking); };
    const auto counted = [&] { // asked before each of them
        m_evaluations = m_quickSearch->soFar().evaluations;
        return stop();
    };
    if (m_quickSearch->advance(counted, better))
        m_quickResult = m_quickSearch->result(stop);
    m_evaluations = m_quickSearch->soFar().evaluations;
    return m_quickResult.has_value();
}

void SearchRun::keepBest(const Ranking& ranking)
{
    if (ranking.best().empty())
        return;
    const std::lock_guard lock(m_bestMutex);
    const Ranked& first = ranking.best().front();
    // What the literal kernel says of the same one differs a little.
    constexpr double kSame = 1e-4;
    if (first.rms < m_best - kSame)
        m_better = first.configuration();
    m_best = std::min(m_best, first.rms);
}

std::optional<Configuration> SearchRun::better()
{
    const std::lock_guard lock(m_bestMutex);
    return std::exchange(m_better, std::nullopt);
}

void SearchRun::ended()
{
    progress(); // the rate of this stretch
    const bool finished = m_quick.only ? m_quickResult.has_value() : m_search->finished();
    list();
    m_form.stop(finished, !m_results.empty());
}

SearchRun::Progress SearchRun::progress()
{
    Progress now;
    const Search* search = m_shown;
    const std::uint64_t all = count().value_or(1);
    const bool running = m_form.state() == SearchForm::State::Running;
    if (search) {
        now.tested = search->tested();
        const double last = search->lastMeasure();
        now.lastRms = std::isnan(last) ? kNoMeasure : last;
        now.share = static_cast<double>(now.tested) / static_cast<double>(all);
        now.number = search->number() + 1;
    } else if (m_quick.only) {
        now.tested = m_evaluations;
        now.share = !running && m_quickResult
                        ? 1
                        : static_cast<double>(now.tested) /
                              static_cast<double>(std::min(all, m_quick.budget));
    }
    {
        const std::lock_guard lock(m_bestMutex);
        now.bestRms = m_best;
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - m_since;
    if (running && now.tested > m_testedBefore && seconds.count() > 0)
        m_perSecond = static_cast<double>(now.tested - m_testedBefore) / seconds.count();
    now.perSecond = m_perSecond;
    if (m_form.state() == SearchForm::State::Finished) {
        now.secondsLeft = 0;
        if (search)
            now.number = all;
        if (m_search->finished() || (m_quickResult && m_quickResult->proved))
            now.leastRms = now.bestRms;
    } else if (m_perSecond > 0 && search)
        now.secondsLeft = static_cast<double>(all - now.tested) / m_perSecond;
    return now;
}

/// Of both searches, while the exhaustive one has not ended.
Ranking SearchRun::bestOfTested() const
{
    std::vector<Ranked> all = m_search->bestSoFar().best();
    const Ranking quick = m_quickResult   ? m_quickResult->ranking
                          : m_quickSearch ? m_quickSearch->soFar().ranking
                                          : Ranking();
    for (const Ranked& entry : quick.best())
        if (std::none_of(all.begin(), all.end(),
                         [&](const Ranked& kept) { return kept.number == entry.number; }))
            all.push_back(entry);
    return Ranking::of(std::move(all));
}

void SearchRun::list()
{
    m_results.clear();
    m_quickFound.reset();
    if (!m_originalRms)
        return;
    const bool finished = m_search->finished();
    const Ranking best = finished ? m_search->decide() : bestOfTested();
    if (best.best().empty())
        return;
    for (const Ranked& entry : best.best())
        m_results.push_back({Result::Kind::Best, entry.configuration(), entry.rms});
    m_results.push_back(
        {Result::Kind::Original, {m_project.array.GIAGetAllAngle(), std::nullopt}, *m_originalRms});
    if (!(m_quick.first || m_quick.only) || !m_quickResult || m_quickResult->ranking.best().empty())
        return;
    const Ranked& found = m_quickResult->ranking.best().front();
    m_quickFound = {found.rms, m_quickResult->evaluations,
                    m_quickResult->proved || (finished && found.rms <= best.best().front().rms)};
    if (m_quick.first)
        m_results.push_back({Result::Kind::Quick, found.configuration(), found.rms});
}

LineArray SearchRun::arrayOf(int result) const
{
    const Result& chosen = m_results.at(static_cast<std::size_t>(result));
    return chosen.kind == Result::Kind::Original ? m_project.array : arrayOf(chosen.configuration);
}

LineArray SearchRun::arrayOf(const Configuration& configuration) const
{
    return withConfiguration(searchedArray(m_project.array, m_choice.freedom), configuration);
}

} // namespace orva
