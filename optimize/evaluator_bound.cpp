// What the levels of many configurations have in common.
#include "engine/levels.h"
#include "model/vector_math.h"
#include "optimize/evaluator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace orva {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
/// Rounding of levels and of what is summed in 32 bits, dB.
constexpr double kRoundingDb = 2e-4;
/// Nearer receivers are not looked at.
constexpr double kNearestBoundM = 0.5;
/// From this share of the points on it is given up where they tell less than so much of theirs.
constexpr double kEnough = 0.2;
constexpr double kHope = 0.35;
constexpr double kNepersPerDb = std::numbers::ln10 / 20;

} // namespace

double Evaluator::leastMeasure(Configuration configuration, const CandidateSet& set,
                               std::size_t open, double limit)
{
    if (!m_balls || m_task->measure == Measure::SmoothArea)
        return 0;
    const int first = set.range().last + 1 - static_cast<int>(open);
    std::array<double, LineArray::kPositions> degrees{};
    for (std::size_t i = 0; i < open; ++i) {
        const auto [low, high] = set.boundsOf(first + static_cast<int>(i));
        const auto middle = static_cast<std::int16_t>((low + high) / 2);
        configuration.angles[static_cast<std::size_t>(first) + i + 1] = middle;
        const double at = LineArray::splayAngle(middle);
        degrees[i] = std::max(LineArray::splayAngle(high) - at, at - LineArray::splayAngle(low));
    }
    place(configuration);
    prepareSums();
    const auto play = m_running && !m_sources.empty()
                          ? m_hung.play(first, std::span(degrees.data(), open))
                          : std::nullopt;
    if (!play || !findMoving(*play))
        return 0;
    double least = 0;
    std::size_t done = 0;
    for (const PointOrder::Stage& stage : m_order->stages) {
        for (; done < stage.end; done += kGroup)
            for (std::size_t part = 0; part < m_parts.size(); ++part)
                calculateRanges(part, done / kGroup);
        least = std::sqrt(leastSquare(stage.known, limit * limit));
        // Where some of the points tell little, the others will not tell enough.
        const double share = static_cast<double>(done) / m_task->points;
        if (least > limit || (share >= kEnough && least * least < kHope * share * limit * limit))
            break;
    }
    return least;
}

/// False where a box may get too far.
bool Evaluator::findMoving(const std::vector<HungArray::Play>& play)
{
    m_moving.clear();
    const BandConstants& constants = bandConstants();
    for (std::size_t i = 0; i < m_radiating.size(); ++i) {
        const auto& [move, turn] = play[m_radiating[i]];
        if (turn == 0)
            continue;
        const Point at{m_sources[i].x, m_sources[i].y};
        double nearest = kInfinite;
        for (std::size_t part = 0; part < m_parts.size(); ++part)
            nearest =
                std::min(nearest, Segment{m_ends[2 * part], m_ends[2 * part + 1]}.distanceTo(at));
        nearest = std::max(nearest, move + kNearestBoundM);
        constexpr double kBearingDeg = 0.05; // those of the receivers, in 32 bits
        const double turned =
            turn + kBearingDeg + std::asin(move / nearest) / static_cast<double>(kRadiansPerDegree);
        const AmplitudeBall* ball = m_balls->within(turned);
        if (!ball)
            return false;
        Moving moving{m_sources[i], move, ball, {}};
        for (std::size_t band = 0; band < kBands; ++band) {
            const double waves =
                static_cast<double>(m_task->air.WaveFactor) * constants.BandCentre[band] * move;
            const double absorbed = -m_task->air.Absorption[band] * kNepersPerDb * move;
            if (absorbed < 0)
                return false;
            moving.phase[band] = static_cast<float>(std::min(2.0, waves) + absorbed);
        }
        m_moving.push_back(moving);
    }
    return true;
}

namespace {

/// To a hundredth of a degree; 0 to 360.
double bearingDeg(double x, double y)
{
    const double ax = std::abs(x);
    const double ay = std::abs(y);
    const double t = std::min(ax, ay) / std::max({ax, ay, 1e-30});
    const double u = t * t;
    double angle =
        t * (0.99997726 +
             u * (-0.33262347 +
                  u * (0.19354346 + u * (-0.11643287 + u * (0.05265332 - u * 0.01172120)))));
    angle = ay > ax ? std::numbers::pi / 2 - angle : angle;
    angle = x < 0 ? std::numbers::pi - angle : angle;
    return (y < 0 ? -angle : angle) * (180 / std::numbers::pi);
}

} // namespace

