#include "optimize/search.h"

#include "engine/parallel.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <mutex>

namespace orva {

namespace {

/// Configurations that a thread takes at a time, and how many such parts a block has per thread.
constexpr std::uint64_t kFewestInChunk = 32;
constexpr std::uint64_t kChunksPerThread = 8;
/// Configurations between two reports: enough of them for the upper boxes to stay where they are
/// in most steps, few enough for a report several times a second.
constexpr std::uint64_t kMostInBlock = 262144;
constexpr double kLongestBlockSeconds = 0.5;
constexpr double kPlaceholder = 10;
/// Contenders that the fast kernel cannot tell apart before the literal one decides.
constexpr std::size_t kMostUndecided = 1024;

} // namespace

double Ranking::limit() const
{
    return m_best.size() < kMost ? std::numeric_limits<double>::infinity() : m_best.back().rms;
}

void Ranking::add(const Ranked& entry)
{
    const auto place = std::find_if(m_best.begin(), m_best.end(),
                                    [&](const Ranked& kept) { return entry.rms < kept.rms; });
    if (place == m_best.end() && m_best.size() >= kMost)
        return;
    m_best.insert(place, entry);
    m_best.resize(std::min(m_best.size(), kMost));
}

Search::Search(std::shared_ptr<const SearchTask> task, CandidateSet candidates, std::uint64_t first,
               std::uint64_t count)
    : m_task(std::move(task)), m_candidates(std::move(candidates)), m_first(first), m_count(count)
{
}

/// The end of the block that the next configuration lies in: blocks hold every combination of the
/// first joints.
std::uint64_t Search::nextBlock() const
{
    const JointRange range = m_candidates.range();
    std::uint64_t size = 1;
    for (int joint = range.first; joint <= range.last; ++joint) {
        const std::uint64_t width = m_candidates.widthOf(joint);
        if (size * width > m_mostInBlock)
            break;
        size *= width;
    }
    const std::uint64_t next = m_first + m_tested;
    return std::min((next / size + 1) * size, m_first + m_count) - next;
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
}

/// Widths of the first joints whose combinations are exactly `size`; none where `block` is no whole
/// block of them.
std::vector<std::uint64_t> Search::digitsOf(std::uint64_t block, std::uint64_t size) const
{
    std::vector<std::uint64_t> widths;
    std::uint64_t combinations = 1;
    const JointRange range = m_candidates.range();
    for (int joint = range.first; joint <= range.last && combinations < size; ++joint) {
        widths.push_back(m_candidates.widthOf(joint));
        combinations *= widths.back();
    }
    if (combinations != size || block % size != 0)
        widths.clear();
    return widths;
}

/// Within a whole block the last of its joints is turned first, so that the boxes above stay.
void Search::testChunk(Evaluator& evaluator, std::uint64_t block,
                       const std::vector<std::uint64_t>& digits, std::uint64_t from,
                       std::uint64_t to, const std::function<bool()>& stop,
                       std::vector<Contender>& contenders) const
{
    const auto mirrored = [&](std::uint64_t place) {
        if (digits.empty())
            return place;
        std::uint64_t number = 0;
        for (auto width = digits.rbegin(); width != digits.rend(); ++width) {
            number = number * *width + place % *width;
            place /= *width;
        }
        return number;
    };
    std::vector<Contender> known = m_contenders;
    double limit = limitOf(known);
    for (std::uint64_t place = from; place < to; ++place) {
        if (place % 16 == 0 && stop())
            return;
        const std::uint64_t number = block + mirrored(place);
        const LineArray::Positions angles = m_candidates.anglesOf(number);
        const auto bounds = evaluator.measureUpTo(angles, limit);
        if (!bounds)
            continue;
        m_lastMeasure = (bounds->low + bounds->high) / 2;
        contenders.push_back({{angles, 0, number}, *bounds, false});
        known.push_back(contenders.back());
        dropBeaten(known);
        limit = limitOf(known);
    }
    dropBeaten(contenders);
}

bool Search::advance(int threads, const std::function<bool()>& stop)
{
    while (m_evaluators.size() < static_cast<std::size_t>(std::max(threads, 1)))
        m_evaluators.push_back(std::make_unique<Evaluator>(m_task));
    if (m_tested == 0 && m_count > 0 && m_first == 0) {
        const LineArray::Positions angles = m_candidates.anglesOf(0);
        const double rms = m_evaluators.front()->measure(angles);
        for (const double kept : {rms, kPlaceholder * rms, kPlaceholder * rms})
            m_contenders.push_back({{angles, kept, 0}, {kept, kept}, true});
        m_lastMeasure = rms;
        m_tested = 1;
        if (finished())
            return true;
    }

    const auto start = std::chrono::steady_clock::now();
    const std::uint64_t block = m_first + m_tested;
    const std::uint64_t size = nextBlock();
    const std::uint64_t chunkSize =
        std::max(kFewestInChunk,
                 size / (kChunksPerThread * static_cast<std::uint64_t>(std::max(1, threads))));
    const int chunks = static_cast<int>((size + chunkSize - 1) / chunkSize);
    const std::vector<std::uint64_t> digits = digitsOf(block, size);
    std::vector<std::vector<Contender>> found(static_cast<std::size_t>(chunks));
    std::vector<Evaluator*> idle;
    for (const auto& evaluator : m_evaluators)
        idle.push_back(evaluator.get());
    std::mutex mutex;
    std::atomic<bool> stopped = false;
    const auto stopping = [&] {
        if (!stopped && stop())
            stopped = true;
        return stopped.load();
    };
    runBlocks(chunks, threads, {}, [&](int chunk) {
        if (stopping())
            return;
        Evaluator* evaluator = nullptr;
        {
            const std::lock_guard lock(mutex);
            evaluator = idle.back();
            idle.pop_back();
        }
        const std::uint64_t from = static_cast<std::uint64_t>(chunk) * chunkSize;
        testChunk(*evaluator, block, digits, from, std::min(from + chunkSize, size), stopping,
                  found[static_cast<std::size_t>(chunk)]);
        const std::lock_guard lock(mutex);
        idle.push_back(evaluator);
    });
    if (stopped)
        return finished();
    for (const std::vector<Contender>& contenders : found)
        m_contenders.insert(m_contenders.end(), contenders.begin(), contenders.end());
    dropBeaten(m_contenders);
    m_tested += size;
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    if (seconds.count() > kLongestBlockSeconds)
        m_mostInBlock = std::max(kFewestInChunk, m_mostInBlock / 2);
    else if (seconds.count() < kLongestBlockSeconds / 3)
        m_mostInBlock = std::min(kMostInBlock, m_mostInBlock * 2);
    if (m_contenders.size() > kMostUndecided)
        resolve();
    return finished();
}

/// Lets the literal kernel decide between the contenders; keeps the best.
void Search::resolve()
{
    std::sort(m_contenders.begin(), m_contenders.end(), [](const Contender& a, const Contender& b) {
        return a.entry.number < b.entry.number;
    });
    if (m_evaluators.empty())
        m_evaluators.push_back(std::make_unique<Evaluator>(m_task));
    m_ranking = {};
    for (Contender& contender : m_contenders) {
        if (!contender.exact)
            contender.entry.rms = m_evaluators.front()->measure(contender.entry.angles);
        if (contender.entry.rms < m_ranking.limit())
            m_ranking.add(contender.entry);
    }
    m_contenders.clear();
    for (const Ranked& entry : m_ranking.best())
        m_contenders.push_back({entry, {entry.rms, entry.rms}, true});
}

double Search::bestSoFar() const
{
    double best = std::numeric_limits<double>::infinity();
    for (const Contender& contender : m_contenders)
        best = std::min(best, (contender.bounds.low + contender.bounds.high) / 2);
    return best;
}

const Ranking& Search::ranking()
{
    resolve();
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
            if (entry.rms < ranking.limit())
                ranking.add(entry);
    }
    whole.best = ranking.best();
    return whole;
}

} // namespace orva
