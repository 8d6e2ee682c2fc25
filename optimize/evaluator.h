#pragma once

#include "engine/fast_kernel.h"
#include "engine/line_spl.h"
#include "engine/literal_kernel.h"
#include "engine/speaker_data.h"
#include "model/hung_array.h"
#include "optimize/candidates.h"
#include "optimize/measure.h"
#include "optimize/point_order.h"
#include "optimize/power_ranges.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orva {

/// An area that is searched together with others.
struct SearchArea {
    Segment area;
    FitLineTarget target;
    double weight = 1; ///< above 0
};

/// Everything a search works on; shared by its threads and never changed.
struct SearchTask {
    LineArray array; ///< as it was when the search was set up; no fault()
    Segment area;
    FitLineTarget target;
    double weight = 1;                    ///< of the area, among others
    std::vector<SearchArea> otherAreas{}; ///< whose measures join that of the area
    double perDoublingDb = 0; ///< wanted change with the distance from the pick point (Even)
    Measure measure = Measure::SmoothArea;
    int points = 200; ///< 2 or more
    LevelChoice choice;
    SpeakerData speakerData;
    Air air;
    std::shared_ptr<const FastKernel> kernel; ///< for the same directivity and air
    double amplitudeError = 0;                ///< of that kernel, see TablePrecision
};

/// Measures configurations. One for each thread.
class Evaluator {
public:
    /// `order` null: coarse to fine. `balls`, of the task's directivity, for leastMeasure(), which
    /// knows nothing without them.
    explicit Evaluator(std::shared_ptr<const SearchTask> task,
                       std::shared_ptr<const PointOrder> order = nullptr,
                       std::shared_ptr<const AmplitudeBalls> balls = nullptr);

    /// The measure by the literal kernel: the one that counts. kNoMeasure where there is none.
    double measure(const Configuration& configuration);
    /// The same; none when `stop`, asked every few hundred points, says so.
    std::optional<double> measure(const Configuration& configuration,
                                  const std::function<bool()>& stop);

    /// How far each level of the first area lies from the wanted one, in dB, by the fast kernel.
    /// For a smooth area the wanted level of the first point is 0.
    std::vector<double> distances(const Configuration& configuration);

    /// Where the literal measure lies for certain; not finite where the fast kernel cannot tell.
    struct Bounds {
        double low;
        double high;
    };
    /// None when the literal measure is certain to be above `limit`: known as soon as some of the
    /// levels tell. What boxes add to the levels is kept from call to call as long as they and
    /// those above them stay where they are.
    std::optional<Bounds> measureUpTo(const Configuration& configuration, double limit);
    /// At most the literal measure of any configuration that is this one but for its last joints:
    /// the last `open` ones of the set's range, which take every angle there. Not more exactly than
    /// whether it is above `limit`; 0 where nothing can be said.
    ///
    /// A bound for certain: the last boxes hang as they do in the middle of what their joints
    /// allow, and with them every complex sum of pressures p; no configuration of them gets a box
    /// farther away than HungArray::play(), nor its pressure q farther from the one in the middle
    /// than r = (spread + largest * (min(2, k move) + move * (1 / d + absorption))) / d, where d is
    /// the least distance and k the wave number (AmplitudeBall; |exp(ia) - exp(ib)| <= |a - b|). So
    /// each band's power lies between (|p| - sum r)^2 and (|p| + sum r)^2, each level between what
    /// these sum to, and the measure is at least the norm of what the levels lie apart from the
    /// wanted ones (of Even: from the mean that suits them best). None is known for SmoothArea, nor
    /// for spans of few bands.
    double leastMeasure(Configuration configuration, const CandidateSet& set, std::size_t open,
                        double limit);

    /// Groups of levels that measureUpTo() has calculated so far: what it spares is its use.
    std::uint64_t groupsCalculated() const { return m_groupsCalculated; }

private:
    static constexpr std::size_t kGroup = PointOrder::kGroup;

    /// One area.
    struct Part {
        Segment segment;
        double share;               ///< of its weight in all
        std::vector<double> wanted; ///< level at each point
        std::vector<Point> line;
        std::vector<Point> receivers;     ///< in the order of calculation
        std::vector<double> distances;    ///< of each level from the wanted one, dB
        std::vector<double> errorSquares; ///< bound on the square of each level's error, dB^2
        std::vector<double> lows;         ///< leastMeasure(): least distance of each level
        std::vector<double> highs;
    };
    /// A box that is not certain to stay where it is, see leastMeasure().
    struct Moving {
        Source source;
        double moveM;
        const AmplitudeBall* ball;
        std::array<float, AmplitudeBall::kLanes> phase; ///< min(2, k move) + absorption * move
    };
    bool findMoving(const std::vector<HungArray::Play>& play);
    void calculateRanges(std::size_t part, std::size_t group);
    double leastSquare(const std::vector<std::size_t>& known, double limit);
    const float* summedRows(std::size_t group, std::span<const Point> receivers);
    void addPart(const Segment& area, const FitLineTarget& target, double share);
    const LineArray& array() const { return m_hung.array(); }
    void place(const Configuration& configuration);
    void wantByDistance();
    void prepareSums();
    std::optional<std::vector<float>> levels(const Part& part, const LevelKernel& kernel,
                                             const Progress& progress);
    std::optional<double> measureBy(const LevelKernel& kernel, const Progress& progress);
    double joinedEven(const std::vector<std::vector<float>>& levels) const;
    double knownSquare(const std::vector<std::size_t>& known) const;
    double knownError(const std::vector<std::size_t>& known) const;
    std::size_t groupsPerPart() const;
    void calculateGroup(std::size_t part, std::size_t group);
    void sumPowers(std::span<const Point> receivers, std::span<float> powers);
    void sumRunningPowers(std::size_t group, std::span<const Point> receivers,
                          std::span<float> powers);
    double amplitudeErrorSquare(const Point& receiver) const;
    double errorSquare(const Point& receiver, float power) const;

    std::shared_ptr<const SearchTask> m_task;
    std::shared_ptr<const PointOrder> m_order;
    const MeasureRecord& m_measure;
    LiteralKernel m_literal;
    HungArray m_hung;
    std::vector<std::size_t> m_radiating; ///< positions of the boxes that do
    std::vector<Part> m_parts;
    std::vector<Point> m_ends; ///< of all areas
    std::vector<float> m_factors;
    double m_loudest = 0; ///< power of one box 1 m away in its loudest direction, all bands

    std::vector<Source> m_sources;
    Point m_low; ///< corners of the rectangle round the sources
    Point m_high;
    std::vector<float> m_bandPowers; ///< of a group
    bool m_running = false;          ///< sums run from box to box
    bool m_stays = true; ///< boxes stay where they are when one below them turns: sums are kept

    // Sums after each box for each group of receivers, and for which place of each box they hold.
    std::vector<std::uint64_t> m_placed; ///< changes with each box's place
    std::uint64_t m_places = 0;
    std::vector<std::uint64_t> m_summed; ///< [group * boxes + box], groups of all areas
    BandRows m_sums;                     ///< [(group * boxes + box) * kGroup + point] rows
    alignas(64) std::array<float, BandRow::kFloats> m_rowFactors{}; ///< of both parts of each band

    std::shared_ptr<const AmplitudeBalls> m_balls; ///< null: no bounds
    std::vector<Moving> m_moving;
    std::vector<BallAt> m_ballsAt;
    std::array<float, AmplitudeBall::kLanes> m_laneFactors{}; ///< of each band's power
    double m_mean = 0; ///< that suited the levels of an even area best, last time

    std::uint64_t m_groupsCalculated = 0;
};

} // namespace orva
