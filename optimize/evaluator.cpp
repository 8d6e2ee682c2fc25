#include "optimize/evaluator.h"

#include "engine/levels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace orva {

namespace {

/// Rounding of two levels to 32 bits and of a logarithm in 32 bits.
constexpr double kRoundingDb = 4e-5;

double loudestPower(const SpeakerData& data, const LevelChoice& choice,
                    std::span<const float> factors)
{
    double sum = 0;
    for (int b = choice.bands.from; b <= choice.bands.to; ++b) {
        const auto& row = data.directivity.DirMagnitude[static_cast<std::size_t>(b)];
        const float leastAttenuation = *std::min_element(row.begin(), row.end());
        sum += static_cast<double>(factors[static_cast<std::size_t>(b - choice.bands.from)]) *
               powerOfLevel(-static_cast<double>(leastAttenuation));
    }
    return sum;
}

} // namespace

Evaluator::Evaluator(std::shared_ptr<const SearchTask> task,
                     std::shared_ptr<const PointOrder> order)
    : m_task(std::move(task)),
      m_order(std::move(order)),
      m_measure(recordOf(m_task->measure)),
      m_wanted(m_measure.wanted(m_task->target, m_task->points)),
      m_literal(m_task->speakerData.directivity, m_task->air),
      m_array(m_task->array),
      m_segment(measuredSegment(m_task->area, m_task->target)),
      m_factors(bandFactors(m_task->speakerData.BandLevel, m_task->choice)),
      m_loudest(loudestPower(m_task->speakerData, m_task->choice, m_factors))
{
    const auto count = static_cast<std::size_t>(m_task->points);
    if (!m_order)
        m_order = std::make_shared<PointOrder>(PointOrder::coarseToFine(count));
    const std::vector<Point> line = lineReceivers(m_segment, m_task->points);
    m_ends = {line.front(), line.back()};
    m_receivers.reserve(count);
    for (const std::size_t point : m_order->points)
        m_receivers.push_back(line[point]);
    m_bandPowers.resize(m_factors.size() * kGroup);
    for (std::size_t b = 0; b < m_factors.size(); ++b) {
        const std::size_t band = static_cast<std::size_t>(m_task->choice.bands.from) + b;
        m_rowFactors[BandRow::re(band)] = m_rowFactors[BandRow::im(band)] = m_factors[b];
    }
    m_distances.resize(count);
    m_errorSquares.resize(count);
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
    constexpr double kFar = std::numeric_limits<double>::infinity();
    m_low = {kFar, kFar};
    m_high = {-kFar, -kFar};
    for (const Source& source : m_sources) {
        m_low = {std::min(m_low.x, source.x), std::min(m_low.y, source.y)};
        m_high = {std::max(m_high.x, source.x), std::max(m_high.y, source.y)};
    }
}

void Evaluator::prepareSums()
{
    m_running = m_task->kernel->hasRunningSums(m_sources, m_ends, m_task->choice.bands);
    if (!m_running || m_sums)
        return;
    const std::size_t groups = (m_receivers.size() + kGroup - 1) / kGroup;
    const std::size_t places = groups * m_sources.size();
    m_sums = hwy::AllocateAligned<float>(places * kGroup * BandRow::kFloats);
    std::fill_n(m_sums.get(), places * kGroup * BandRow::kFloats, 0.0F);
    m_summed.assign(places, 0);
}

double Evaluator::measureOf(const std::vector<float>& levels) const
{
    const double rms = m_measure.of(levels, m_wanted);
    return std::isfinite(rms) ? rms : kNoMeasure;
}

std::optional<std::vector<float>> Evaluator::levels(const LevelKernel& kernel,
                                                    const Progress& progress)
{
    return lineLevels(kernel, m_task->speakerData.BandLevel, m_array, m_segment, m_task->choice,
                      m_task->points, progress);
}

double Evaluator::measure(const LineArray::Positions& angles)
{
    return *measure(angles, [] { return false; });
}

std::optional<double> Evaluator::measure(const LineArray::Positions& angles,
                                         const std::function<bool()>& stop)
{
    place(angles);
    const auto all = levels(m_literal, [&](int, int) { return !stop(); });
    return all ? std::optional(measureOf(*all)) : std::nullopt;
}

double Evaluator::fastMeasure(const LineArray::Positions& angles)
{
    place(angles);
    return measureOf(*levels(*m_task->kernel, {}));
}

std::vector<double> Evaluator::distances(const LineArray::Positions& angles)
{
    place(angles);
    const std::vector<float> all = *levels(*m_task->kernel, {});
    std::vector<double> result(all.begin(), all.end());
    std::transform(result.begin(), result.end(), m_wanted.begin(), result.begin(), std::minus());
    return result;
}

