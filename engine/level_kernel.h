#pragma once

#include "engine/acoustics.h"
#include "model/segment.h"

#include <span>

namespace orva {

/// A radiating box in the room frame: metres, degrees against the horizontal, negative = aimed
/// down.
struct Source {
    double x;
    double y;
    double angleDeg;

    friend bool operator==(const Source&, const Source&) = default;
};

/// A source that is nearer, in metres, counts as this far away.
constexpr double kNearestM = 0.1;

/// The cost of the program: receivers x boxes x bands. A kernel is made for one directivity and one
/// air, never changes, and may be used from any thread.
class LevelKernel {
public:
    LevelKernel() = default;
    LevelKernel(const LevelKernel&) = delete;
    LevelKernel& operator=(const LevelKernel&) = delete;
    virtual ~LevelKernel() = default;

    /// Power of the complex sum of all sources per receiver (room frame, metres) and band, for
    /// boxes whose on-axis level at 1 m is 0 dB: `powers`[band - bands.from] points to one figure
    /// per receiver; 0 without sources, and below about 1e-38. A source within kNearestM counts as
    /// that far away.
    virtual void bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                            BandSpan bands, std::span<float* const> powers) const = 0;
};

} // namespace orva
