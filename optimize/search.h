#pragma once

#include "model/result.h"
#include "optimize/evaluator.h"

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <limits>
#include <vector>

namespace orva {

/// One of the best configurations.
struct Ranked {
    LineArray::Positions angles{};
    double rms = 0;                 ///< dB, by the literal kernel
    std::uint64_t number = 0;       ///< in the order of the candidates
    std::optional<float> heightM{}; ///< of the pick point, where it was varied
    bool pin = false;               ///< the first angle is a pin that was varied

    Configuration configuration() const { return {angles, heightM}; }

    friend bool operator==(const Ranked&, const Ranked&) = default;
};

/// The three best so far, best first; equal measures in the order in which they came.
class Ranking {
public:
    static constexpr std::size_t kMost = 3;

    /// Of all of them; equal measures in the order of their numbers.
    static Ranking of(std::vector<Ranked> all);

    const std::vector<Ranked>& best() const { return m_best; }
    /// Measures from here on are not kept; infinity as long as there is room.
    double limit() const;
    /// Keeps it where its measure, which is finite, is below a kept one, or there is room.
    void add(const Ranked& entry);

private:
    std::vector<Ranked> m_best;
};

/// The exhaustive search over a part of the candidates. Its ranking is exactly that of what has
/// been tested; once it has finished it does not depend on the number of threads, nor on pauses. A
/// part is tested from its first configuration on; all candidates together are in an order in which
/// the upper boxes stay as long as possible, unless the given one is to be kept; and where
/// Evaluator::leastMeasure() proves that none with the same upper boxes is among the best, these
/// are excluded together.
class Search {
public:
    /// From configuration `first`, `count` of them; both within the candidates. The configuration
    /// 0 takes the other two places with ten times its measure until better ones come.
    Search(std::shared_ptr<const SearchTask> task, CandidateSet candidates, std::uint64_t first,
           std::uint64_t count);

    /// That many measures of this set, a ranking full, are at most `limit`, as another search
    /// found: what is above it is dropped from the first on. The ranking of a part of the set no
    /// longer holds all of its best.
    void expect(double limit) { m_expected = limit; }
    /// All candidates together are tested in their given order, too, if more slowly: what calls of
    /// advance() that were not stopped have tested is then a part without gap. Before the first
    /// of them.
    void keepGivenOrder() { m_givenOrder = true; }

    /// Tests some more, for a fraction of a second, or lets the literal kernel decide between those
    /// that the fast one cannot tell apart. `stop`, asked from any thread every few milliseconds,
    /// may end it early; what was tested is kept, and the next call goes on there. Returns
    /// finished().
    bool advance(int threads, const std::function<bool()>& stop);

    std::uint64_t first() const { return m_first; }
    /// How many have been tested or excluded; may be asked from any thread.
    std::uint64_t tested() const { return m_testedSoFar; }
    /// The configuration under test, or one of them; may be asked from any thread.
    std::uint64_t number() const { return m_number; }
    std::uint64_t count() const { return m_count; }
    /// How many evaluators, the memory of a search, were made: as many as ran at once.
    std::size_t evaluators() const { return m_workers.size(); }
    /// Whether all are tested and the ranking is decided.
    bool finished() const { return m_tested == m_count && m_decided; }
    const CandidateSet& candidates() const { return m_candidates; }
    const std::shared_ptr<const SearchTask>& task() const { return m_task; }
    /// The three best so far, as good as the fast kernel has them.
    Ranking bestSoFar() const;
    /// The last measure that was evaluated to its end, not a number before the first; may be asked
    /// from any thread.
    double lastMeasure() const { return m_lastMeasure; }
    /// Decides what the fast kernel cannot, literally; the ranking of what has been tested.
    const Ranking& decide();

private:
    /// What may yet be among the best.
    struct Contender {
        Ranked entry; ///< its measure holds only once it is exact
        Evaluator::Bounds bounds;
        bool exact;
    };

