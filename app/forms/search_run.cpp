#include "app/forms/search_run.h"

#include "app/forms/search_setup.h"
#include "engine/parallel.h"

#include <algorithm>
#include <cmath>

namespace orva {

SearchRun::SearchRun(ApplicationState& state, const Project& project, int area, JointRange aiming,
                     const FitLineTarget& target, const LevelChoice& choice)
    : m_state(state),
      m_project(project),
      m_areaNumber(area),
      m_aiming(aiming),
      m_target(target),
      m_choice(choice)
{
    chooseCandidates(true, false);
}

void SearchRun::chooseCandidates(bool areaOnly, bool neighbours)
{
    m_candidates = std::make_unique<CandidateSet>(
        m_project.array, areaOnly ? m_aiming : allJoints(m_project.array), neighbours);
    m_form.setCountable(count().has_value());
}

void SearchRun::begin(Measure measure, int points, bool quickFirst)
{
    m_form.begin();
    m_quickFirst = quickFirst && !m_quickResult;
    if (!m_search)
        m_asked = searchTask(m_state, m_project, m_areaNumber, m_target, measure, points, m_choice);
    m_testedBefore = m_search ? m_search->tested() : 0;
    m_since = std::chrono::steady_clock::now();
}

void SearchRun::work(const Stop& stop)
{
    if (!m_search)
        m_search = std::make_unique<Search>(withKernel(*m_asked), *m_candidates, 0, *count());
    if (m_quickFirst && !searchQuickly(stop))
        return;
    m_shown = m_search.get();
    for (bool finished = false; !stop() && !finished;) {
        finished = m_search->advance(coreCount(), stop);
        const Ranking best = m_search->bestSoFar();
        m_best = best.best().empty() ? kNoMeasure : best.best().front().rms;
    }
}

/// Whether it has ended.
bool SearchRun::searchQuickly(const Stop& stop)
{
    if (!m_quickSearch)
        m_quickSearch = std::make_unique<QuickSearch>(m_search->task(), m_search->candidates());
    if (m_quickSearch->advance(stop))
        m_quickResult = m_quickSearch->result(stop);
    return m_quickResult.has_value();
}

void SearchRun::ended()
{
    progress(); // the rate of this stretch
    m_form.stop(m_search->finished(), m_search->tested() > 0);
    list();
}

SearchRun::Progress SearchRun::progress()
{
    Progress now;
    const Search* search = m_shown;
    if (!search)
        return now;
    const std::uint64_t all = count().value_or(1);
    const bool running = m_form.state() == SearchForm::State::Running;
    now.tested = search->tested();
    now.number = running ? std::min(now.tested + 1, all) : std::max<std::uint64_t>(1, now.tested);
    now.share = static_cast<double>(now.tested) / static_cast<double>(all);
    now.bestRms = now.tested > 0 ? m_best.load() : kNoMeasure;
    const double last = search->lastMeasure();
    now.lastRms = std::isnan(last) ? kNoMeasure : last;
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - m_since;
    if (running && now.tested > m_testedBefore && seconds.count() > 0)
        m_perSecond = static_cast<double>(now.tested - m_testedBefore) / seconds.count();
    if (m_form.state() == SearchForm::State::Finished)
        now.secondsLeft = 0;
    else if (m_perSecond > 0)
        now.secondsLeft = static_cast<double>(all - now.tested) / m_perSecond;
    return now;
}

void SearchRun::list()
{
    m_results.clear();
    m_quickFound.reset();
    const bool finished = m_search->finished();
    const std::vector<Ranked> best = (finished ? m_search->decide() : m_search->bestSoFar()).best();
    if (best.empty())
        return;
    for (const Ranked& entry : best)
        m_results.push_back(
            {Result::Kind::Best, static_cast<int>(m_results.size()) + 1, entry.angles, entry.rms});
    m_results.push_back({Result::Kind::Original, 0, m_project.array.GIAGetAllAngle(), 0});
    if (!m_quickResult || m_quickResult->ranking.best().empty())
        return;
    const Ranked& found = m_quickResult->ranking.best().front();
    m_quickFound = {found.rms, m_quickResult->evaluations,
                    m_quickResult->proved || (finished && found.rms <= best.front().rms)};
    m_results.push_back({Result::Kind::Quick, 0, found.angles, found.rms});
}

LineArray SearchRun::arrayOf(int result) const
{
    return withAngles(m_project.array, m_results.at(static_cast<std::size_t>(result)).angles);
}

} // namespace orva
