#include "optimize/evaluator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace orva {

namespace {

/// Rounding of two levels to 32 bits and of a logarithm in 32 bits.
constexpr double kRoundingDb = 2e-5;

double loudestPower(const SpeakerData& data, const LevelChoice& choice,
                    std::span<const float> factors)
{
    double sum = 0;
    for (int b = choice.bands.from; b <= choice.bands.to; ++b) {
        const auto& row = data.directivity.DirMagnitude[static_cast<std::size_t>(b)];
        const float quietest = *std::min_element(row.begin(), row.end());
        sum += static_cast<double>(factors[static_cast<std::size_t>(b - choice.bands.from)]) *
               powerOfLevel(-static_cast<double>(quietest));
    }
    return sum;
}

} // namespace

Evaluator::Evaluator(std::shared_ptr<const SearchTask> task)
    : m_task(std::move(task)),
      m_literal(m_task->speakerData.directivity, m_task->air),
      m_array(m_task->array),
      m_segment(measuredSegment(m_task->area, m_task->target)),
      m_reference(fitReference(m_task->target, m_task->points)),
      m_step(m_task->target.lengthM / (m_task->points - 1) * m_task->target.slopeDbPerM),
      m_factors(bandFactors(m_task->speakerData.BandLevel, m_task->choice)),
      m_incoherent(loudestPower(m_task->speakerData, m_task->choice, m_factors))
{
    const auto count = static_cast<std::size_t>(m_task->points);
    m_receivers = lineReceivers(m_segment, m_task->points);
    m_bandPowers.resize(m_factors.size() * kPoints);
    for (std::size_t b = 0; b < m_factors.size(); ++b) {
        const std::size_t band = static_cast<std::size_t>(m_task->choice.bands.from) + b;
        m_rowFactors[BandRow::re(band)] = m_rowFactors[BandRow::im(band)] = m_factors[b];
    }
    m_levels.resize(count);
    m_errorSquares.resize(count);
    m_known.resize(count);
    m_order.resize((count + kPoints - 1) / kPoints);
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
}

void Evaluator::place(const LineArray::Positions& angles)
{
    [[maybe_unused]] const bool set = m_array.GBSetAllAngle(angles);
    m_array.GFACalcCOM();
    std::vector<Source> sources = radiatingSources(m_array);
    m_placed.resize(sources.size());
    for (std::size_t i = 0; i < sources.size(); ++i)
        if (i >= m_sources.size() || sources[i] != m_sources[i])
            m_placed[i] = ++m_places;
    m_sources = std::move(sources);
    const std::array ends = {m_receivers.front(), m_receivers.back()};
    m_running = m_task->kernel->hasRunningSums(m_sources, ends, m_task->choice.bands);
    if (m_running && !m_sums) {
        const std::size_t places = m_order.size() * m_sources.size();
        m_sums = hwy::AllocateAligned<float>(places * kPoints * BandRow::kFloats);
        std::fill_n(m_sums.get(), places * kPoints * BandRow::kFloats, 0.0F);
        m_summed.assign(places, 0);
    }
}

double Evaluator::measureOf(const std::vector<float>& levels) const
{
    return m_task->measure == Measure::FitToLine ? RmsToFitLine(levels, m_reference)
                                                 : RmsSmooth(levels, m_step);
}

std::vector<float> Evaluator::levels(const LevelKernel& kernel)
{
    std::vector<float> all = LineSPL(kernel, m_task->speakerData.BandLevel, m_array, m_segment,
                                     m_task->choice, m_task->points);
    all.resize(static_cast<std::size_t>(m_task->points));
    return all;
}

double Evaluator::measure(const LineArray::Positions& angles)
{
    place(angles);
    return measureOf(levels(m_literal));
}

double Evaluator::fastMeasure(const LineArray::Positions& angles)
{
    place(angles);
    return measureOf(levels(*m_task->kernel));
}

std::size_t Evaluator::blockEnd(std::size_t block) const
{
    return std::min((block + 1) * kPoints, m_receivers.size());
}

void Evaluator::calculateBlock(std::size_t block)
{
    const std::size_t first = block * kPoints;
    const std::size_t count = blockEnd(block) - first;
    std::array<float, kPoints> powers{};
    const std::span used(powers.data(), count);
    if (m_running)
        sumRunningPowers(block, used);
    else
        sumPowers(block, used);
    const float* plane = used.data();
    constexpr float kAsItIs = 1;
    weightedLevels(std::span(&plane, 1), std::span(&kAsItIs, 1),
                   std::span(m_levels).subspan(first, count));
    std::fill_n(m_known.begin() + static_cast<std::ptrdiff_t>(first), count, char{1});
    boundErrors(block, used);
}

void Evaluator::sumPowers(std::size_t block, std::span<float> powers)
{
    std::array<float*, kBands> planes{};
    for (std::size_t b = 0; b < m_factors.size(); ++b)
        planes[b] = m_bandPowers.data() + b * kPoints;
    m_task->kernel->bandPowers(m_sources,
                               std::span(m_receivers).subspan(block * kPoints, powers.size()),
                               m_task->choice.bands, std::span(planes.data(), m_factors.size()));
    for (std::size_t b = 0; b < m_factors.size(); ++b)
        for (std::size_t i = 0; i < powers.size(); ++i)
            powers[i] += m_factors[b] * planes[b][i];
}

