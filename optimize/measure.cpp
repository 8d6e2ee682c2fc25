#include "optimize/measure.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace orva {

FitLineTarget FitLineTarget::wholeArea(const Segment& area)
{
    return {0, area.lengthM, 0, 0};
}

Segment measuredSegment(const Segment& area, const FitLineTarget& target)
{
    // in 32 bits, as areas are kept
    const auto kept = [](Point point) {
        return Point{static_cast<float>(point.x), static_cast<float>(point.y)};
    };
    return {kept(area.at(target.startM)), kept(area.at(target.startM + target.lengthM)),
            area.angleDeg, static_cast<float>(std::max(0.001, target.lengthM))};
}

std::vector<double> fitReference(const FitLineTarget& target, int points)
{
    assert(points >= 2);
    const double step = target.lengthM / (points - 1);
    std::vector<double> reference(static_cast<std::size_t>(points));
    for (std::size_t i = 0; i < reference.size(); ++i)
        reference[i] =
            static_cast<float>(static_cast<double>(i) * step * target.slopeDbPerM + target.levelDb);
    return reference;
}

double RmsToFitLine(std::span<const float> levels, std::span<const double> reference)
{
    assert(levels.size() == reference.size());
    double sum = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const double distance = static_cast<double>(levels[i]) - reference[i];
        sum += distance * distance;
    }
    return std::sqrt(sum / static_cast<double>(levels.size()));
}

double RmsSmooth(std::span<const float> levels, double step)
{
    assert(levels.size() >= 2);
    double sum = 0;
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        const double distance = static_cast<double>(levels[i + 1]) - levels[i] - step;
        sum += distance * distance;
    }
    return std::sqrt(sum / static_cast<double>(levels.size() - 1));
}

double RmsEven(std::span<const float> levels, std::span<const double> wanted)
{
    const auto count = static_cast<double>(levels.size());
    const auto at = [&](std::size_t i) { return static_cast<double>(levels[i]) - wanted[i]; };
    double sum = 0;
    for (std::size_t i = 0; i < levels.size(); ++i)
        sum += at(i);
    double squares = 0;
    for (std::size_t i = 0; i < levels.size(); ++i)
        squares += (at(i) - sum / count) * (at(i) - sum / count);
    return std::sqrt(squares / count);
}

namespace {

using Places = std::vector<std::size_t>;
using Samples = std::vector<std::vector<double>>;

// Fit to line: each term is the distance of a level from the wanted one.

double lineSum(const std::vector<double>& distances, const Places& known)
{
    double sum = 0;
    for (const std::size_t point : known)
        sum += distances[point] * distances[point];
    return sum;
}

double lineErrors(const std::vector<double>& squares, const Places& known)
{
    double sum = 0;
    for (const std::size_t point : known)
        sum += squares[point];
    return sum;
}

void lineGrow(const Samples& samples, const Places&, Places::const_iterator, std::size_t point,
              std::vector<double>& sums)
{
    for (std::size_t s = 0; s < samples.size(); ++s)
        sums[s] += samples[s][point] * samples[s][point];
}

// Even: distances from the mean of all; from that of some of them they are never larger.

std::vector<double> evenWanted(const FitLineTarget&, int points)
{
    return std::vector<double>(static_cast<std::size_t>(points), 0.0);
}

double evenSum(const std::vector<double>& distances, const Places& known)
{
    double sum = 0;
    double squares = 0;
    for (const std::size_t point : known) {
        sum += distances[point];
        squares += distances[point] * distances[point];
    }
    return std::max(0.0, squares - sum * sum / static_cast<double>(known.size()));
}

// Smooth area: each term is the change from point to point. Over a gap of n steps it counts as if
// it were spread evenly, which is the least that its steps can come to.

double gap(const std::vector<double>& distances, std::size_t from, std::size_t to)
{
    const double change = distances[to] - distances[from];
    return change * change / static_cast<double>(to - from);
}

std::vector<double> smoothWanted(const FitLineTarget& target, int points)
{
    const double step = target.lengthM / (points - 1) * target.slopeDbPerM;
    std::vector<double> wanted(static_cast<std::size_t>(points));
    for (std::size_t i = 0; i < wanted.size(); ++i)
        wanted[i] = static_cast<double>(i) * step;
    return wanted;
}

double smoothMeasure(std::span<const float> levels, std::span<const double> wanted)
{
    return RmsSmooth(levels, wanted[1]);
}

double smoothSum(const std::vector<double>& distances, const Places& known)
{
    double sum = 0;
    for (std::size_t i = 0; i + 1 < known.size(); ++i)
        sum += gap(distances, known[i], known[i + 1]);
    return sum;
}

double smoothErrors(const std::vector<double>& squares, const Places& known)
{
    double sum = 0;
    for (std::size_t i = 0; i + 1 < known.size(); ++i) // (a + b)^2 is at most 2 a^2 + 2 b^2
        sum += 2 * (squares[known[i]] + squares[known[i + 1]]) /
               static_cast<double>(known[i + 1] - known[i]);
    return sum;
}

double smoothGrowth(const std::vector<double>& distances, const Places& known,
                    Places::const_iterator right, std::size_t point)
{
    double sum = 0;
    if (right != known.begin())
        sum += gap(distances, *(right - 1), point);
    if (right != known.end())
        sum += gap(distances, point, *right);
    if (right != known.begin() && right != known.end())
        sum -= gap(distances, *(right - 1), *right);
    return sum;
}

void smoothGrow(const Samples& samples, const Places& known, Places::const_iterator right,
                std::size_t point, std::vector<double>& sums)
{
    for (std::size_t s = 0; s < samples.size(); ++s)
        sums[s] += smoothGrowth(samples[s], known, right, point);
}

} // namespace

std::span<const MeasureRecord> allMeasures()
{
    static constexpr MeasureRecord kAll[] = {
        {"line", Text::FitToLine, fitReference, RmsToFitLine, [](int points) { return points; },
         lineSum, lineErrors, lineGrow},
        {"smooth", Text::SmoothArea, smoothWanted, smoothMeasure,
         [](int points) { return points - 1; }, smoothSum, smoothErrors, smoothGrow},
        {"even", Text::EvenMeasure, evenWanted, RmsEven, [](int points) { return points; }, evenSum,
         lineErrors, nullptr}};
    return kAll;
}

const MeasureRecord& recordOf(Measure measure)
{
    return allMeasures()[static_cast<std::size_t>(measure)];
}

} // namespace orva
