#include "engine/speaker_data.h"

#include "model/systems.h"

namespace orva {

namespace {

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
    const auto number = static_cast<std::size_t>(isSystem(system) ? system : kCompactSystem);
    return {number < data.size() ? data[number] : Directivity{},
            bandLevels(systemRecord(system).continuousDb)};
}

} // namespace orva
