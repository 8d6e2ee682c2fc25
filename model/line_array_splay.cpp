#include "lang/decimal_text.h"
#include "model/line_array.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orva {

const std::array<std::string_view, 7>& LineArray::GSALookupAngles()
{
    static constexpr std::array<std::string_view, 7> kLabels = {"0°", "1.5°", "3°", "4.5°",
                                                                "6°", "7.5°", "9°"};
    return kLabels;
}

float LineArray::splayAngle(std::int16_t index)
{
    static const auto kDegrees = [] {
        std::array<float, 7> degrees{};
        std::transform(
            GSALookupAngles().begin(), GSALookupAngles().end(), degrees.begin(),
            [](std::string_view label) { return static_cast<float>(ParseDecimalText(label)); });
        return degrees;
    }();
    const int last = static_cast<int>(kDegrees.size()) - 1;
    return kDegrees[static_cast<std::size_t>(std::clamp<int>(index, 0, last))];
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
    std::int16_t best = 0;
    float smallest = difference(best);
    for (std::int16_t pin = 1; pin < system().cradle.pinCount(); ++pin)
        if (const float here = difference(pin); here < smallest) {
            smallest = here;
            best = pin;
        }
    return best;
}

float LineArray::GFPinPointRemainder() const
{
    return AngleOrPin ? 0.0F
                      : static_cast<float>(AllAngle[0] / 10.0) - GFAngleFromPin(GIPinPoint());
}

} // namespace orva
