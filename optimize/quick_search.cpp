#include "optimize/quick_search.h"

#include <limits>
#include <random>
#include <unordered_map>

namespace orva {

namespace {

constexpr int kIdleStarts = 12; ///< starts in a row without a better one
constexpr std::uint64_t kSeed = 20260101;

class Descent {
public:
    Descent(const std::shared_ptr<const SearchTask>& task, const CandidateSet& candidates,
            const std::function<bool()>& stop,
            const std::function<void(const QuickResult&)>& better)
        : m_task(task), m_evaluator(task), m_candidates(candidates), m_stop(stop), m_better(better)
    {
    }

    QuickResult run(const LineArray::Positions& present)
    {
        std::mt19937_64 random(kSeed);
        LineArray::Positions angles = m_candidates.anglesOf(m_candidates.numberOf(present));
        descend(angles);
        LineArray::Positions best = angles;
        double bestRms = m_last;
        for (int idle = 0; idle < kIdleStarts && !done(); ++idle) {
            angles = best;
            shake(angles, random);
            descend(angles);
            if (m_last < bestRms) {
                bestRms = m_last;
                best = angles;
                idle = -1;
            }
        }
        m_result.proved = !m_stopped && m_measured.size() == m_candidates.NumConfigs();
        if (m_result.proved)
            rankAll();
        else
            rankLiterally();
        return std::move(m_result);
    }

private:
    bool done() const { return m_stopped || m_measured.size() == m_candidates.NumConfigs(); }

    double measure(const LineArray::Positions& angles)
    {
        const std::uint64_t number = m_candidates.numberOf(angles);
        const auto [entry, isNew] = m_measured.try_emplace(number, 0);
        if (!isNew)
            return entry->second;
        m_stopped = m_stopped || m_stop();
        entry->second =
            m_stopped ? std::numeric_limits<double>::infinity() : m_evaluator.fastMeasure(angles);
        m_result.evaluations += m_stopped ? 0 : 1;
        if (entry->second < m_fast.limit()) {
            const bool first = m_fast.best().empty() || entry->second < m_fast.best().front().rms;
            m_fast.add({angles, entry->second, number});
            if (first && m_better) {
                m_result.ranking = m_fast;
                m_better(m_result);
            }
        }
        return entry->second;
    }

    /// Tries one joint's or two neighbouring joints' other angles until none is better.
    void descend(LineArray::Positions& angles)
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

    bool improve(LineArray::Positions& angles, int joint, int other)
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

    /// Sets some joints of the range to angles by chance.
    void shake(LineArray::Positions& angles, std::mt19937_64& random) const
    {
        const auto [first, last] = m_candidates.range();
        const auto joints = static_cast<std::uint64_t>(std::max(1, last - first + 1));
        for (int i = 0; first <= last && i < 4; ++i) {
            const int joint = first + static_cast<int>(random() % joints);
            const AngleBounds bounds = m_candidates.boundsOf(joint);
            const auto width = static_cast<std::uint64_t>(bounds[1] - bounds[0]) + 1;
            angles[static_cast<std::size_t>(joint) + 1] =
                static_cast<std::int16_t>(bounds[0] + static_cast<int>(random() % width));
        }
    }

    /// Equal measures in the order of the candidates, as the exhaustive search has them.
    void rankAll()
    {
        Search search(m_task, m_candidates, 0, m_measured.size());
        while (!search.advance(1, [] { return false; })) {
        }
        m_result.ranking = search.ranking();
    }

    void rankLiterally()
    {
        Ranking exact;
        for (const Ranked& entry : m_fast.best())
            exact.add({entry.angles, m_evaluator.measure(entry.angles), entry.number});
        m_result.ranking = exact;
    }

    std::shared_ptr<const SearchTask> m_task;
    Evaluator m_evaluator;
    const CandidateSet& m_candidates;
    const std::function<bool()>& m_stop;
    const std::function<void(const QuickResult&)>& m_better;
    std::unordered_map<std::uint64_t, double> m_measured;
    Ranking m_fast;                                          ///< by the fast kernel
    double m_last = std::numeric_limits<double>::infinity(); ///< where the descent stands
    bool m_stopped = false;
    QuickResult m_result;
};

} // namespace

QuickResult quickSearch(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const std::function<bool()>& stop,
                        const std::function<void(const QuickResult&)>& better)
{
    return Descent(task, candidates, stop, better).run(task->array.GIAGetAllAngle());
}

} // namespace orva
