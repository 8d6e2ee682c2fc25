#include "app/forms/status_form.h"

#include "engine/acoustics.h"
#include "lang/message.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "model/contradictions.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

std::string spreadText(const StatusFacts& facts)
{
    std::string text;
    for (std::size_t i = 0; i < facts.areas.size(); ++i) {
        const Message area = facts.areas[i]
                                 ? Message(Text::StatusArea, {fixedText(facts.areas[i]->mean, 1),
                                                              fixedText(facts.areas[i]->spread, 1)})
                                 : Message(Text::StatusAreaSilent);
        text += (i > 0 ? "  " : "") + area.text(facts.text.language);
    }
    return Message(Text::StatusAreas, {text}).text(facts.text.language);
}

/// Of the lowest edge of a flown array, or of where a stack stands, so many metres above the floor.
Message heightMessage(double height, const TextOptions& options)
{
    const std::string figure = fixedText(std::abs(height) * options.lengthFactor(), 2);
    return Message(height < 0 ? Text::StatusBelowFloor : Text::StatusHeight,
                   {figure, std::string(lengthUnit(options))});
}

/// The first box: the top one of a flown array, the lowest one of a stack.
Message tiltMessage(const LineArray& array)
{
    const double up = roundedTo(array.axes().front().angleDeg, 1);
    const bool flown = array.GBGetMounting();
    if (up == 0)
        return Message(flown ? Text::StatusTopLevel : Text::StatusBottomLevel);
    const Text text = up < 0 ? (flown ? Text::StatusTopDown : Text::StatusBottomDown)
                             : (flown ? Text::StatusTopUp : Text::StatusBottomUp);
    return Message(text, {plainText(std::abs(up), 1)});
}

std::string airText(const StatusFacts& facts)
{
    const double shown = facts.celsius ? facts.temperatureC : fahrenheit(facts.temperatureC);
    const std::string degrees = plainText(shown, 1) + (facts.celsius ? " °C" : " °F");
    return Message(Text::StatusAir, {degrees, plainText(facts.humidityPercent, 1)})
        .text(facts.text.language);
}

} // namespace

std::string heardText(const Heard& heard, bool aWeighted, const TextOptions& options)
{
    const auto length = [&](double metres) {
        return fixedText(metres * options.lengthFactor(), 2);
    };
    const std::string unit(lengthUnit(options));
    const std::string over = heard.overFohDb > 0 ? "+" : "";
    std::string text =
        Message(Text::ProbePlace,
                {length(heard.at.x), length(heard.at.y), unit,
                 levelText(heard.levelDb) + (aWeighted ? " dB(A)" : " dB"),
                 std::isfinite(heard.overFohDb) ? over + fixedText(heard.overFohDb, 1) : "-"})
            .text(options.language);
    if (heard.box)
        text +=
            Message(Text::ProbeBox, {number(heard.box->position + 1), length(heard.box->distanceM),
                                     unit, fixedText(heard.delayMs, 1)})
                .text(options.language);
    return text;
}

StatusTexts statusTexts(const StatusFacts& facts)
{
    const auto text = [&](const Message& message) { return message.text(facts.text.language); };
    StatusTexts texts;
    const Message data = facts.importedData.empty()
                             ? Message(Text::StatusModelled)
                             : Message(Text::StatusImported, {facts.importedData});
    texts.data = airText(facts) + ", " + text(data);
    if (!facts.calculable) {
        texts.weight = text(Message(Text::StatusUnknown));
        texts.wrong = true;
        return texts;
    }
    if (facts.fohDb)
        texts.foh = text(Message(Text::Foh)) + " " + levelText(*facts.fohDb) +
                    (facts.aWeighted ? " dB(A)" : " dB");
    if (!facts.areas.empty())
        texts.spread = spreadText(facts);
    const LineArray& array = facts.project.array;
    const std::string total = plainText(array.totalWeightKg(), 1);
    const std::string allowed = plainText(array.system().maxWeightKg, 0);
    const Extent extent = extentOf(facts.project.room, array);
    texts.weight = text(Message(Text::StatusWeight, {total, allowed})) + ", " +
                   text(heightMessage(extent.lowest, facts.text));
    texts.wrong = array.overloaded() || !fitsIn(facts.project.room, extent);
    if (const auto tooMuch = overload(array))
        texts.overload = text(*tooMuch);
    texts.tilt = text(tiltMessage(array));
    return texts;
}

} // namespace orva
