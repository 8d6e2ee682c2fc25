#pragma once

#include "engine/acoustics.h"
#include "engine/speaker_data.h"

#include <cstddef>
#include <memory>

#include <hwy/aligned_allocator.h>

namespace orva {

/// A complex figure for every band, in the order of the kernel's registers: real and imaginary
/// parts of bands 0..15, then of bands 16..21 with two unused places each; three cache lines.
struct BandRow {
    static constexpr std::size_t kFloats = 48;

    static constexpr std::size_t re(std::size_t band) { return band < 16 ? band : 16 + band; }
    static constexpr std::size_t im(std::size_t band) { return band < 16 ? 16 + band : 24 + band; }
};

/// Rows of a BandRow each, 64-byte aligned.
using BandRows = hwy::AlignedFreeUniquePtr<float[]>;
/// So many of 0; throws std::bad_alloc.
BandRows allocateRows(std::size_t count);

/// How finely the tables are made, and what the kernel's amplitudes are off by at most then: a
/// share of the incoherent sum (the root of the boxes' summed powers).
struct TablePrecision {
    /// Change of ln(amplitude) and phase between two rows of the directivity: linear interpolation
    /// is off by 1/8 of its square at most.
    double changePerNode;
    int mostNodes;
    int fineRows;
    double amplitudeError;
};
/// What is shown.
constexpr TablePrecision kShownPrecision{0.04, 400, 128, 3e-4};
/// What tells configurations apart whose levels differ by thousandths of a dB.
constexpr TablePrecision kSearchPrecision{0.0025, 6400, 2048, 5e-6};

/// The directivity as the fast kernel reads it; immutable.
struct DirectivityTable {
    /// None for data that the fast kernel cannot follow exactly enough: attenuation beyond 150 dB
    /// either way, phases beyond twenty turns, or changes between two steps too large for the
    /// table.
    static std::shared_ptr<const DirectivityTable>
    make(const Directivity& data, const TablePrecision& precision = kShownPrecision);

    /// Rows 0..kAngleSteps * nodes of the complex amplitude; linear between two rows. Nodes per
    /// step are as many as the steepest change needs.
    BandRows rows;
    int nodes = 0;

    /// Per band and step: natural logarithm of the amplitude and phase in turns, each with its
    /// change to the next step.
    struct Steps {
        std::array<float, kAngleSteps> gain;
        std::array<float, kAngleSteps> gainChange;
        std::array<float, kAngleSteps> turns;
        std::array<float, kAngleSteps> turnsChange;
    };
    PerBand<Steps> steps;
};

/// What distance does to amplitude (by the air alone, without 1 / r) and phase; immutable.
struct RadialTable {
    static constexpr double kReachM = 400;
    static constexpr double kCoarseM = 1.0 / 64;

    static std::shared_ptr<const RadialTable>
    make(const Air& air, const TablePrecision& precision = kShownPrecision);

    double fineM = 0;

    BandRows coarse; ///< every kCoarseM from 0 to kReachM
    BandRows fine;   ///< every fineM over one coarse step, both ends included
    /// rad per metre, in the places of the real parts, for what is left after both.
    alignas(64) std::array<float, BandRow::kFloats> waveNumber{};

    PerBand<double> turnsPerMetre{};
    PerBand<float> gainPerMetre{}; ///< natural logarithm
};

} // namespace orva
