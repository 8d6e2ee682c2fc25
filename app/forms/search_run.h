#pragma once

#include "app/state/application_state.h"
#include "document/search_form.h"
#include "optimize/quick_search.h"

#include <atomic>
#include <chrono>

namespace orva {

/// The search for even splay angles as a user drives it: options, begin, pause, continue, progress,
/// results. Works on copies of everything. Without a window; work() runs in a thread of whoever
/// shows it, all else in the one that made it, while work() does not run or where it says so.
class SearchRun {
public:
    using Stop = std::function<bool()>;

    /// Along an area of the project at which the boxes between `aiming` joints aim.
    SearchRun(ApplicationState& state, const Project& project, int area, JointRange aiming,
              const FitLineTarget& target, const LevelChoice& choice);

    const SearchForm& form() const { return m_form; }
    /// What is varied; until the first beginning.
    void chooseCandidates(bool areaOnly, bool neighbours);
    /// How many configurations there are; none where they cannot be counted.
    std::optional<std::uint64_t> count() const { return m_candidates->NumConfigs(); }
    const FitLineTarget& target() const { return m_target; }

    /// Begins, the first time with these, or goes on. Then work() is due.
    void begin(Measure measure, int points, bool quickFirst);
    /// Goes on until all is tested and decided, or `stop` says so; nothing that was tested is lost.
    void work(const Stop& stop);
    /// work() has ended.
    void ended();

    /// As it stands; may be asked while work() runs.
    struct Progress {
        std::uint64_t tested = 0;
        std::uint64_t number = 1;          ///< of the configuration under test, from 1
        double share = 0;                  ///< of all, 0 to 1
        double bestRms = kNoMeasure;       ///< kNoMeasure: none yet
        double lastRms = kNoMeasure;       ///< measured to its end last; none before the first
        std::optional<double> secondsLeft; ///< at the rate of the last stretch of work
    };
    Progress progress();

    /// One line of the list of results.
    struct Result {
        enum class Kind { Best, Original, Quick };
        Kind kind;
        int rank; ///< of a best one, from 1
        LineArray::Positions angles;
        double rms;
    };
    /// Three best, the setup as it was, and what a quick search found; empty before the first.
    const std::vector<Result>& results() const { return m_results; }
    /// What the quick search found, if it was asked for and has ended, and whether it is the best.
    struct Quick {
        double rms;
        std::uint64_t evaluations;
        bool proved;
    };
    const std::optional<Quick>& quick() const { return m_quickFound; }
    void select(int result) { m_form.select(result); }
    /// The array with the angles of a result.
    LineArray arrayOf(int result) const;

private:
    bool searchQuickly(const Stop& stop);
    void list();

    ApplicationState& m_state;
    const Project m_project;
    const int m_areaNumber;
    const JointRange m_aiming;
    const FitLineTarget m_target;
    const LevelChoice m_choice;
    SearchForm m_form;
    std::unique_ptr<CandidateSet> m_candidates;
    std::optional<SearchTask> m_asked; ///< before the first stretch of work
    bool m_quickFirst = false;

    // Belong to work() while it runs.
    std::unique_ptr<Search> m_search;
    std::unique_ptr<QuickSearch> m_quickSearch;
    std::optional<QuickResult> m_quickResult;
    // Shared with it.
    std::atomic<const Search*> m_shown = nullptr; ///< once it searches exhaustively
    std::atomic<double> m_best = kNoMeasure;

    std::chrono::steady_clock::time_point m_since; ///< of the stretch of work
    std::uint64_t m_testedBefore = 0;
    double m_perSecond = 0;
    std::vector<Result> m_results;
    std::optional<Quick> m_quickFound;
};

} // namespace orva
