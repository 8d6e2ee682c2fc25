#include "optimize/search.h"

#include "engine/parallel.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <mutex>
#include <numeric>
#include <random>
#include <tuple>
#include <utility>

namespace orva {

namespace {

/// Configurations that a thread takes at a time, and how many such parts a block has per thread.
constexpr std::uint64_t kFewestInChunk = 32;
constexpr std::uint64_t kChunksPerThread = 8;
/// Configurations between two reports: enough of them for the upper boxes to stay where they are
/// in most steps, few enough for a report several times a second.
constexpr std::uint64_t kMostInBlock = 1U << 22U;
/// Levels to be calculated in the first block, for a report after a moment.
constexpr std::uint64_t kLevelsInFirstBlock = 204'800;
constexpr double kBlockSeconds = 0.3;
constexpr double kFastestGrowth = 16;
constexpr double kPlaceholder = 10;
/// Contenders that the fast kernel cannot tell apart before the literal one decides.
constexpr std::size_t kMostUndecided = 32;
constexpr std::size_t kMostUndecidedInChunk = 128;
/// Configurations that tell in which order levels are best calculated, and in how large a search.
constexpr int kSamples = 64;
constexpr std::uint64_t kFewestToLearnFor = 4096;
/// Smaller searches end before the bounds are ready.
constexpr std::uint64_t kFewestToBound = 50'000;
/// Of all candidates, where a bound may exclude millions at once.
constexpr std::uint64_t kMostInWholeBlock = 1ULL << 50U;
constexpr std::uint64_t kSampleSeed = 20261125;

} // namespace

Ranking Ranking::of(std::vector<Ranked> all)
{
    std::stable_sort(all.begin(), all.end(),
                     [](const Ranked& a, const Ranked& b) { return a.number < b.number; });
    Ranking ranking;
    for (const Ranked& entry : all)
        ranking.add(entry);
    return ranking;
}

double Ranking::limit() const
{
    return m_best.size() < kMost ? std::numeric_limits<double>::infinity() : m_best.back().rms;
}

void Ranking::add(const Ranked& entry)
{
    if (entry.rms >= limit())
        return;
    const auto place = std::find_if(m_best.begin(), m_best.end(),
                                    [&](const Ranked& kept) { return entry.rms < kept.rms; });
    m_best.insert(place, entry);
    m_best.resize(std::min(m_best.size(), kMost));
}

Search::Search(std::shared_ptr<const SearchTask> task, CandidateSet candidates, std::uint64_t first,
               std::uint64_t count)
    : m_task(std::move(task)),
      m_candidates(std::move(candidates)),
      m_first(first),
      m_count(count),
      m_number(first),
      m_mostInBlock(std::clamp(kLevelsInFirstBlock / static_cast<std::uint64_t>(m_task->points),
                               kFewestInChunk, kMostInBlock))
{
}

/// The next configurations in their order: what is left of a block that holds every combination of
/// the first joints, of which the last is turned first, so that the boxes above it stay.
Search::Block Search::nextBlock() const
{
    Block block;
    for (std::size_t digit = 0; digit < m_candidates.widths().size(); ++digit) {
        const std::uint64_t width = m_candidates.widths()[digit];
        if (block.places * width > m_mostInBlock)
            break;
        block.places *= width;
        block.turning.insert(block.turning.begin(), digit);
    }
    block.begin = m_first + m_tested;
    block.base = block.begin / block.places * block.places;
    block.end = std::min(block.base + block.places, m_first + m_count);
    block.size = block.end - block.begin;
    return block;
}

/// The next ones of all candidates: the last joint is turned first; what moves all boxes, last.
Search::Block Search::nextOfWhole() const
{
    Block block;
    for (std::size_t joint = m_candidates.joints(); joint > 0; --joint)
        block.turning.push_back(joint - 1);
    for (std::size_t digit = m_candidates.joints(); digit < m_candidates.widths().size(); ++digit)
        block.turning.push_back(digit);
    block.firstPlace = m_tested;
    block.places = block.size = std::min(m_mostInBlock, m_count - m_tested);
    block.end = m_count;
    return block;
}

double Search::limitOf(const std::vector<Contender>& contenders)
{
    std::array<double, Ranking::kMost> highest;
    highest.fill(std::numeric_limits<double>::infinity());
    for (const Contender& contender : contenders) {
        double high = contender.bounds.high;
        for (double& kept : highest)
            if (high < kept)
                std::swap(high, kept);
    }
    return highest.back();
}

void Search::dropBeaten(std::vector<Contender>& contenders)
{
    const double limit = limitOf(contenders);
    std::erase_if(contenders,
                  [limit](const Contender& contender) { return contender.bounds.low > limit; });
    // Of those whose measure is known only the first can be among the best, equal ones included.
    const auto exact = std::stable_partition(contenders.begin(), contenders.end(),
                                             [](const Contender& c) { return !c.exact; });
    if (contenders.end() - exact <= static_cast<std::ptrdiff_t>(Ranking::kMost))
        return;
    std::stable_sort(exact, contenders.end(), [](const Contender& a, const Contender& b) {
        return std::tie(a.bounds.low, a.entry.number) < std::tie(b.bounds.low, b.entry.number);
    });
    contenders.erase(exact + Ranking::kMost, contenders.end());
}

Search::Contender Search::exactly(const Ranked& entry)
{
    return {entry, {entry.rms, entry.rms}, true};
}

void Search::testChunk(Worker& worker, Chunk& chunk, const std::function<bool()>& stop)
{
    Evaluator& evaluator = worker.evaluator;
    std::vector<Contender>& contenders = chunk.contenders;
    std::vector<Contender> known = m_contenders;
    known.insert(known.end(), contenders.begin(), contenders.end());
    double limit = std::min(m_expected, limitOf(known));
    // Told in handfuls: threads that count together wait for each other.
    constexpr std::uint64_t kHandful = 32;
    std::uint64_t untold = 0;
    CandidateWalk walk(m_candidates, m_block.turning, m_block.base);
    walk.seek(chunk.next);
    const auto count = [&] {
        if (++untold != kHandful)
            return;
        m_testedSoFar += std::exchange(untold, 0);
        m_number = walk.number();
    };
    constexpr int kTurns = 64; // to look at the clock takes time
    for (int turn = 1; chunk.next < chunk.end && !stop(); ++chunk.next, walk.next(), ++turn) {
        if (turn % kTurns == 0 && inOwnOrder() && std::chrono::steady_clock::now() > m_until)
            break;
        const std::uint64_t number = walk.number();
        if (number < m_block.begin || number >= m_block.end)
            continue;
        if (const std::uint64_t excluded =
                excludedFrom(worker, chunk.next, walk.configuration(), limit)) {
            const std::uint64_t last = std::min(chunk.next + excluded, chunk.end) - 1;
            m_testedSoFar += last - chunk.next + 1;
            m_number = number;
            walk.seek(chunk.next = last);
            continue;
        }
        const Configuration& tested = walk.configuration();
        const auto bounds = evaluator.measureUpTo(tested, limit);
        if (!bounds) {
            count();
            continue;
        }
        Contender contender{{tested.angles, 0, number, tested.heightM}, *bounds, false};
        // Where the fast kernel cannot tell, or too many are as good as equal.
        if (!std::isfinite(bounds->low) || !std::isfinite(bounds->high) ||
            known.size() > kMostUndecidedInChunk) {
            const std::optional<double> measure = evaluator.measure(tested, stop);
            if (!measure)
                break;
            contender = exactly({tested.angles, *measure, number, tested.heightM});
        }
        count();
        m_lastMeasure = std::midpoint(contender.bounds.low, contender.bounds.high);
        contenders.push_back(contender);
        known.push_back(contender);
        dropBeaten(known);
        limit = std::min(m_expected, limitOf(known));
        if (contenders.size() > 2 * kMostUndecidedInChunk)
            dropBeaten(contenders);
    }
    m_testedSoFar += untold;
    dropBeaten(contenders);
}

std::shared_ptr<const PointOrder> learnedOrder(const std::shared_ptr<const SearchTask>& task,
                                               const CandidateSet& candidates, std::uint64_t first,
                                               std::uint64_t count,
                                               const std::function<bool()>& stop)
{
    if (count < kFewestToLearnFor || !task->otherAreas.empty() || !recordOf(task->measure).grow)
        return nullptr;
    Evaluator evaluator(task);
    std::mt19937_64 random(kSampleSeed);
    std::vector<std::vector<double>> samples;
    for (int i = 0; i < kSamples; ++i) {
        if (stop())
            return nullptr;
        samples.push_back(
            evaluator.distances(candidates.configurationOf(first + random() % count)));
    }
    return std::make_shared<PointOrder>(PointOrder::learned(task->measure, samples));
}

/// Makes what the first thread works with; false when stopped.
bool Search::prepare(const std::function<bool()>& stop)
{
    if (!m_workers.empty())
        return true;
    m_order = learnedOrder(m_task, m_candidates, m_first, m_count, stop);
    if (stop())
        return false;
    const bool bounded =
        m_task->measure != Measure::SmoothArea &&
        m_task->kernel->hasRunningSums({}, std::array{m_task->area.start}, m_task->choice.bands);
    if (bounded && inOwnOrder() && m_count >= kFewestToBound) {
        m_balls = std::make_shared<AmplitudeBalls>(m_task->speakerData.directivity);
        m_below = {1};
        for (std::size_t joint = m_candidates.joints(); joint > 0 && m_below.size() <= kMostOpen;
             --joint)
            m_below.push_back(m_below.back() * m_candidates.widths()[joint - 1]);
    }
    m_workers.push_back(newWorker());
    return true;
}

std::unique_ptr<Search::Worker> Search::newWorker() const
{
    return std::unique_ptr<Worker>(new Worker{Evaluator(m_task, m_order, m_balls), {}});
}

/// How many from that place on are certainly above the limit; 0 where that one must be measured.
std::uint64_t Search::excludedFrom(Worker& worker, std::uint64_t place, const Configuration& there,
                                   double limit) const
{
    // A bound takes about as long as to measure two; it is asked where it helped often enough.
    constexpr double kWorthwhile = 0.15;
    constexpr double kFewestTried = 32;
    constexpr double kRemembered = 512;
    constexpr std::uint64_t kNowAndThen = 61;
    for (std::size_t open = m_below.size(); open-- > 1;) {
        if (place % m_below[open] != 0)
            continue;
        auto& [tried, excluded] = worker.success[open];
        if (tried >= kFewestTried && excluded < kWorthwhile * tried &&
            place / m_below[open] % kNowAndThen != 0)
            continue;
        if (tried >= kRemembered) {
            tried /= 2;
            excluded /= 2;
        }
        ++tried;
        if (worker.evaluator.leastMeasure(there, m_candidates, open, limit) > limit) {
            ++excluded;
            return m_below[open];
        }
    }
    return 0;
}

/// Configuration 0, which also takes the other two places; false when stopped.
bool Search::testFirst(const std::function<bool()>& stop)
{
    const Configuration tested = m_candidates.configurationOf(0);
    const std::optional<double> rms = m_workers.front()->evaluator.measure(tested, stop);
    if (!rms)
        return false;
    const double placeholder = std::min(kPlaceholder * *rms, kNoMeasure);
    for (const double kept : {*rms, placeholder, placeholder})
        m_contenders.push_back(exactly({tested.angles, kept, 0, tested.heightM}));
    m_lastMeasure = *rms;
    m_tested = 1;
    ++m_testedSoFar;
    return true;
}

std::vector<Search::Chunk> Search::chunksOf(const Block& block) const
{
    const std::uint64_t size = std::max(
        kFewestInChunk, block.places / (kChunksPerThread * static_cast<std::uint64_t>(m_threads)));
    const std::uint64_t end = block.firstPlace + block.places;
    // Those that are excluded together stay together.
    std::uint64_t together = 1;
    for (const std::uint64_t below : m_below)
        together = below <= size ? below : together;
    std::vector<Chunk> chunks;
    for (std::uint64_t from = block.firstPlace; from < end;) {
        const std::uint64_t to = std::min((from + size + together - 1) / together * together, end);
        chunks.push_back({std::exchange(from, to), to, {}});
    }
    return chunks;
}

/// Goes on with the block that has been begun.
void Search::testBlock(const std::function<bool()>& stop)
{
    std::vector<Worker*> idle;
    for (const auto& worker : m_workers)
        idle.push_back(worker.get());
    std::mutex mutex;
    std::atomic<bool> stopped = false;
    const auto stopping = [&] {
        if (!stopped && stop())
            stopped = true;
        return stopped.load();
    };
    runBlocks(static_cast<int>(m_chunks.size()), m_threads, {}, [&](int which) {
        Chunk& chunk = m_chunks[static_cast<std::size_t>(which)];
        if (chunk.next == chunk.end || stopping())
            return;
        Worker* worker = nullptr;
        {
            const std::lock_guard lock(mutex);
            if (idle.empty()) // as many as run at once, however many threads are allowed
                idle.push_back(m_workers.emplace_back(newWorker()).get());
            worker = idle.back();
            idle.pop_back();
        }
        testChunk(*worker, chunk, stopping);
        const std::lock_guard lock(mutex);
        idle.push_back(worker);
    });
}

void Search::chooseBlockSize(double seconds)
{
    const double wanted = kBlockSeconds / seconds * static_cast<double>(m_block.size);
    const auto most = static_cast<double>(m_mostInBlock);
    m_mostInBlock = std::clamp(static_cast<std::uint64_t>(std::clamp(wanted, most / kFastestGrowth,
                                                                     most * kFastestGrowth)),
                               kFewestInChunk, inOwnOrder() ? kMostInWholeBlock : kMostInBlock);
}

bool Search::advance(int threads, const std::function<bool()>& stop)
{
    m_threads = std::max(1, threads);
    if (m_tested == m_count) {
        decide(stop);
        return finished();
    }
    if (!prepare(stop))
        return false;
    if (m_tested == 0 && m_first == 0 && !testFirst(stop))
        return false;
    m_decided = false;
    if (m_tested == m_count)
        return false;

    const auto start = std::chrono::steady_clock::now();
    constexpr std::chrono::seconds kLongest{1};
    m_until = start + kLongest;
    const bool resumes = !m_chunks.empty();
    if (!resumes) {
        m_block = inOwnOrder() ? nextOfWhole() : nextBlock();
        m_chunks = chunksOf(m_block);
    }
    testBlock(stop);
    if (std::any_of(m_chunks.begin(), m_chunks.end(),
                    [](const Chunk& chunk) { return chunk.next < chunk.end; }))
        return false;
    for (const Chunk& chunk : m_chunks)
        m_contenders.insert(m_contenders.end(), chunk.contenders.begin(), chunk.contenders.end());
    m_chunks.clear();
    dropBeaten(m_contenders);
    m_tested += m_block.size;
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    if (!resumes)
        chooseBlockSize(seconds.count());
    if (m_contenders.size() > kMostUndecided)
        decide(stop);
    return finished();
}

/// Lets the literal kernel decide between the contenders; keeps the best. What was decided when it
/// is stopped stays so.
void Search::decide(const std::function<bool()>& stop)
{
    std::stable_sort(
        m_contenders.begin(), m_contenders.end(),
        [](const Contender& a, const Contender& b) { return a.entry.number < b.entry.number; });
    runBlocks(static_cast<int>(m_contenders.size()), m_threads, {}, [&](int which) {
        Contender& contender = m_contenders[static_cast<std::size_t>(which)];
        if (contender.exact || stop())
            return;
        Ranked entry = contender.entry;
        const auto measure = Evaluator(m_task, m_order).measure(entry.configuration(), stop);
        if (!measure)
            return;
        entry.rms = *measure;
        contender = exactly(entry);
    });
    if (!std::all_of(m_contenders.begin(), m_contenders.end(),
                     [](const Contender& contender) { return contender.exact; }))
        return;
    m_ranking = {};
    for (const Contender& contender : m_contenders)
        m_ranking.add(contender.entry);
    m_contenders.clear();
    for (const Ranked& entry : m_ranking.best())
        m_contenders.push_back(exactly(entry));
    m_decided = m_chunks.empty();
}

Ranking Search::bestSoFar() const
{
    std::vector<Ranked> all;
    const auto take = [&all](const std::vector<Contender>& contenders) {
        for (const Contender& contender : contenders) {
            all.push_back(contender.entry);
            all.back().rms = std::midpoint(contender.bounds.low, contender.bounds.high);
        }
    };
    take(m_contenders);
    for (const Chunk& chunk : m_chunks)
        take(chunk.contenders);
    return Ranking::of(std::move(all));
}

const Ranking& Search::decide()
{
    for (const Chunk& chunk : m_chunks)
        m_contenders.insert(m_contenders.end(), chunk.contenders.begin(), chunk.contenders.end());
    for (Chunk& chunk : m_chunks)
        chunk.contenders.clear();
    decide([] { return false; });
    return m_ranking;
}

Result<SearchPart> mergeParts(std::vector<SearchPart> parts)
{
    std::sort(parts.begin(), parts.end(),
              [](const SearchPart& a, const SearchPart& b) { return a.first < b.first; });
    Ranking ranking;
    SearchPart whole;
    whole.first = parts.empty() ? 0 : parts.front().first;
    for (const SearchPart& part : parts) {
        if (part.first != whole.first + whole.tested)
            return Error{"the parts do not follow each other: " +
                             std::to_string(whole.first + whole.tested) +
                             " should come next, not " + std::to_string(part.first),
                         ""};
        whole.tested += part.tested;
        for (const Ranked& entry : part.best)
            ranking.add(entry);
    }
    whole.best = ranking.best();
    return whole;
}

} // namespace orva