void Evaluator::calculateRanges(std::size_t number, std::size_t group)
{
    ++m_groupsCalculated;
    Part& part = m_parts[number];
    const std::size_t first = group * kGroup;
    const std::size_t count = std::min(kGroup, part.receivers.size() - first);
    const auto receivers = std::span<const Point>(part.receivers).subspan(first, count);
    const float* rows = summedRows(number * groupsPerPart() + group, receivers);
    m_ballsAt.resize(count * m_moving.size());
    std::array<bool, kGroup> known{};
    BallAt* ball = m_ballsAt.data();
    for (std::size_t i = 0; i < count; ++i) {
        known[i] = true;
        for (const Moving& box : m_moving) {
            const double dx = receivers[i].x - box.source.x;
            const double dy = receivers[i].y - box.source.y;
            double least = std::sqrt(dx * dx + dy * dy) - box.moveM;
            if (least < kNearestBoundM) {
                known[i] = false;
                least = kNearestBoundM;
            }
            double direction = bearingDeg(dx, -dy) + box.source.angleDeg;
            direction -= 360 * std::floor(direction / 360);
            *ball++ = {&box.ball->at(direction), box.phase.data(), static_cast<float>(1 / least),
                       static_cast<float>(box.moveM / least)};
        }
    }
    std::array<float, 2 * kGroup> powers{};
    std::array<float, 2 * kGroup> levels{};
    powerRanges(rows, m_ballsAt, m_moving.size(), m_laneFactors.data(),
                std::span(powers.data(), count), std::span(powers.data() + kGroup, count));
    for (std::size_t i = 0; i < count; ++i) {
        const double off = std::sqrt(amplitudeErrorSquare(receivers[i]));
        const double least = std::max(0.0, std::sqrt(static_cast<double>(powers[i])) - off);
        const double most = std::sqrt(static_cast<double>(powers[kGroup + i])) + off;
        powers[i] = known[i] ? static_cast<float>(least * least) : 0;
        powers[kGroup + i] =
            known[i] ? static_cast<float>(most * most) : std::numeric_limits<float>::infinity();
    }
    const float* plane = powers.data();
    constexpr float kAsItIs = 1;
    weightedLevels(std::span(&plane, 1), std::span(&kAsItIs, 1), levels);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = m_order->points[first + i];
        part.lows[point] = static_cast<double>(levels[i]) - part.wanted[point] - kRoundingDb;
        part.highs[point] =
            static_cast<double>(levels[kGroup + i]) - part.wanted[point] + kRoundingDb;
    }
}

/// What the measure's square comes to at least, as far as the known points tell; not more exactly
/// than whether it is above `limit`.
double Evaluator::leastSquare(const std::vector<std::size_t>& known, double limit)
{
    struct Off {
        double square = 0;
        double sum = 0;
        double weight = 0; ///< of those that are off at all
    };
    const auto offFrom = [&](double mean) {
        Off off;
        for (const Part& part : m_parts) {
            Off own;
            for (const std::size_t point : known) {
                const double away = mean - std::clamp(mean, part.lows[point], part.highs[point]);
                own.square += away * away;
                own.sum += away;
                own.weight += away != 0 ? 1 : 0;
            }
            const double each = part.share / m_task->points;
            off = {off.square + each * own.square, off.sum + each * own.sum,
                   off.weight + each * own.weight};
        }
        return off;
    };
    if (m_task->measure != Measure::Even)
        return offFrom(0).square;
    // A convex function of the mean. Its least value is at most that at any mean, and at least
    // that of the tangent there; it lies between the least high and the highest low.
    double lowest = kInfinite;
    double highest = -kInfinite;
    for (const Part& part : m_parts)
        for (const std::size_t point : known) {
            lowest = std::min(lowest, part.highs[point]);
            highest = std::max(highest, part.lows[point]);
        }
    if (!(lowest < highest) || !std::isfinite(lowest))
        return 0; // all ranges have some level in common
    m_mean = std::clamp(m_mean, lowest, highest);
    double least = 0;
    constexpr int kSteps = 12;
    for (int step = 0; step < kSteps; ++step) {
        const Off off = offFrom(m_mean);
        const double farthest = off.sum > 0 ? m_mean - lowest : highest - m_mean;
        least = std::max(least, off.square - 2 * std::abs(off.sum) * farthest);
        constexpr double kClose = 1e-3;
        if (least > limit || off.square <= limit || off.square - least < kClose * off.square)
            break;
        m_mean = std::clamp(m_mean - off.sum / off.weight, lowest, highest);
    }
    return least;
}

} // namespace orva
