#include "lang/number_text.h"
#include "model/line_array.h"

namespace orva {

float LineArray::GFGetSpeakerWeight() const
{
    float weight = 0;
    for (int i = 0; i < boxCount(); ++i)
        if (const std::optional<BoxKind> kind = kindAt(i))
            weight += system().boxes.shape(*kind).weightKg;
    return weight;
}

float LineArray::GFGetSpeakerByType(std::int16_t code) const
{
    const std::optional<BoxKind> kind = system().kindOf(code);
    float weight = 0;
    for (int i = 0; kind && i < boxCount(); ++i)
        if (AllType[static_cast<std::size_t>(i)] == code)
            weight += system().boxes.shape(*kind).weightKg;
    return weight;
}

double LineArray::totalWeightKg() const
{
    const double frame = Mounting ? system().frameWeightKg : 0;
    return roundedTo(GFGetSpeakerWeight() + frame + GFGetCableWeight(), 2);
}

float LineArray::GFGetCableWeight() const
{
    const int boxes = boxCount();
    return static_cast<float>((boxes - boxes % 2) * 0.5 / 2.0 + 5.0);
}

} // namespace orva