void Evaluator::sumRunningPowers(std::size_t block, std::span<float> powers)
{
    const std::size_t boxes = m_sources.size();
    const auto sumsAfter = [&](std::size_t box) {
        return m_sums.get() + (block * boxes + box) * kPoints * BandRow::kFloats;
    };
    if (boxes == 0)
        return;
    std::uint64_t* summed = m_summed.data() + block * boxes;
    std::size_t kept = 0;
    while (kept < boxes && summed[kept] == m_placed[kept])
        ++kept;
    if (kept < boxes) {
        std::array<float*, LineArray::kPositions> after{};
        for (std::size_t box = kept; box < boxes; ++box)
            after[box - kept] = sumsAfter(box);
        m_task->kernel->runningSums(std::span(m_sources).subspan(kept),
                                    std::span(m_receivers).subspan(block * kPoints, powers.size()),
                                    m_task->choice.bands, kept > 0 ? sumsAfter(kept - 1) : nullptr,
                                    std::span(after.data(), boxes - kept));
        std::copy(m_placed.begin(), m_placed.end(), summed);
    }
    const float* row = sumsAfter(boxes - 1);
    for (float& power : powers) {
        constexpr std::size_t kLanes = 16; // independent sums that the compiler puts into vectors
        std::array<float, kLanes> sums{};
        for (std::size_t i = 0; i < BandRow::kFloats; i += kLanes)
            for (std::size_t lane = 0; lane < kLanes; ++lane)
                sums[lane] += m_rowFactors[i + lane] * row[i + lane] * row[i + lane];
        power = std::accumulate(sums.begin(), sums.end(), 0.0F);
        row += BandRow::kFloats;
    }
}

/// The kernel's amplitudes are off by a share of the incoherent sum of the boxes, which is at most
/// that of boxes that all point their loudest direction here from where the nearest one hangs.
void Evaluator::boundErrors(std::size_t block, std::span<const float> powers)
{
    const std::size_t first = block * kPoints;
    const Point& one = m_receivers[first];
    const Point& other = m_receivers[first + powers.size() - 1];
    const Point middle = {(one.x + other.x) / 2, (one.y + other.y) / 2};
    double nearest = std::numeric_limits<double>::infinity();
    for (const Source& source : m_sources) {
        const double dx = source.x - middle.x;
        const double dy = source.y - middle.y;
        nearest = std::min(nearest, dx * dx + dy * dy);
    }
    const double half = std::hypot(one.x - other.x, one.y - other.y) / 2;
    const double distance = std::max(0.1, std::sqrt(nearest) - half);
    const double share = m_task->amplitudeError;
    const auto incoherent =
        static_cast<float>(share * share * m_incoherent * static_cast<double>(m_sources.size()) /
                           (distance * distance));
    // A level is off by 8.69 dB * s / (1 - s) where s is the share of its own amplitude; its square
    // and that of the rounding count twice, so that both together are covered.
    constexpr float kLargestShareSquare = 0.0025F;
    constexpr auto kSquareDb = static_cast<float>(2 * 8.69 * 8.69 / (0.95 * 0.95));
    constexpr auto kRoundingSquare = static_cast<float>(2 * kRoundingDb * kRoundingDb);
    for (std::size_t i = 0; i < powers.size(); ++i) {
        const float square = incoherent / powers[i];
        m_errorSquares[first + i] = square < kLargestShareSquare
                                        ? kSquareDb * square + kRoundingSquare
                                        : std::numeric_limits<float>::infinity();
    }
}

void Evaluator::addStep(std::size_t point, Sums& sums) const
{
    const double distance = static_cast<double>(m_levels[point + 1]) - m_levels[point] - m_step;
    sums.squares += distance * distance;
    // (a + b)^2 is at most 2 a^2 + 2 b^2
    sums.errors += 2 * (static_cast<double>(m_errorSquares[point]) + m_errorSquares[point + 1]);
}

void Evaluator::addBlock(std::size_t block, Sums& sums) const
{
    const std::size_t first = block * kPoints;
    const std::size_t end = blockEnd(block);
    if (m_task->measure == Measure::FitToLine) {
        for (std::size_t i = first; i < end; ++i) {
            const double distance = static_cast<double>(m_levels[i]) - m_reference[i];
            sums.squares += distance * distance;
            sums.errors += m_errorSquares[i];
        }
        return;
    }
    for (std::size_t i = first; i + 1 < end; ++i)
        addStep(i, sums);
    // Steps across blocks, once both sides are known.
    if (first > 0 && m_known[first - 1])
        addStep(first - 1, sums);
    if (end < m_known.size() && m_known[end])
        addStep(end - 1, sums);
}

std::optional<Evaluator::Bounds> Evaluator::measureUpTo(const LineArray::Positions& angles,
                                                        double limit)
{
    place(angles);
    std::fill(m_known.begin(), m_known.end(), char{0});
    const double terms =
        m_task->measure == Measure::FitToLine ? m_task->points : m_task->points - 1;
    const double furthest = limit * std::sqrt(terms);
    Sums sums;
    for (std::size_t i = 0; i < m_order.size(); ++i) {
        calculateBlock(m_order[i]);
        addBlock(m_order[i], sums);
        // The roots are lengths of vectors: an error of length e moves the other by e at most.
        if (std::sqrt(sums.squares) - std::sqrt(sums.errors) > furthest) {
            std::rotate(m_order.begin(), m_order.begin() + static_cast<std::ptrdiff_t>(i),
                        m_order.begin() + static_cast<std::ptrdiff_t>(i) + 1);
            return std::nullopt;
        }
    }
    const double length = std::sqrt(sums.squares);
    const double error = std::sqrt(sums.errors);
    return Bounds{(length - error) / std::sqrt(terms), (length + error) / std::sqrt(terms)};
}

} // namespace orva
