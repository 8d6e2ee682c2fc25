#pragma once

#include "engine/level_kernel.h"
#include "engine/speaker_data.h"

namespace orva {

/// The formulas as they stand, in double precision: the judge of accuracy for every other kernel.
class LiteralKernel : public LevelKernel {
public:
    LiteralKernel(const Directivity& directivity, const Air& air)
        : m_directivity(directivity), m_air(air)
    {
    }

    void bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                    BandSpan bands, std::span<float* const> powers) const override;

private:
    Directivity m_directivity;
    Air m_air;
};

} // namespace orva
