#include "engine/speaker_data.h"

#include "model/system_record.h"

namespace orva {

namespace {

constexpr PerBand<double> kStandardContinuous = {
    108.0,  108.0,  108.0,  107.91, 108.25, 108.21, 106.61, 106.59, 105.02, 104.71, 104.19,
    105.04, 105.42, 104.39, 102.95, 104.66, 105.6,  106.14, 107.67, 108.02, 104.86, 99.98};
constexpr PerBand<double> kCompactContinuous = {
    96.3,   96.3,   96.3,  101.1,  101.8,  101.8,  100.55, 99.69, 102.34, 102.79, 105.25,
    107.61, 103.99, 101.8, 102.41, 102.04, 102.22, 102.97, 103.4, 103.28, 100.2,  94.8};

PerBand<BandReference> bandLevels(const PerBand<double>& continuous)
{
    float sum = 0; // each partial sum rounded to 32 bits, so that the mean is the given one
    for (const double level : continuous)
        sum = static_cast<float>(sum + level);
    const float mean = sum / kBands;

    PerBand<BandReference> levels{};
    for (std::size_t b = 0; b < kBands; ++b)
        levels[b] = {continuous[b] - mean, continuous[b], continuous[b] + 6};
    return levels;
}

} // namespace

SpeakerData SelectSpeakerData(const SystemData& data, std::int16_t system)
{
    if (system == kStandardSystem)
        return {data.standard, bandLevels(kStandardContinuous)};
    return {data.compact, bandLevels(kCompactContinuous)};
}

} // namespace orva
