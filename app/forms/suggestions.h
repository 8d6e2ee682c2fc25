#pragma once

#include "app/forms/search_setup.h"
#include "optimize/quick_search.h"

#include <functional>
#include <vector>

namespace orva {

/// An array for a room: its boxes, where it hangs, how it is bent.
struct Suggestion {
    LineArray array; ///< flown, in pin mode
    double evenDb;   ///< root of the mean square of what the levels along all areas differ
    float fohDb;
    double weightKg;

    /// Whether it is as good in all three and better in one: more even, louder at the FOH, lighter.
    bool beats(const Suggestion& other) const;
};

/// Whether a flown array lies in the room and so high that people pass below: 2 m between its
/// lowest edge and the floor, and the audience areas under it.
bool hangsClear(const Room& room, const LineArray& array);

/// Looks for arrays for a room and its audience areas alone: from four boxes up to the weight limit
/// of the system, of every kind of box (straight ones above trapezoidal ones, the split at each
/// third), at heights a raster below the ceiling, on every pin, at every splay angle; where across
/// the room the pick point lies is the project's. What it finds depends on all that and the budget
/// alone, not on threads nor pauses.
class Suggesting {
public:
    static constexpr std::uint64_t kBudget = 200'000;
    static constexpr std::size_t kMost = 10;
    static constexpr double kClearanceM = 2;
    static constexpr double kRasterM = 0.25;
    using Stop = std::function<bool()>;

    /// `budget`: configurations that are measured before the best ones are looked at closely.
    Suggesting(const ApplicationState& state, const Project& project, const LevelChoice& choice,
               std::uint64_t budget = kBudget);

    /// Runs to its end, or until `stop`, asked from any thread, says so; `better` is told of a list
    /// that has changed, `progress` of what is done, both from any thread, one at a time.
    void run(int threads, const Stop& stop,
             const std::function<void(const std::vector<Suggestion>&)>& better = {},
             const std::function<void(double share)>& progress = {});

    /// The most even first; none of them beats another. Ten at most. Once run() has ended, no quick
    /// search of the same boxes on the same pin at the same height finds a more even one that hangs
    /// clear.
    const std::vector<Suggestion>& found() const { return m_found; }

private:
    struct Boxes {
        std::int16_t straight;
        std::int16_t trapezoidal;
    };
    std::vector<Boxes> allBoxes() const;
    LineArray arrayOf(const Boxes& boxes) const;
    std::vector<float> heightsFor(const LineArray& array) const;
    std::shared_ptr<const SearchTask> taskOf(const LineArray& array, int points) const;
    std::vector<Suggestion> look(const Boxes& boxes, std::uint64_t budget, const Stop& stop) const;
    std::optional<Suggestion> refined(const Suggestion& rough, const Stop& stop) const;
    Suggestion figuresOf(const LineArray& array, double evenDb) const;
    static std::vector<Suggestion> unbeaten(std::vector<Suggestion> all);
    static std::vector<Suggestion> choice(const std::vector<Suggestion>& unbeaten);

    Project m_project;
    std::uint64_t m_budget;
    std::shared_ptr<const SearchTask> m_base; ///< with the kernel of all
    std::vector<Suggestion> m_found;
};

} // namespace orva
