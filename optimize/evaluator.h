#pragma once

#include "engine/fast_kernel.h"
#include "engine/line_spl.h"
#include "engine/literal_kernel.h"
#include "engine/speaker_data.h"
#include "optimize/candidates.h"
#include "optimize/measure.h"

#include <memory>
#include <optional>
#include <vector>

namespace orva {

/// Everything a search works on; shared by its threads and never changed.
struct SearchTask {
    LineArray array; ///< as it was when the search was set up; no fault()
    AreaSegment area;
    FitLineTarget target;
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
    explicit Evaluator(std::shared_ptr<const SearchTask> task);

    /// The measure by the literal kernel: the one that counts.
    double measure(const LineArray::Positions& angles);

    /// The measure by the fast kernel.
    double fastMeasure(const LineArray::Positions& angles);

    /// Where the literal measure lies for certain.
    struct Bounds {
        double low;
        double high;
    };
    /// None when the literal measure is certain to be above `limit`: known as soon as some of the
    /// levels tell. What boxes add to the levels is kept from call to call as long as they and
    /// those above them stay where they are.
    std::optional<Bounds> measureUpTo(const LineArray::Positions& angles, double limit);

private:
    /// Points that are calculated together.
    static constexpr std::size_t kPoints = 8;

    /// A figure with a bound on its error.
    struct Sums {
        double squares = 0;
        double errors = 0;
    };

    void place(const LineArray::Positions& angles);
    std::vector<float> levels(const LevelKernel& kernel);
    double measureOf(const std::vector<float>& levels) const;
    void calculateBlock(std::size_t block);
    void sumPowers(std::size_t block, std::span<float> powers);
    void sumRunningPowers(std::size_t block, std::span<float> powers);
    void boundErrors(std::size_t block, std::span<const float> powers);
    void addBlock(std::size_t block, Sums& sums) const;
    void addStep(std::size_t point, Sums& sums) const;
    std::size_t blockEnd(std::size_t block) const;

    std::shared_ptr<const SearchTask> m_task;
    LiteralKernel m_literal;
    LineArray m_array;
    AreaSegment m_segment;
    std::vector<float> m_reference;
    double m_step = 0; ///< wanted from point to point
    std::vector<Point> m_receivers;
    std::vector<float> m_factors;
    double m_incoherent = 0; ///< power of one box 1 m away in its loudest direction, all bands

    std::vector<Source> m_sources;
    std::vector<float> m_bandPowers; ///< of a block
    bool m_running = false;          ///< sums are kept

    // Sums after each box for each block of receivers, and for which place of each box they hold.
    std::vector<std::uint64_t> m_placed; ///< changes with each box's place
    std::uint64_t m_places = 0;
    std::vector<std::uint64_t> m_summed; ///< [block * boxes + box]
    BandRows m_sums;                     ///< [(block * boxes + box) * points + point] rows
    alignas(64) std::array<float, BandRow::kFloats> m_rowFactors{}; ///< of both parts of each band

    std::vector<float> m_levels;
    std::vector<float> m_errorSquares; ///< bound on the square of each level's error, dB^2
    std::vector<char> m_known;
    std::vector<std::size_t> m_order; ///< blocks; the one that told most lately first
};

} // namespace orva