    /// Some places of a walk; of the numbers there only those from `begin` to before `end`.
    struct Block {
        std::vector<std::size_t> turning;
        std::uint64_t base = 0;
        std::uint64_t firstPlace = 0;
        std::uint64_t places = 1;
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
        std::uint64_t size = 0; ///< how many that are
    };

    /// Joints that are left open at most when configurations are excluded together.
    static constexpr std::size_t kMostOpen = 8;

    /// The places of a block that a thread takes at a time, and what it found there.
    struct Chunk {
        std::uint64_t next;
        std::uint64_t end;
        std::vector<Contender> contenders;
    };

    bool prepare(const std::function<bool()>& stop);
    bool testFirst(const std::function<bool()>& stop);
    void testBlock(const std::function<bool()>& stop);
    bool inOwnOrder() const
    {
        return !m_givenOrder && m_first == 0 && m_count == m_candidates.NumConfigs();
    }
    Block nextBlock() const;
    Block nextOfWhole() const;
    std::vector<Chunk> chunksOf(const Block& block) const;
    /// A thread's evaluator, and how often a bound on so many open joints excluded them all.
    struct Worker {
        Evaluator evaluator;
        struct Success {
            double tried = 0;
            double excluded = 0;
        };
        std::array<Success, kMostOpen + 1> success{};
    };
    std::unique_ptr<Worker> newWorker() const;
    std::uint64_t excludedFrom(Worker& worker, std::uint64_t place, const Configuration& there,
                               double limit) const;
    void testChunk(Worker& worker, Chunk& chunk, const std::function<bool()>& stop);
    void chooseBlockSize(double seconds);
    static Contender exactly(const Ranked& entry);
    static double limitOf(const std::vector<Contender>& contenders);
    static void dropBeaten(std::vector<Contender>& contenders);
    void decide(const std::function<bool()>& stop);

    std::shared_ptr<const SearchTask> m_task;
    CandidateSet m_candidates;
    std::uint64_t m_first;
    std::uint64_t m_count;
    std::uint64_t m_tested = 0; ///< the first so many of their order, in whole blocks
    std::atomic<std::uint64_t> m_testedSoFar = 0;
    std::atomic<std::uint64_t> m_number;
    std::uint64_t m_mostInBlock;
    int m_threads = 1; ///< of the last advance()
    /// When it returns, though a block that excludes less than the one before is not done.
    std::chrono::steady_clock::time_point m_until{};
    std::vector<Contender> m_contenders;
    Block m_block;
    std::vector<Chunk> m_chunks; ///< of the block that has been begun
    Ranking m_ranking;
    double m_expected = std::numeric_limits<double>::infinity();
    bool m_givenOrder = false;
    bool m_decided = false;                    ///< the ranking is that of all that has been tested
    std::shared_ptr<const PointOrder> m_order; ///< null: the usual one
    std::shared_ptr<const AmplitudeBalls> m_balls; ///< null: nothing is excluded unmeasured
    std::vector<std::uint64_t> m_below; ///< configurations with the same joints but so many last
    std::vector<std::unique_ptr<Worker>> m_workers; ///< one per thread that works
    std::atomic<double> m_lastMeasure = std::numeric_limits<double>::quiet_NaN();
};

/// In which order levels are best calculated, from configurations by chance among `count` from
/// `first` on; null, for the usual order, in a small search, where none is learned, or when
/// stopped.
std::shared_ptr<const PointOrder> learnedOrder(const std::shared_ptr<const SearchTask>& task,
                                               const CandidateSet& candidates, std::uint64_t first,
                                               std::uint64_t count,
                                               const std::function<bool()>& stop);

/// The ranking of several parts of one search, joined in their order. An error where they do not
/// follow each other without gap.
struct SearchPart {
    std::uint64_t first = 0;
    std::uint64_t tested = 0;
    std::vector<Ranked> best;
};
Result<SearchPart> mergeParts(std::vector<SearchPart> parts);

} // namespace orva
