#include "model/contradictions.h"

#include "lang/message.h"
#include "lang/number_text.h"

#include <cmath>
#include <tuple>

namespace orva {

namespace {

int inColumn(const LineArray& array, BoxKind kind)
{
    int count = 0;
    for (int i = 0; i < array.boxCount(); ++i)
        count += array.kindAt(i) == kind;
    return count;
}

/// "2 (9), 5 (12)": positions from 1 with the codes that the system does not know.
std::string unknownBoxes(const LineArray& array)
{
    std::string list;
    for (int i = 0; i < array.boxCount(); ++i)
        if (!array.kindAt(i)) {
            const std::int16_t code = array.GIAGetAllType()[static_cast<std::size_t>(i)];
            list += (list.empty() ? "" : ", ") + std::to_string(i + 1) + " (" +
                    std::to_string(code) + ")";
        }
    return list;
}

} // namespace

std::vector<std::string> contradictions(const LineArray& array, Language language)
{
    std::vector<std::string> lines;
    const auto say = [&](Text text, std::vector<Message> parts) {
        lines.push_back(Message(text, std::move(parts)).text(language));
    };
    const std::int16_t system = array.GIGetArrayType();
    if (!isSystem(system))
        say(Text::UnknownSystem, {number(system)});
    const std::tuple<Text, int, BoxKind> counts[] = {
        {Text::StraightContradiction, array.GIGetNumGerade(), BoxKind::Straight},
        {Text::TrapezoidalContradiction, array.GIGetNumSchräg(), BoxKind::Trapezoidal},
        {Text::BassContradiction, array.GIGetNumBass(), BoxKind::Bass}};
    for (const auto& [text, named, kind] : counts)
        if (const int hung = inColumn(array, kind); hung != named)
            say(text, {number(named), number(hung)});
    if (const std::string boxes = unknownBoxes(array); !boxes.empty())
        say(Text::UnknownBoxes, {boxes});
    return lines;
}

std::optional<Message> pinFallsShort(const LineArray& array)
{
    constexpr double kLeastDeg = 0.05; // shown as 0.1
    if (!array.GBGetMounting() || array.GBGetAngleOrPin() || array.fault())
        return std::nullopt;
    const double missing = array.GFPinPointRemainder();
    if (std::abs(missing) < kLeastDeg)
        return std::nullopt;
    const std::int16_t pin = array.GIPinPoint();
    return Message(Text::PinFallsShort,
                   {std::to_string(pin + 1), fixedText(-array.GFAngleFromPin(pin), 1),
                    fixedText(std::abs(missing), 1)});
}

std::optional<Message> overload(const LineArray& array)
{
    if (!array.overloaded())
        return std::nullopt;
    return Message(Text::StatusOverload,
                   {plainText(array.totalWeightKg(), 1), plainText(array.system().maxWeightKg, 1)});
}

} // namespace orva
