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
                     std::shared_ptr<const PointOrder> order,
                     std::shared_ptr<const AmplitudeBalls> balls)
    : m_task(std::move(task)),
      m_order(std::move(order)),
      m_measure(recordOf(m_task->measure)),
      m_literal(m_task->speakerData.directivity, m_task->air),
      m_hung(m_task->array),
      m_factors(bandFactors(m_task->speakerData.BandLevel, m_task->choice)),
      m_loudest(loudestPower(m_task->speakerData, m_task->choice, m_factors)),
      m_balls(std::move(balls))
{
    if (!m_order)
        m_order = std::make_shared<PointOrder>(
            PointOrder::coarseToFine(static_cast<std::size_t>(m_task->points)));
    double weights = m_task->weight;
    for (const SearchArea& other : m_task->otherAreas)
        weights += other.weight;
    addPart(m_task->area, m_task->target, m_task->weight / weights);
    for (const SearchArea& other : m_task->otherAreas)
        addPart(other.area, other.target, other.weight / weights);
    wantByDistance();
    m_stays = !array().GBGetMounting() || !array().GBGetAngleOrPin();
    for (int i = 0; i < array().boxCount(); ++i)
        if (radiates(array(), i))
            m_radiating.push_back(static_cast<std::size_t>(i));
    m_bandPowers.resize(m_factors.size() * kGroup);
    for (std::size_t b = 0; b < m_factors.size(); ++b) {
        const std::size_t band = static_cast<std::size_t>(m_task->choice.bands.from) + b;
        m_rowFactors[BandRow::re(band)] = m_rowFactors[BandRow::im(band)] = m_factors[b];
        m_laneFactors[band] = m_factors[b];
    }
}

void Evaluator::addPart(const Segment& area, const FitLineTarget& target, double share)
{
    Part part{measuredSegment(area, target),
              share,
              m_measure.wanted(target, m_task->points),
              {},
              {},
              {},
              {},
              {},
              {}};
    part.line = lineReceivers(part.segment, m_task->points);
    m_ends.insert(m_ends.end(), {part.line.front(), part.line.back()});
    for (const std::size_t point : m_order->points)
        part.receivers.push_back(part.line[point]);
    part.distances.resize(part.line.size());
    part.errorSquares.resize(part.line.size());
    part.lows.resize(part.line.size());
    part.highs.resize(part.line.size());
    m_parts.push_back(std::move(part));
}

/// Even: what is wanted changes with every doubling of the distance from the pick point.
void Evaluator::wantByDistance()
{
    if (m_task->measure != Measure::Even || m_task->perDoublingDb == 0)
        return;
    const FloatPair pick = array().GFAGetCradleCoord();
    for (Part& part : m_parts)
        for (std::size_t i = 0; i < part.line.size(); ++i) {
            const double distance = std::hypot(part.line[i].x - pick[0], part.line[i].y - pick[1]);
            part.wanted[i] = m_task->perDoublingDb * std::log2(std::max(distance, kNearestM));
        }
}

void Evaluator::place(const Configuration& configuration)
{
    if (configuration.heightM && array().GFAGetCradleCoord()[1] != *configuration.heightM) {
        m_hung.hoist(*configuration.heightM);
        wantByDistance();
    }
    m_hung.turn(configuration.angles);
    m_placed.resize(m_radiating.size());
    m_sources.resize(m_radiating.size());
    constexpr double kFar = std::numeric_limits<double>::infinity();
    m_low = {kFar, kFar};
    m_high = {-kFar, -kFar};
    for (std::size_t i = 0; i < m_radiating.size(); ++i) {
        const LineArray::BoxAxis& axis = m_hung.axes()[m_radiating[i]];
        const Source source{axis.from.x, axis.from.y, axis.angleDeg};
        if (source != m_sources[i] || m_placed[i] == 0) {
            m_sources[i] = source;
            m_placed[i] = ++m_places;
        }
        m_low = {std::min(m_low.x, source.x), std::min(m_low.y, source.y)};
        m_high = {std::max(m_high.x, source.x), std::max(m_high.y, source.y)};
    }
}

std::size_t Evaluator::groupsPerPart() const
{
    return (static_cast<std::size_t>(m_task->points) + kGroup - 1) / kGroup;
}

void Evaluator::prepareSums()
{
    m_running = m_task->kernel->hasRunningSums(m_sources, m_ends, m_task->choice.bands);
    if (!m_running || m_sums)
        return;
    const std::size_t places = m_parts.size() * groupsPerPart() * m_sources.size();
    m_sums = allocateRows(places * kGroup);
    m_summed.assign(places, 0);
}

