#pragma once

#include "app/forms/search_setup.h"
#include "document/search_form.h"
#include "optimize/quick_search.h"

#include <atomic>
#include <chrono>
#include <mutex>

namespace orva {

/// The search for even splay angles as a user drives it: options, begin, pause, continue, progress,
/// results. Works on copies of everything. Without a window; work() runs in a thread of whoever
/// shows it, all else in the one that made it, while work() does not run or where it says so.
class SearchRun {
public:
    using Stop = std::function<bool()>;

    /// Of the project's array.
    SearchRun(ApplicationState& state, const Project& project, const SearchChoice& choice);

    const SearchForm& form() const { return m_form; }
    const SearchChoice& choice() const { return m_choice; }
    /// What is searched; until the first beginning. At each of its areas some box aims.
    void choose(const SearchChoice& choice);
    /// How many configurations there are; none where they cannot be counted.
    std::optional<std::uint64_t> count() const { return m_candidates->NumConfigs(); }

    /// What a quick search is for.
    struct Quick {
        bool first = false; ///< before the exhaustive one, and listed
        bool only = false;  ///< instead of it
        std::uint64_t budget = QuickSearch::kBudget;
    };
    /// Begins, the first time with these, or goes on. Then work() is due.
    void begin(const Quick& quick);
    /// Goes on until all is tested and decided, or `stop` says so; nothing that was tested is lost.
    void work(const Stop& stop);
    bool quickOnly() const { return m_quick.only; }
    /// work() has ended.
    void ended();

    /// As it stands; may be asked while work() runs.
    struct Progress {
        std::uint64_t tested = 0;          ///< or excluded
        std::uint64_t number = 1;          ///< of the configuration under test, from 1
        double share = 0;                  ///< of all, 0 to 1
        double bestRms = kNoMeasure;       ///< kNoMeasure: none yet
        double leastRms = 0;               ///< below it there is none, as far as is proved
        double lastRms = kNoMeasure;       ///< measured to its end last; none before the first
        double perSecond = 0;              ///< in the last stretch of work
        std::optional<double> secondsLeft; ///< at that rate
    };
    Progress progress();
    /// The best so far, once each time that there is a better one; may be asked while work() runs.
    std::optional<Configuration> better();

    /// One line of the list of results.
    struct Result {
        enum class Kind { Best, Original, Quick };
        Kind kind;
        Configuration configuration;
        double rms; ///< kNoMeasure: none, or not known yet
    };
    /// Three best, the setup as it was, and what a quick search found; empty before the first.
    const std::vector<Result>& results() const { return m_results; }
    /// What the quick search found, if it was asked for and has ended, and whether it is the best.
    struct QuickFound {
        double rms;
        std::uint64_t evaluations;
        bool proved;
    };
    const std::optional<QuickFound>& quick() const { return m_quickFound; }
    void select(int result) { m_form.select(result); }
    /// The array with what was varied.
    LineArray arrayOf(int result) const;
    LineArray arrayOf(const Configuration& configuration) const;

private:
    bool measureOriginal(const Stop& stop);
    bool searchQuickly(const Stop& stop);
    void keepBest(const Ranking& ranking);
    Ranking bestOfTested() const;
    void list();

    ApplicationState& m_state;
    const Project m_project;
    SearchChoice m_choice;
    SearchForm m_form;
    std::unique_ptr<CandidateSet> m_candidates;
    std::optional<SearchTask> m_asked; ///< before the first stretch of work
    Quick m_quick;

    // Belong to work() while it runs.
    std::unique_ptr<Search> m_search;
    std::unique_ptr<QuickSearch> m_quickSearch;
    std::optional<QuickResult> m_quickResult;
    std::optional<double> m_originalRms;
    // Shared with it.
    std::atomic<const Search*> m_shown = nullptr; ///< once it searches exhaustively
    std::atomic<std::uint64_t> m_evaluations = 0; ///< of the quick search
    std::mutex m_bestMutex;
    double m_best = kNoMeasure;
    std::optional<Configuration> m_better; ///< not asked for yet

    std::chrono::steady_clock::time_point m_since; ///< of the stretch of work
    std::uint64_t m_testedBefore = 0;
    double m_perSecond = 0;
    std::vector<Result> m_results;
    std::optional<QuickFound> m_quickFound;
};

} // namespace orva
