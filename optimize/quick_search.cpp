#include "optimize/quick_search.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace orva {

namespace {

constexpr int kIdleStarts = 24; ///< in a row without a better one
constexpr int kStartsByChance = 8;
constexpr std::uint64_t kSeed = 20260101;
constexpr double kNever = std::numeric_limits<double>::infinity();

using Digits = CandidateSet::Digits;

/// Sets some digits by chance.
void shake(Digits& digits, const Digits& widths, std::mt19937_64& random)
{
    const std::size_t most = 2 + random() % 4;
    for (std::size_t i = 0; !digits.empty() && i < most; ++i) {
        const std::size_t digit = random() % digits.size();
        digits[digit] = random() % widths[digit];
    }
}

} // namespace

QuickSearch::QuickSearch(std::shared_ptr<const SearchTask> task, CandidateSet candidates,
                         std::uint64_t budget)
    : m_task(std::move(task)), m_candidates(std::move(candidates)), m_budget(budget)
{
}

/// Straight, evenly curved, curved more and more towards the lowest joint, by chance; other digits
/// in their middle.
std::vector<Digits> QuickSearch::starts() const
{
    const Digits& widths = m_candidates.widths();
    const std::size_t joints = m_candidates.joints();
    const auto curve = [&](double most, double power) {
        Digits digits;
        for (std::size_t digit = 0; digit < widths.size(); ++digit) {
            const auto steps = static_cast<double>(widths[digit] - 1);
            const double place = static_cast<double>(digit + 1) / static_cast<double>(joints);
            const double share = digit < joints ? most * std::pow(place, power) : 0.5;
            digits.push_back(static_cast<std::uint64_t>(std::lround(share * steps)));
        }
        return digits;
    };
    std::vector<Digits> starts;
    for (const double most : {0.0, 0.25, 0.5, 0.75, 1.0})
        starts.push_back(curve(most, 0));
    for (const double power : {1.0, 2.0, 4.0})
        for (const double most : {0.5, 0.75, 1.0})
            starts.push_back(curve(most, power));
    std::mt19937_64 random(kSeed + 1);
    for (int i = 0; i < kStartsByChance; ++i) {
        Digits& digits = starts.emplace_back();
        for (const std::uint64_t width : widths)
            digits.push_back(random() % width);
    }
    return starts;
}

bool QuickSearch::advance(const std::function<bool()>& stop, const Better& better)
{
    m_stop = &stop;
    m_better = &better;
    m_stopped = false;
    if (!m_evaluator) {
        if (stop())
            return false;
        m_evaluator = std::make_unique<Evaluator>(
            m_task, learnedOrder(m_task, m_candidates, 0, m_candidates.NumConfigs().value_or(1),
                                 [] { return false; }));
    }
    Digits best;
    double bestRms = kNever;
    const auto go = [&](Digits digits) {
        descend(digits);
        if (m_last >= bestRms)
            return false;
        bestRms = m_last;
        best = std::move(digits);
        return true;
    };
    for (const Digits& start : starts())
        if (!done())
            go(start);
    std::mt19937_64 random(kSeed);
    for (int idle = 0; idle < kIdleStarts && !done(); ++idle) {
        Digits digits = best;
        shake(digits, m_candidates.widths(), random);
        if (go(std::move(digits)))
            idle = -1;
    }
    return !m_stopped;
}

double QuickSearch::evaluate(const Configuration& configuration, double limit)
{
    const auto bounds = m_evaluator->measureUpTo(configuration, limit);
    if (!bounds)
        return kNever;
    const bool told = std::isfinite(bounds->low) && std::isfinite(bounds->high);
    if (!told)
        return m_evaluator->measure(configuration);
    return std::midpoint(bounds->low, bounds->high);
}

/// The measure where it is not above the limit; else infinity.
double QuickSearch::measure(const Digits& digits, double limit)
{
    const std::uint64_t number = m_candidates.numberOf(digits);
    const auto known = m_measured.find(number);
    if (known != m_measured.end() && !known->second.above)
        return known->second.rms;
    if (known != m_measured.end() && known->second.rms >= limit)
        return kNever;
    m_stopped = m_stopped || (*m_stop)();
    if (m_stopped || (known == m_measured.end() && m_measured.size() >= m_budget))
        return kNever;
    const Configuration tested = m_candidates.configurationOf(number);
    // What may be among the three best is measured to its end, too.
    const double upTo = std::max(limit, m_fast.limit());
    const double rms = evaluate(tested, upTo);
    const bool above = rms == kNever;
    m_measured[number] = above ? Known{upTo, true} : Known{rms, false};
    if (rms < m_fast.limit()) {
        const bool first = m_fast.best().empty() || rms < m_fast.best().front().rms;
        m_fast.add({tested.angles, rms, number, tested.heightM});
        if (first && *m_better)
            (*m_better)({m_fast, m_measured.size(), false});
    }
    return rms;
}

bool QuickSearch::take(Digits& digits, const Digits& trial)
{
    const double rms = measure(trial, m_last);
    if (rms >= m_last)
        return false;
    m_last = rms;
    digits = trial;
    return true;
}

/// Tries one digit's or two neighbouring digits' other places, then to move curvature from one
/// joint to another, until nothing is better.
void QuickSearch::descend(Digits& digits)
{
    m_last = measure(digits, kNever);
    for (bool improved = true; improved && !done();) {
        improved = false;
        for (std::size_t digit = 0; digit < digits.size() && !done(); ++digit)
            improved |= improve(digits, digit, digit);
        if (!improved)
            improved = bend(digits);
        for (std::size_t digit = 0; !improved && digit + 1 < digits.size() && !done(); ++digit)
            improved |= improve(digits, digit, digit + 1);
    }
}

bool QuickSearch::improve(Digits& digits, std::size_t digit, std::size_t other)
{
    const Digits& widths = m_candidates.widths();
    Digits trial = digits;
    bool improved = false;
    for (std::uint64_t a = 0; a < widths[digit] && !done(); ++a)
        for (std::uint64_t b = 0; b < widths[other] && !done(); ++b) {
            trial[other] = b;
            trial[digit] = a;
            improved |= take(digits, trial);
            if (digit == other)
                break;
        }
    return improved;
}

/// One step more here for one less there.
bool QuickSearch::bend(Digits& digits)
{
    const Digits& widths = m_candidates.widths();
    for (std::size_t more = 0; more < digits.size(); ++more)
        for (std::size_t less = 0; less < digits.size() && !done(); ++less) {
            if (more == less || digits[more] + 1 >= widths[more] || digits[less] == 0)
                continue;
            Digits trial = digits;
            ++trial[more];
            --trial[less];
            if (take(digits, trial))
                return true;
        }
    return false;
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
        const std::optional<double> rms = m_evaluator->measure(entry.configuration(), stop);
        if (!rms)
            return std::nullopt;
        result.ranking.add({entry.angles, *rms, entry.number, entry.heightM});
    }
    return result;
}

QuickResult quickSearch(const std::shared_ptr<const SearchTask>& task,
                        const CandidateSet& candidates, const std::function<bool()>& stop,
                        const QuickSearch::Better& better, std::uint64_t budget)
{
    QuickSearch search(task, candidates, budget);
    search.advance(stop, better);
    return *search.result([] { return false; });
}

} // namespace orva