std::optional<std::vector<float>> Evaluator::levels(const Part& part, const LevelKernel& kernel,
                                                    const Progress& progress)
{
    return lineLevels(kernel, m_task->speakerData.BandLevel, array(), part.segment, m_task->choice,
                      m_task->points, progress);
}

/// Of several areas: the root of the weighted mean of the squares; of Even against the mean of all.
std::optional<double> Evaluator::measureBy(const LevelKernel& kernel, const Progress& progress)
{
    std::vector<std::vector<float>> all;
    for (const Part& part : m_parts) {
        auto levels = this->levels(part, kernel, progress);
        if (!levels)
            return std::nullopt;
        all.push_back(std::move(*levels));
    }
    double rms = 0;
    if (m_parts.size() == 1)
        rms = m_measure.of(all.front(), m_parts.front().wanted);
    else if (m_task->measure == Measure::Even)
        rms = joinedEven(all);
    else {
        for (std::size_t i = 0; i < m_parts.size(); ++i) {
            const double own = m_measure.of(all[i], m_parts[i].wanted);
            rms += m_parts[i].share * own * own;
        }
        rms = std::sqrt(rms);
    }
    return std::isfinite(rms) ? rms : kNoMeasure;
}

double Evaluator::joinedEven(const std::vector<std::vector<float>>& levels) const
{
    const auto over = [&](const std::function<double(double)>& term) {
        double sum = 0;
        for (std::size_t part = 0; part < m_parts.size(); ++part) {
            double own = 0;
            for (std::size_t i = 0; i < levels[part].size(); ++i)
                own += term(static_cast<double>(levels[part][i]) - m_parts[part].wanted[i]);
            sum += m_parts[part].share * own / static_cast<double>(levels[part].size());
        }
        return sum;
    };
    const double mean = over([](double v) { return v; });
    return std::sqrt(over([mean](double v) { return (v - mean) * (v - mean); }));
}

double Evaluator::measure(const Configuration& configuration)
{
    return *measure(configuration, [] { return false; });
}

std::optional<double> Evaluator::measure(const Configuration& configuration,
                                         const std::function<bool()>& stop)
{
    place(configuration);
    return measureBy(m_literal, [&](int, int) { return !stop(); });
}

std::vector<double> Evaluator::distances(const Configuration& configuration)
{
    place(configuration);
    const Part& part = m_parts.front();
    const std::vector<float> all = *levels(part, *m_task->kernel, {});
    std::vector<double> result(all.begin(), all.end());
    std::transform(result.begin(), result.end(), part.wanted.begin(), result.begin(), std::minus());
    return result;
}

void Evaluator::calculateGroup(std::size_t number, std::size_t group)
{
    ++m_groupsCalculated;
    Part& part = m_parts[number];
    const std::size_t first = group * kGroup;
    const std::size_t count = std::min(kGroup, part.receivers.size() - first);
    constexpr std::size_t kWhole = 16; // a whole vector on any machine
    std::array<float, std::max(kWhole, kGroup)> powers{};
    std::array<float, std::max(kWhole, kGroup)> levels{};
    const std::span used(powers.data(), count);
    const auto receivers = std::span<const Point>(part.receivers).subspan(first, count);
    if (m_running)
        sumRunningPowers(number * groupsPerPart() + group, receivers, used);
    else
        sumPowers(receivers, used);
    const float* plane = powers.data();
    constexpr float kAsItIs = 1;
    weightedLevels(std::span(&plane, 1), std::span(&kAsItIs, 1), levels);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = m_order->points[first + i];
        part.distances[point] = static_cast<double>(levels[i]) - part.wanted[point];
        part.errorSquares[point] = errorSquare(receivers[i], powers[i]);
    }
}

void Evaluator::sumPowers(std::span<const Point> receivers, std::span<float> powers)
{
    std::array<float*, kBands> planes{};
    for (std::size_t b = 0; b < m_factors.size(); ++b)
        planes[b] = m_bandPowers.data() + b * kGroup;
    m_task->kernel->bandPowers(m_sources, receivers, m_task->choice.bands,
                               std::span(planes.data(), m_factors.size()));
    for (std::size_t b = 0; b < m_factors.size(); ++b)
        for (std::size_t i = 0; i < powers.size(); ++i)
            powers[i] += m_factors[b] * planes[b][i];
}

