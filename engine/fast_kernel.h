#pragma once

#include "engine/kernel_tables.h"
#include "engine/level_kernel.h"

namespace orva {

/// The literal kernel's powers from tables and with the machine's widest vectors, whatever x86-64
/// or ARM it is. A receiver's bits do not depend on which other receivers are asked for with it.
///
/// Against the literal kernel the amplitude of a span of bands is off by less than the
/// amplitudeError of the tables; the largest of 360,000 random receivers was 1.3e-4 with
/// kShownPrecision and 1.8e-6 with kSearchPrecision. For spans of one to three bands, where nulls
/// go deep and which are calculated without tables of amplitudes, it was 2.8e-6. A level d dB below
/// the incoherent sum is therefore off by at most 8.7 dB * error * 10^(d / 20): that is also the
/// bound for deep nulls.
class FastKernel : public LevelKernel {
public:
    /// `literal` takes over what the tables cannot follow: a directivity without a table, receivers
    /// beyond RadialTable::kReachM of a source, figures that are not finite.
    FastKernel(std::shared_ptr<const DirectivityTable> directivity,
               std::shared_ptr<const RadialTable> radial, std::unique_ptr<LevelKernel> literal);

    void bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                    BandSpan bands, std::span<float* const> powers) const override;

    /// Whether runningSums() can follow these.
    bool hasRunningSums(std::span<const Source> sources, std::span<const Point> receivers,
                        BandSpan bands) const;
    /// Adds the sources one after the other to the complex pressures at up to 16 receivers, as
    /// bandPowers() does, and keeps what stands after each that `after` has a place for: rows of
    /// BandRow::kFloats per receiver, 64-byte aligned; places of bands outside the span mean
    /// nothing. `before` is null for none.
    void runningSums(std::span<const Source> sources, std::span<const Point> receivers,
                     BandSpan bands, const float* before, std::span<float* const> after) const;

private:
    std::shared_ptr<const DirectivityTable> m_directivity;
    std::shared_ptr<const RadialTable> m_radial;
    std::unique_ptr<LevelKernel> m_literal;
};

} // namespace orva
