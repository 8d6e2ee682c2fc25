#include "optimize/quick_search.h"

#include <limits>
#include <random>

namespace orva {

namespace {

constexpr int kIdleStarts = 12; ///< starts in a row without a better one
constexpr std::uint64_t kSeed = 20260101;

/// Sets some joints of the range to angles by chance.
void shake(LineArray::Positions& angles, const CandidateSet& candidates, std::mt19937_64& random)
{
    const auto [first, last] = candidates.range();
    const auto joints = static_cast<std::uint64_t>(std::max(1, last - first + 1));
    for (int i = 0; first <= last && i < 4; ++i) {
        const int joint = first + static_cast<int>(random() % joints);
        const AngleBounds bounds = candidates.boundsOf(joint);
        const auto width = static_cast<std::uint64_t>(bounds[1] - bounds[0]) + 1;
        angles[static_cast<std::size_t>(joint) + 1] =
            static_cast<std::int16_t>(bounds[0] + static_cast<int>(random() % width));
    }
}

} // namespace

QuickSearch::QuickSearch(std::shared_ptr<const SearchTask> task, CandidateSet candidates)
    : m_task(std::move(task)), m_candidates(std::move(candidates)), m_evaluator(m_task)
{
}

bool QuickSearch::advance(const std::function<bool()>& stop, const Better& better)
{
    m_stop = &stop;
    m_better = &better;
    m_stopped = false;
    std::mt19937_64 random(kSeed);
    LineArray::Positions angles =
        m_candidates.anglesOf(m_candidates.numberOf(m_task->array.GIAGetAllAngle()));
    descend(angles);
    LineArray::Positions best = angles;
    double bestRms = m_last;
    for (int idle = 0; idle < kIdleStarts && !done(); ++idle) {
        angles = best;
        shake(angles, m_candidates, random);
        descend(angles);
        if (m_last < bestRms) {
            bestRms = m_last;
            best = angles;
            idle = -1;
        }
    }
    return !m_stopped;
}

double QuickSearch::measure(const LineArray::Positions& angles)
{
    const std::uint64_t number = m_candidates.numberOf(angles);
    if (const auto known = m_measured.find(number); known != m_measured.end())
        return known->second;
    m_stopped = m_stopped || (*m_stop)();
    if (m_stopped)
        return std::numeric_limits<double>::infinity();
    const double rms = m_evaluator.fastMeasure(angles);
    m_measured.emplace(number, rms);
    if (rms < m_fast.limit()) {
        const bool first = m_fast.best().empty() || rms < m_fast.best().front().rms;
        m_fast.add({angles, rms, number});
        if (first && *m_better)
            (*m_better)({m_fast, m_measured.size(), false});
    }
    return rms;
}

/// Tries one joint's or two neighbouring joints' other angles until none is better.
void QuickSearch::descend(LineArray::Positions& angles)
{
    m_last = measure(angles);
    const auto [first, last] = m_candidates.range();
    for (bool improved = true; improved && !done();) {
        improved = false;
        for (int joint = first; joint <= last && !done(); ++joint)
            improved |= improve(angles, joint, joint);
        for (int joint = first; !improved && joint + 1 <= last && !done(); ++joint)
            improved |= improve(angles, joint, joint + 1);
    }
}

bool QuickSearch::improve(LineArray::Positions& angles, int joint, int other)
{
    const LineArray::Positions before = angles;
    const AngleBounds bounds = m_candidates.boundsOf(joint);
    const AngleBounds otherBounds = m_candidates.boundsOf(other);
    const auto at = [](LineArray::Positions& all, int which) -> std::int16_t& {
        return all[static_cast<std::size_t>(which) + 1];
    };
    LineArray::Positions trial = before;
    for (std::int16_t a = bounds[0]; a <= bounds[1] && !done(); ++a)
        for (std::int16_t b = otherBounds[0]; b <= otherBounds[1] && !done(); ++b) {
            at(trial, other) = b;
            at(trial, joint) = a;
            const double rms = measure(trial);
            if (rms < m_last) {
                m_last = rms;
                angles = trial;
            }
            if (joint == other)
                break;
        }
    return angles != before;
}

std::optional<QuickResult> QuickSearch::result(const std::function<bool()>& stop)
{
    QuickResult result{{}, m_measured.size(), all()};
    if (result.proved) { // equal measures in the order of the candidates
        if (!m_whole)
            m_whole = std::make_unique<Search>(m_task, m_candidates, 0, m_measured.size());
        while (!m_whole->advance(1, stop))
            if (stop())
                return std::nullopt;
        result.ranking = m_whole->decide();
        return result;
    }
    for (const Ranked& entry : m_fast.best()) {
        const std::optional<double> rms = m_evaluator.measure(entry.angles, stop);
        if (!rms)
            return std::nullopt;
        result.ranking.add({entry.angles, *rms, entry.number});
    }
    return result;
}

QuickResult quickSearch(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const std::function<bool()>& stop,
                        const QuickSearch::Better& better)
{
    QuickSearch search(task, candidates);
    search.advance(stop, better);
    return *search.result([] { return false; });
}

} // namespace orva
