#pragma once

#include "engine/fast_kernel.h"

namespace orva {

/// Receivers that are calculated together.
constexpr std::size_t kBlock = 32;
/// Sources of one call; more go to the literal kernel.
constexpr std::size_t kMostSources = 32;
/// Spans of bands up to this many are calculated band by band, without tables of amplitudes.
constexpr int kMostExactBands = 3;

/// A block of receivers, 1 to kBlock of them; the rest repeats the last.
struct ReceiverBlock {
    alignas(64) double x[kBlock];
    alignas(64) double y[kBlock];
    std::size_t count;
};

/// A source with its angle in directivity steps, 0 to 72.
struct KernelSource {
    double x;
    double y;
    double step;
};

/// Writes the powers of one block at `powers[band - bands.from] + offset`; picks the vectors that
/// the machine has.
void blockPowers(const DirectivityTable& directivity, const RadialTable& radial,
                 std::span<const KernelSource> sources, const ReceiverBlock& block, BandSpan bands,
                 std::span<float* const> powers, std::size_t offset);

/// Running sums of one block: rows of BandRow::kFloats per receiver, 64-byte aligned. `before` may
/// be null; after[s], where not null, are the sums with sources 0..s. False where the machine has
/// no vectors for it.
bool blockSums(const DirectivityTable& directivity, const RadialTable& radial,
               std::span<const KernelSource> sources, const ReceiverBlock& block, BandSpan bands,
               const float* before, std::span<float* const> after);

} // namespace orva
