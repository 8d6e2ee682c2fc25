// Whatever the speaker data reader is given, its tables stay finite and its lookups within them.
#include "engine/speaker_data_text.h"

#include <cmath>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orva;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto reading = ReadSpeakerDataText(text, {}, "fuzz.xhn");
    if (!reading)
        return 0;
    if (reading->bands < 0 || reading->bands > kBands)
        std::abort();
    if (const auto shortfall = reading->shortfall(); shortfall && shortfall->text().empty())
        std::abort();
    for (int band = 0; band < kBands; ++band)
        for (int half = 0; half <= 2 * kAngleSteps; ++half)
            if (!std::isfinite(DirMagnitudeAt(reading->directivity, band, half / 2.0)) ||
                !std::isfinite(DirPhaseAt(reading->directivity, band, half / 2.0)))
                std::abort();
    return 0;
}
