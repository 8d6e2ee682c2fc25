#pragma once

#include "document/choice_list.h"
#include "engine/line_spl.h"
#include "lang/language.h"

namespace orva {

/// Map type, averaging, band and weighting: what the levels are asked for, and the lists with which
/// that is done. Absolute levels are always broadband.
class LevelChoiceForm {
public:
    enum MapType { Continuous, Peak, Detailed };

    MapType mapType = Detailed;
    bool aWeighted = true;
    ChoiceList Average_cmb;
    ChoiceList cmbTerzOktave;
    bool averagingEnabled = true;
    bool bandEnabled = true;

    /// Detailed, with the first averaging and the first band.
    explicit LevelChoiceForm(Language language);

    /// Whether the buttons calculate a band or everything.
    bool offersBands() const { return mapType == Detailed; }

    void chooseMapType(MapType type);
    void chooseAveraging(int index);
    void chooseBand(int index);
    /// As they were chosen, whatever the map type makes of them.
    int averaging() const { return m_averaging; }
    int band() const { return m_band; }
    /// The texts in another language; what is selected stays.
    void setLanguage(Language language);

    LevelChoice choice() const;

private:
    void applyAveraging();

    int m_averaging = 0; ///< chosen while bands are offered
    int m_band = 0;
    Language m_language;
};

} // namespace orva
