#include "app/forms/level_choice_form.h"

#include "lang/string_table.h"

#include <array>

namespace orva {

namespace {

constexpr int kBroadband = 3;

/// Right-aligned as engineers read a column of frequencies.
std::string bandText(int hz)
{
    std::string number = std::to_string(hz);
    if (number.size() < 4)
        return " " + number + " Hz";
    return (number.size() < 5 ? " " : "") + number + "Hz";
}

} // namespace

LevelChoiceForm::LevelChoiceForm(Language language) : m_language(language)
{
    Average_cmb.selected = 0;
    for (const int hz : kNominalHz)
        cmbTerzOktave.items.push_back({bandText(hz)});
    setLanguage(language);
}

void LevelChoiceForm::setLanguage(Language language)
{
    m_language = language;
    Average_cmb.items.clear();
    for (const Text id : {Text::ThirdOctave, Text::OneOctave, Text::ThreeOctaves, Text::Broadband})
        Average_cmb.items.push_back({std::string(MlGetString(language, id))});
    applyAveraging();
}

void LevelChoiceForm::chooseMapType(MapType type)
{
    mapType = type;
    averagingEnabled = offersBands();
    Average_cmb.selected = offersBands() ? m_averaging : kBroadband;
    applyAveraging();
}

void LevelChoiceForm::chooseAveraging(int index)
{
    m_averaging = index;
    Average_cmb.selected = index;
    applyAveraging();
}

void LevelChoiceForm::chooseBand(int index)
{
    if (index < 0 || index >= kBands)
        return;
    m_band = index;
    cmbTerzOktave.selected = index;
}

void LevelChoiceForm::applyAveraging()
{
    const bool broadband = Average_cmb.selected == kBroadband;
    bandEnabled = !broadband;
    cmbTerzOktave.items.resize(kBands);
    if (broadband)
        cmbTerzOktave.items.push_back({std::string(MlGetString(m_language, Text::AllAveraged))});
    cmbTerzOktave.selected = broadband ? kBands : m_band;
}

LevelChoice LevelChoiceForm::choice() const
{
    constexpr std::array fields = {LevelField::Continuous, LevelField::Peak, LevelField::Relative};
    return chosenLevels(fields[static_cast<std::size_t>(mapType)],
                        static_cast<Averaging>(Average_cmb.selected), m_band, aWeighted);
}

} // namespace orva
