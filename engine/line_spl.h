#pragma once

#include "engine/level_kernel.h"
#include "engine/parallel.h"
#include "engine/speaker_data.h"
#include "model/line_array.h"
#include "model/room.h"

#include <vector>

namespace orva {

/// Which levels are asked for: bands, their on-axis reference, weighting.
struct LevelChoice {
    BandSpan bands;
    LevelField field{};
    bool aWeighted = false;

    friend bool operator==(const LevelChoice&, const LevelChoice&) = default;
};

/// The levels that a user chose. Absolute ones are always broadband; relative ones as averaged
/// round the band.
LevelChoice chosenLevels(LevelField field, Averaging averaging, int band, bool aWeighted);

/// Factors from the kernel powers of the chosen bands to what they add to the level: their
/// reference and weight.
std::vector<float> bandFactors(const PerBand<BandReference>& levels, const LevelChoice& choice);

/// Whether the box at a position (from 0) radiates mid and high frequencies.
bool radiates(const LineArray& array, int position);
/// The boxes that radiate mid and high frequencies; bass boxes take no part. The array must have no
/// fault().
std::vector<Source> radiatingSources(const LineArray& array);

/// `n` (at least 1) receivers along `line`: the first at its start, steps of length / n in the
/// direction of its angle; its end is not read.
std::vector<Point> lineReceivers(const Segment& line, int n);

/// Levels in dB at the `n` receivers along `line`. Elements n and n + 1 are the largest and the
/// smallest of them. Minus infinity where nothing radiates.
std::vector<float> LineSPL(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                           const LineArray& array, const Segment& line, const LevelChoice& choice,
                           int n, int threads = 1);

/// LineSPL() with the extremes apart.
struct LineLevels {
    std::vector<float> levels;
    float largest;
    float smallest;
};
LineLevels levelsAlong(const LevelKernel& kernel, const PerBand<BandReference>& levels,
                       const LineArray& array, const Segment& line, const LevelChoice& choice,
                       int n, int threads = 1);

/// The levels alone, on the caller's thread. `progress` is told the blocks of receivers that are
/// done; when it returns false the work stops: no result.
std::optional<std::vector<float>>
lineLevels(const LevelKernel& kernel, const PerBand<BandReference>& levels, const LineArray& array,
           const Segment& line, const LevelChoice& choice, int n, const Progress& progress);

/// The line of one receiver at the FOH position.
Segment fohLine(const Room& room);

} // namespace orva
