// What is heard of what is edited.
#include "document/variants_edit.h"
#include "main/editor.h"

#include <limits>

namespace orva::ui {

std::optional<Heard> Editor::heardAt(const Point& place) const
{
    const Prediction* predicted = calculable() ? prediction() : nullptr;
    return predicted
               ? std::optional(predicted->heardAt(place, room().foh(), m_view.levels.choice()))
               : std::nullopt;
}

std::vector<SeatRow> Editor::seatRows() const
{
    Prediction* predicted = calculable() ? prediction() : nullptr;
    if (!predicted)
        return {};
    return orva::seatRows(*predicted, room().area(m_view.SelectedArea), m_view.levels.choice(),
                          m_view.rowPitchM, m_view.rowOffsetM);
}

RoomViewContent Editor::roomViewContent(bool aimingLines) const
{
    RoomViewContent content;
    content.grid = &m_view.map.grid;
    content.map = m_view.map.shown ? &*m_view.map.shown : nullptr;
    content.aimingLines = !m_view.map.shown || aimingLines;
    content.bassBox = {array().GBGetBassBox(), array().GFAGetBassBoxCoord(),
                       m_session.state().settings.ShowDelay == 1};
    content.aWeighted = m_view.levels.aWeighted;
    if (content.map && m_session.state().settings.map.range == MapRange::Audience)
        content.audienceMeanDb = audienceMean(areaFigures());
    if (m_view.levels.mapType != LevelChoiceForm::Detailed)
        content.fohDb = levelsAlong(fohLine(room()), 1).front();
    return content;
}

Prediction* Editor::prediction() const
{
    return predictionOf(m_arrayWhole ? &array() : nullptr, m_prediction);
}

Prediction* Editor::predictionOf(const LineArray* array, std::optional<Prediction>& kept) const
{
    if (!array || array->fault()) {
        kept.reset();
        return nullptr;
    }
    ApplicationState& state = m_session.state();
    const std::shared_ptr<const LevelKernel> kernel = state.levelKernel();
    if (!kept || !kept->isOf(kernel, state.speakerData.BandLevel, *array))
        kept.emplace(kernel, state.speakerData.BandLevel, *array, state.air.SpeedOfSound);
    return &*kept;
}

Prediction* Editor::keptPrediction(std::size_t variant) const
{
    return predictionOf(keptArray(m_document.state(), variant), m_keptPredictions[variant]);
}

const LineArray* Editor::comparedArray() const
{
    if (!m_view.compared)
        return nullptr;
    if (!m_view.compared->variant)
        return &m_view.compared->array;
    return keptArray(m_document.state(), *m_view.compared->variant);
}

Prediction* Editor::comparedPrediction() const
{
    const auto& compared = m_view.compared;
    return compared && compared->variant ? keptPrediction(*compared->variant)
                                         : predictionOf(comparedArray(), m_otherPrediction);
}

Hearing Editor::hearing() const
{
    ApplicationState& state = m_session.state();
    return {*state.levelKernel(), state.speakerData.BandLevel, areaReceivers(room()),
            m_view.levels.choice()};
}

std::string Editor::comparedTitle() const
{
    if (!m_view.compared)
        return {};
    return m_view.compared->variant
               ? variantTitle(m_document.state().project.variants, *m_view.compared->variant)
               : m_view.compared->title;
}

std::vector<float> Editor::levelsAlong(const Segment& line, int points) const
{
    if (Prediction* predicted = prediction())
        return predicted->levelsAlong(line, points, m_view.levels.choice());
    return std::vector<float>(static_cast<std::size_t>(points),
                              -std::numeric_limits<float>::infinity());
}

std::optional<LevelRange> Editor::weatherRange(const Segment& line, int points) const
{
    ApplicationState& state = m_session.state();
    if (!state.settings.Weather || !m_arrayWhole)
        return std::nullopt;
    LevelRange range;
    for (const std::shared_ptr<const LevelKernel>& kernel : state.weatherKernels()) {
        const std::vector<float> levels =
            orva::levelsAlong(*kernel, state.speakerData.BandLevel, array(), line,
                              m_view.levels.choice(), points)
                .levels;
        range.add(levels);
    }
    return range;
}

std::vector<std::optional<AreaFigures>> Editor::areaFigures() const
{
    std::vector<std::optional<AreaFigures>> figures;
    for (int number = 1; number <= room().GIGetNumAreas(); ++number)
        figures.push_back(orva::areaFigures(levelsAlong(room().area(number), kAreaReceivers)));
    return figures;
}

StatusFacts Editor::statusFacts(bool levels) const
{
    const ApplicationState& state = m_session.state();
    StatusFacts facts{m_document.state().project,
                      calculable() && array().boxCount() > 0,
                      {},
                      m_view.levels.aWeighted,
                      {},
                      state.settings.Temperature,
                      state.settings.Weather ? state.settings.Humidity
                                             : static_cast<float>(kHumidityPercent),
                      state.settings.Celsius_Fahren,
                      m_session.textOptions(),
                      state.importedData};
    if (facts.calculable && levels) {
        facts.fohDb = levelsAlong(fohLine(room()), 1).front();
        facts.areas = areaFigures();
    }
    return facts;
}

} // namespace orva::ui
