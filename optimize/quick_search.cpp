#include "optimize/quick_search.h"

#include <limits>
#include <random>

namespace orva {

namespace {

constexpr int kIdleStarts = 12; ///< starts in a row without a better one
constexpr std::uint64_t kSeed = 20260101;

using Digits = CandidateSet::Digits;

/// Sets some digits by chance.
void shake(Digits& digits, const Digits& widths, std::mt19937_64& random)
{
    for (int i = 0; !digits.empty() && i < 4; ++i) {
        const std::size_t digit = random() % digits.size();
        digits[digit] = random() % widths[digit];
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
    Digits digits = m_candidates.digitsOf(m_candidates.numberOf(m_task->array.GIAGetAllAngle()));
    descend(digits);
    Digits best = digits;
    double bestRms = m_last;
    for (int idle = 0; idle < kIdleStarts && !done(); ++idle) {
        digits = best;
        shake(digits, m_candidates.widths(), random);
        descend(digits);
        if (m_last < bestRms) {
            bestRms = m_last;
            best = digits;
            idle = -1;
        }
    }
    return !m_stopped;
}

double QuickSearch::measure(const Digits& digits)
{
    const std::uint64_t number = m_candidates.numberOf(digits);
    if (const auto known = m_measured.find(number); known != m_measured.end())
        return known->second;
    m_stopped = m_stopped || (*m_stop)();
    if (m_stopped)
        return std::numeric_limits<double>::infinity();
    const Configuration tested = m_candidates.configurationOf(number);
    const double rms = m_evaluator.fastMeasure(tested);
    m_measured.emplace(number, rms);
    if (rms < m_fast.limit()) {
        const bool first = m_fast.best().empty() || rms < m_fast.best().front().rms;
        m_fast.add({tested.angles, rms, number, tested.heightM});
        if (first && *m_better)
            (*m_better)({m_fast, m_measured.size(), false});
    }
    return rms;
}

/// Tries one digit's or two neighbouring digits' other places until none is better.
void QuickSearch::descend(Digits& digits)
{
    m_last = measure(digits);
    for (bool improved = true; improved && !done();) {
        improved = false;
        for (std::size_t digit = 0; digit < digits.size() && !done(); ++digit)
            improved |= improve(digits, digit, digit);
        for (std::size_t digit = 0; !improved && digit + 1 < digits.size() && !done(); ++digit)
            improved |= improve(digits, digit, digit + 1);
    }
}

bool QuickSearch::improve(Digits& digits, std::size_t digit, std::size_t other)
{
    const Digits before = digits;
    const Digits& widths = m_candidates.widths();
    Digits trial = before;
    for (std::uint64_t a = 0; a < widths[digit] && !done(); ++a)
        for (std::uint64_t b = 0; b < widths[other] && !done(); ++b) {
            trial[other] = b;
            trial[digit] = a;
            const double rms = measure(trial);
            if (rms < m_last) {
                m_last = rms;
                digits = trial;
            }
            if (digit == other)
                break;
        }
    return digits != before;
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
        const std::optional<double> rms = m_evaluator.measure(entry.configuration(), stop);
        if (!rms)
            return std::nullopt;
        result.ranking.add({entry.angles, *rms, entry.number, entry.heightM});
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