void Evaluator::calculateGroup(std::size_t group)
{
    ++m_groupsCalculated;
    const std::size_t first = group * kGroup;
    const std::size_t count = std::min(kGroup, m_receivers.size() - first);
    constexpr std::size_t kWhole = 16; // a whole vector on any machine
    std::array<float, std::max(kWhole, kGroup)> powers{};
    std::array<float, std::max(kWhole, kGroup)> levels{};
    const std::span used(powers.data(), count);
    if (m_running)
        sumRunningPowers(group, used);
    else
        sumPowers(group, used);
    const float* plane = powers.data();
    constexpr float kAsItIs = 1;
    weightedLevels(std::span(&plane, 1), std::span(&kAsItIs, 1), levels);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = m_order->points[first + i];
        m_distances[point] = static_cast<double>(levels[i]) - m_wanted[point];
        m_errorSquares[point] = errorSquare(m_receivers[first + i], powers[i]);
    }
}

void Evaluator::sumPowers(std::size_t group, std::span<float> powers)
{
    std::array<float*, kBands> planes{};
    for (std::size_t b = 0; b < m_factors.size(); ++b)
        planes[b] = m_bandPowers.data() + b * kGroup;
    m_task->kernel->bandPowers(m_sources,
                               std::span(m_receivers).subspan(group * kGroup, powers.size()),
                               m_task->choice.bands, std::span(planes.data(), m_factors.size()));
    for (std::size_t b = 0; b < m_factors.size(); ++b)
        for (std::size_t i = 0; i < powers.size(); ++i)
            powers[i] += m_factors[b] * planes[b][i];
}

void Evaluator::sumRunningPowers(std::size_t group, std::span<float> powers)
{
    const std::size_t boxes = m_sources.size();
    const auto sumsAfter = [&](std::size_t box) {
        return m_sums.get() + (group * boxes + box) * kGroup * BandRow::kFloats;
    };
    if (boxes == 0)
        return;
    std::uint64_t* summed = m_summed.data() + group * boxes;
    std::size_t kept = 0;
    while (kept < boxes && summed[kept] == m_placed[kept])
        ++kept;
    if (kept < boxes) {
        std::array<float*, LineArray::kPositions> after{};
        for (std::size_t box = kept; box < boxes; ++box)
            after[box - kept] = sumsAfter(box);
        m_task->kernel->runningSums(std::span(m_sources).subspan(kept),
                                    std::span(m_receivers).subspan(group * kGroup, powers.size()),
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
/// that of boxes that all point their loudest direction here from where the nearest one can hang.
double Evaluator::errorSquare(const Point& receiver, float power) const
{
    const double dx = std::max({0.0, m_low.x - receiver.x, receiver.x - m_high.x});
    const double dy = std::max({0.0, m_low.y - receiver.y, receiver.y - m_high.y});
    const double share = m_task->amplitudeError;
    const double incoherent = share * share * m_loudest * static_cast<double>(m_sources.size()) /
                              std::max(kNearestM * kNearestM, dx * dx + dy * dy);
    // A level is off by 8.69 dB * s / (1 - s) where s is the share of its own amplitude; its square
    // and that of the rounding count twice, so that both together are covered.
    constexpr double kLargestShareSquare = 0.0025;
    constexpr double kSquareDb = 2 * 8.69 * 8.69 / (0.95 * 0.95);
    constexpr double kRoundingSquare = 2 * kRoundingDb * kRoundingDb;
    const double square = incoherent / static_cast<double>(power);
    return square < kLargestShareSquare ? kSquareDb * square + kRoundingSquare
                                        : std::numeric_limits<double>::infinity();
}

std::optional<Evaluator::Bounds> Evaluator::measureUpTo(const LineArray::Positions& angles,
                                                        double limit)
{
    place(angles);
    prepareSums();
    const double terms = m_measure.terms(m_task->points);
    const double furthest = limit * std::sqrt(terms);
    double length = 0;
    double error = 0;
    std::size_t done = 0;
    for (const PointOrder::Stage& stage : m_order->stages) {
        for (; done < stage.end; done += kGroup)
            calculateGroup(done / kGroup);
        // The roots are lengths of vectors: an error of length e moves the other by e at most.
        length = std::sqrt(m_measure.sum(m_distances, stage.known));
        error = std::sqrt(m_measure.errors(m_errorSquares, stage.known));
        if (length - error > furthest)
            return std::nullopt;
    }
    return Bounds{(length - error) / std::sqrt(terms), (length + error) / std::sqrt(terms)};
}

} // namespace orva
