#pragma once

#include "lang/text_ids.h"
#include "model/segment.h"

#include <limits>
#include <span>
#include <string_view>
#include <vector>

namespace orva {

/// Stands for the measure of levels of which one is minus infinity: worse than any other.
constexpr double kNoMeasure = std::numeric_limits<double>::max();

/// The part of an audience area that is measured, and the levels wanted there: a straight line.
struct FitLineTarget {
    double startM = 0; ///< from the area's start, along it
    double lengthM = 0;
    double slopeDbPerM = 0;
    double levelDb = 0; ///< wanted at the start; absolute

    /// The whole area, 0 dB, level.
    static FitLineTarget wholeArea(const Segment& area);
};

/// The part of the area that the target covers, 0.001 m long at least.
Segment measuredSegment(const Segment& area, const FitLineTarget& target);

/// What the levels along an area are measured against; each a record of allMeasures().
enum class Measure { FitToLine, SmoothArea, Even };
/// Those that a user is first offered.
constexpr std::size_t kGivenMeasures = 2;

/// Everything in which measures differ. A measure is the root of the mean of squares of terms in
/// the distances of the levels from the wanted ones, dB; a sum over some of the levels, `known`
/// (places, ascending), is never larger than that over more of them.
struct MeasureRecord {
    std::string_view name; ///< for scripts: "smooth"
    Text title;
    /// Wanted levels at so many points (at least 2); what is the same for all may be left out.
    std::vector<double> (*wanted)(const FitLineTarget& target, int points);
    /// The measure of levels at all points, as the formulas have it.
    double (*of)(std::span<const float> levels, std::span<const double> wanted);
    /// Terms in the mean at so many points.
    int (*terms)(int points);
    /// Sum of squares over the known levels.
    double (*sum)(const std::vector<double>& distances, const std::vector<std::size_t>& known);
    /// What errors of the levels (squares, dB^2) can come to in it.
    double (*errors)(const std::vector<double>& squares, const std::vector<std::size_t>& known);
    /// Adds to the sum of each sample (distances) what it grows by when `point` becomes known,
    /// which belongs before `right`. Null: no order of points is learned.
    void (*grow)(const std::vector<std::vector<double>>& samples,
                 const std::vector<std::size_t>& known,
                 std::vector<std::size_t>::const_iterator right, std::size_t point,
                 std::vector<double>& sums);
};

/// At the place of its number; the order in which a user sees them.
std::span<const MeasureRecord> allMeasures();
const MeasureRecord& recordOf(Measure measure);

/// Root of the mean square of what the levels, less what is wanted, differ from their own mean.
double RmsEven(std::span<const float> levels, std::span<const double> wanted);

/// Wanted levels at `points` (at least 2) receivers, the last at the target's end.
std::vector<double> fitReference(const FitLineTarget& target, int points);

/// Root of the mean squared distance in dB of the levels from a reference of the same length.
double RmsToFitLine(std::span<const float> levels, std::span<const double> reference);

/// Root of the mean squared difference in dB of each step between neighbouring levels (2 or more)
/// from the wanted step.
double RmsSmooth(std::span<const float> levels, double step);

} // namespace orva
