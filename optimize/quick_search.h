#pragma once

#include "optimize/search.h"

#include <unordered_map>

namespace orva {

/// What a quick search found, and after how many evaluations.
struct QuickResult {
    Ranking ranking;
    std::uint64_t evaluations = 0; ///< configurations measured
    bool proved = false;           ///< every configuration was measured: there is no better one
};

/// Goes from the present setup to better ones by changing one joint (or pin, or height) or two
/// neighbouring ones at a time; then starts again, always in the same way, until several starts in
/// a row found nothing better. Finds the best of a large set after a small part of it, but only an
/// exhaustive search can tell that it is the best.
class QuickSearch {
public:
    /// Told of every improvement; measures are those of the fast kernel.
    using Better = std::function<void(const QuickResult&)>;

    QuickSearch(std::shared_ptr<const SearchTask> task, CandidateSet candidates);

    /// Goes on until it has ended or `stop`, asked before each measurement, says so. What was
    /// measured is kept: the next call walks the same way again without measuring anew. Returns
    /// whether it has ended.
    bool advance(const std::function<bool()>& stop, const Better& better = {});

    /// What has been found so far, decided by the literal kernel; none when stopped meanwhile.
    std::optional<QuickResult> result(const std::function<bool()>& stop);

private:
    bool all() const { return m_measured.size() == m_candidates.NumConfigs(); }
    bool done() const { return m_stopped || all(); }
    double measure(const CandidateSet::Digits& digits);
    void descend(CandidateSet::Digits& digits);
    bool improve(CandidateSet::Digits& digits, std::size_t digit, std::size_t other);

    std::shared_ptr<const SearchTask> m_task;
    CandidateSet m_candidates;
    Evaluator m_evaluator;
    std::unordered_map<std::uint64_t, double> m_measured; ///< by number
    Ranking m_fast;                                       ///< by the fast kernel
    std::unique_ptr<Search> m_whole;                      ///< once everything was measured

    // While it advances.
    const std::function<bool()>* m_stop = nullptr;
    const Better* m_better = nullptr;
    double m_last = 0; ///< where the descent stands
    bool m_stopped = false;
};

/// A quick search to its end, or until `stop` says so.
QuickResult quickSearch(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const std::function<bool()>& stop,
                        const QuickSearch::Better& better = {});

} // namespace orva