/// The complex sums of all boxes at each receiver.
const float* Evaluator::summedRows(std::size_t group, std::span<const Point> receivers)
{
    const std::size_t boxes = m_sources.size();
    const auto sumsAfter = [&](std::size_t box) {
        return m_sums.get() + (group * boxes + box) * kGroup * BandRow::kFloats;
    };
    std::uint64_t* summed = m_summed.data() + group * boxes;
    std::size_t kept = 0;
    while (kept < boxes && summed[kept] == m_placed[kept])
        ++kept;
    if (kept < boxes) {
        std::array<float*, LineArray::kPositions> after{};
        for (std::size_t box = m_stays ? kept : boxes - 1; box < boxes; ++box)
            after[box - kept] = sumsAfter(box);
        m_task->kernel->runningSums(std::span(m_sources).subspan(kept), receivers,
                                    m_task->choice.bands, kept > 0 ? sumsAfter(kept - 1) : nullptr,
                                    std::span(after.data(), boxes - kept));
        if (m_stays)
            std::copy(m_placed.begin(), m_placed.end(), summed);
    }
    return sumsAfter(boxes - 1);
}

void Evaluator::sumRunningPowers(std::size_t group, std::span<const Point> receivers,
                                 std::span<float> powers)
{
    if (m_sources.empty())
        return;
    const float* row = summedRows(group, receivers);
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
double Evaluator::amplitudeErrorSquare(const Point& receiver) const
{
    const double dx = std::max({0.0, m_low.x - receiver.x, receiver.x - m_high.x});
    const double dy = std::max({0.0, m_low.y - receiver.y, receiver.y - m_high.y});
    const double share = m_task->amplitudeError;
    return share * share * m_loudest * static_cast<double>(m_sources.size()) /
           std::max(kNearestM * kNearestM, dx * dx + dy * dy);
}

double Evaluator::errorSquare(const Point& receiver, float power) const
{
    // A level is off by 8.69 dB * s / (1 - s) where s is the share of its own amplitude; its square
    // and that of the rounding count twice, so that both together are covered.
    constexpr double kLargestShareSquare = 0.0025;
    constexpr double kSquareDb = 2 * 8.69 * 8.69 / (0.95 * 0.95);
    constexpr double kRoundingSquare = 2 * kRoundingDb * kRoundingDb;
    const double square = amplitudeErrorSquare(receiver) / static_cast<double>(power);
    return square < kLargestShareSquare ? kSquareDb * square + kRoundingSquare
                                        : std::numeric_limits<double>::infinity();
}

/// The square of the measure as far as the known points of each area tell: never above the whole.
double Evaluator::knownSquare(const std::vector<std::size_t>& known) const
{
    double square = 0;
    if (m_task->measure != Measure::Even || m_parts.size() == 1) {
        const double terms = m_measure.terms(m_task->points);
        for (const Part& part : m_parts)
            square += part.share / terms * m_measure.sum(part.distances, known);
        return square;
    }
    double weight = 0;
    double mean = 0;
    for (const Part& part : m_parts) {
        const double each = part.share / m_task->points;
        for (const std::size_t point : known) {
            weight += each;
            mean += each * part.distances[point];
            square += each * part.distances[point] * part.distances[point];
        }
    }
    return std::max(0.0, square - mean * mean / weight);
}

/// What errors of the levels can come to in its root's square.
double Evaluator::knownError(const std::vector<std::size_t>& known) const
{
    double square = 0;
    for (const Part& part : m_parts)
        square += part.share / m_measure.terms(m_task->points) *
                  m_measure.errors(part.errorSquares, known);
    return square;
}

std::optional<Evaluator::Bounds> Evaluator::measureUpTo(const Configuration& configuration,
                                                        double limit)
{
    place(configuration);
    prepareSums();
    double length = 0;
    double error = 0;
    std::size_t done = 0;
    for (const PointOrder::Stage& stage : m_order->stages) {
        for (; done < stage.end; done += kGroup)
            for (std::size_t part = 0; part < m_parts.size(); ++part)
                calculateGroup(part, done / kGroup);
        // The roots are lengths of vectors: an error of length e moves the other by e at most.
        length = std::sqrt(knownSquare(stage.known));
        error = std::sqrt(knownError(stage.known));
        if (length - error > limit)
            return std::nullopt;
    }
    return Bounds{length - error, length + error};
}

} // namespace orva
