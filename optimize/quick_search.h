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

/// Goes from many starts (straight, evenly curved, curved more and more, by chance) to better ones
/// by changing one digit or two of a configuration at a time, then from the best ones, shaken,
/// until several starts in a row found nothing better or the budget is used up. What it finds
/// depends on the candidates alone. Only an exhaustive search can tell that it is the best.
class QuickSearch {
public:
    /// Told of every improvement; measures are those of the fast kernel.
    using Better = std::function<void(const QuickResult&)>;
    static constexpr std::uint64_t kBudget = 60'000;
    /// In larger sets its third best spares the exhaustive search more than it costs.
    static constexpr std::uint64_t kWorthALook = 200'000;

    /// `budget`: configurations that are measured at most.
    QuickSearch(std::shared_ptr<const SearchTask> task, CandidateSet candidates,
                std::uint64_t budget = kBudget);

    /// Goes on until it has ended or `stop`, asked before each measurement, says so. What was
    /// measured is kept: the next call walks the same way again without measuring anew. Returns
    /// whether it has ended.
    bool advance(const std::function<bool()>& stop, const Better& better = {});

    /// What has been found so far, decided by the literal kernel; none when stopped meanwhile.
    std::optional<QuickResult> result(const std::function<bool()>& stop);
    /// Configurations measured so far, and the best of them by the fast kernel; not while it
    /// advances.
    QuickResult soFar() const { return {m_fast, m_measured.size(), false}; }

private:
    using Digits = CandidateSet::Digits;

    /// What is known of a configuration: its measure, or that it is above a limit.
    struct Known {
        double rms;
        bool above;
    };

    bool all() const { return m_measured.size() == m_candidates.NumConfigs(); }
    bool done() const { return m_stopped || all() || m_measured.size() >= m_budget; }
    std::vector<Digits> starts() const;
    double measure(const Digits& digits, double limit);
    double evaluate(const Configuration& configuration, double limit);
    void descend(Digits& digits);
    bool take(Digits& digits, const Digits& trial);
    bool improve(Digits& digits, std::size_t digit, std::size_t other);
    bool bend(Digits& digits);

    std::shared_ptr<const SearchTask> m_task;
    CandidateSet m_candidates;
    std::uint64_t m_budget;
    std::unique_ptr<Evaluator> m_evaluator;              ///< made with the order it has learned
    std::unordered_map<std::uint64_t, Known> m_measured; ///< by number
    Ranking m_fast;                                      ///< by the fast kernel
    std::unique_ptr<Search> m_whole;                     ///< once everything was measured

    // While it advances.
    const std::function<bool()>* m_stop = nullptr;
    const Better* m_better = nullptr;
    double m_last = 0; ///< where the descent stands
    bool m_stopped = false;
};

/// A quick search to its end, or until `stop` says so.
QuickResult quickSearch(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const std::function<bool()>& stop,
                        const QuickSearch::Better& better = {},
                        std::uint64_t budget = QuickSearch::kBudget);

} // namespace orva
