#include "lang/number_text.h"
#include "model/line_array.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orva {

namespace {
constexpr std::array kSplayDegrees = {0.0F, 1.5F, 3.0F, 4.5F, 6.0F, 7.5F, 9.0F};
} // namespace

const std::array<std::string, 7>& LineArray::GSALookupAngles()
{
    static const auto kLabels = [] {
        std::array<std::string, 7> labels;
        std::transform(kSplayDegrees.begin(), kSplayDegrees.end(), labels.begin(),
                       [](float degrees) { return plainText(degrees, 1) + "°"; });
        return labels;
    }();
    return kLabels;
}

float LineArray::splayAngle(std::int16_t index)
{
    const int last = static_cast<int>(kSplayDegrees.size()) - 1;
    return kSplayDegrees[static_cast<std::size_t>(std::clamp<int>(index, 0, last))];
}

std::vector<AngleBounds> LineArray::IAGetAngleBounds() const
{
    std::vector<AngleBounds> result;
    for (int joint = 0; joint + 1 < boxCount(); ++joint)
        result.push_back(
            system().jointBounds(kindAt(joint), kindAt(joint + 1)).value_or(AngleBounds{0, 0}));
    return result;
}

float LineArray::GFFirstAngle() const
{
    if (Mounting && AngleOrPin)
        return GFAngleFromPin(AllAngle[0]);
    const float angle = static_cast<float>(AllAngle[0] / 10.0);
    return Mounting ? angle : -angle;
}

float LineArray::GFAngleFromPin(std::int16_t pin) const
{
    const CradleGeometry& cradle = system().cradle;
    const auto index = static_cast<std::size_t>(std::clamp<int>(pin, 0, cradle.pinCount() - 1));
    const double forward = static_cast<double>(CenterOfMass[0]) - cradle.PinX[index];
    const double below = static_cast<double>(CenterOfMass[1]) - cradle.PinY[index];
    if (below == 0)
        return forward == 0 ? 0.0F : std::copysign(90.0F, static_cast<float>(forward));
    return static_cast<float>(std::atan(forward / below) * (180.0F / std::numbers::pi_v<float>));
}

std::int16_t LineArray::GIPinPoint() const
{
    if (AngleOrPin)
        return AllAngle[0];
    const float wanted = static_cast<float>(AllAngle[0] / 10.0);
    const auto difference = [&](std::int16_t pin) {
        return std::abs(wanted - GFAngleFromPin(pin));
    };
    const std::int16_t pins = system().cradle.pinCount();
    std::int16_t best = 0;
    float smallest = difference(best);
    for (std::int16_t pin = 1; pin < pins; ++pin) {
        const float here = difference(pin);
        if (here > smallest) // the pins' angles go one way
            break;
        if (here < smallest) {
            smallest = here;
            best = pin;
        }
    }
    return best;
}

float LineArray::GFPinPointRemainder() const
{
    return AngleOrPin ? 0.0F
                      : static_cast<float>(AllAngle[0] / 10.0) - GFAngleFromPin(GIPinPoint());
}

} // namespace orva
