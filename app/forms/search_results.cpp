#include "app/forms/search_results.h"

#include "lang/message.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <cmath>

namespace orva {

ResultFigures resultFigures(Prediction& prediction, const Room& room, const LineArray& array,
                            const LevelChoice& choice)
{
    ResultFigures figures{{},
                          prediction.levelAt(room.foh(), choice),
                          array.GFAGetCradleCoord()[1],
                          {},
                          array.totalWeightKg(),
                          !array.overloaded() && fitsIn(room, extentOf(room, array))};
    for (int number = 1; number <= room.GIGetNumAreas(); ++number)
        figures.areas.push_back(prediction.figuresOf(room.area(number), choice));
    if (array.GBGetMounting())
        figures.pin = array.GIPinPoint() + 1;
    return figures;
}

std::vector<std::string> resultTexts(double rms, const ResultFigures& figures,
                                     const TextOptions& options)
{
    constexpr const char* kNone = "_";
    std::vector<std::string> texts = {rms < kNoMeasure ? fixedText(rms, 2) : kNone};
    for (const std::optional<AreaFigures>& area : figures.areas)
        texts.push_back(area ? fixedText(area->mean, 1) + " (" + fixedText(area->spread, 1) + ")"
                             : kNone);
    texts.push_back(std::isfinite(figures.fohDb) ? fixedText(figures.fohDb, 1) : kNone);
    texts.push_back(plainText(figures.heightM * options.lengthFactor(), 2));
    texts.push_back(figures.pin ? std::to_string(*figures.pin) : kNone);
    texts.push_back(fixedText(figures.weightKg, 1));
    return texts;
}

std::vector<std::string> arrayTexts(Prediction& prediction, const Room& room,
                                    const LineArray& array, const LevelChoice& choice,
                                    const TextOptions& options)
{
    const std::optional<Evenness> even = prediction.evennessOf(room, choice);
    return resultTexts(even ? even->rms : kNoMeasure,
                       resultFigures(prediction, room, array, choice), options);
}

std::vector<std::string> resultHeads(Text measure, int areas, const TextOptions& options)
{
    const auto text = [&](Text id) { return std::string(MlGetString(options.language, id)); };
    std::vector<std::string> heads = {text(measure)};
    for (int number = 1; number <= areas; ++number)
        heads.push_back(text(areaText(number)));
    heads.emplace_back("FOH");
    heads.push_back(
        Message(Text::ColumnHeight, {std::string(lengthUnit(options))}).text(options.language));
    heads.push_back(text(Text::ColumnPin));
    heads.push_back(text(Text::ColumnWeight));
    return heads;
}

} // namespace orva
