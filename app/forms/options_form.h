#pragma once

#include "app/state/settings.h"

#include <array>
#include <string>

namespace orva {

/// The entries of the options dialog, as shown. Nothing is stored before applied(). A text that is
/// no complete number stands for what was there before.
class OptionsForm {
public:
    static constexpr std::size_t kGrids = 3; ///< room, rigging, area

    explicit OptionsForm(const Settings& stored);

    bool metres;
    bool autoCorrect;
    bool celsius;
    bool pixel; ///< the resolution is not in use
    bool showNewQuery;
    Appearance appearance;
    MapStyle map;
    bool weather;
    std::string humidity; ///< percent
    std::string temperature;
    std::string resolution;
    std::array<std::string, kGrids> grids;

    /// Converts the lengths that are shown.
    void chooseMetres(bool chosen);
    void chooseCelsius(bool chosen);
    /// Keeps the resolution for when pixels are given up again.
    void choosePixel(bool chosen);
    /// One eighth of the wavelength at 1 kHz.
    void chooseLambda8(float speedOfSound);
    void chooseDefaults();

    /// To the range -20..50 °C.
    void validateTemperature();
    /// To the range 1..100 %.
    void validateHumidity();
    /// No resolution means pixels.
    void validateResolution();
    /// Above 0; 1 for nothing.
    void validateGrid(std::size_t index);

    /// `stored` with the entries in it, each validated.
    Settings applied(const Settings& stored) const;
    /// Whether an entry says something else than `stored`.
    bool differsFrom(const Settings& stored) const;

private:
    double celsiusTyped() const;
    double humidityTyped() const;
    /// A length typed, or the one kept, in the unit shown.
    double length(const std::string& text, const std::string& kept) const;

    std::string m_keptHumidity;
    std::string m_keptTemperature;
    std::string m_keptResolution;
    std::array<std::string, kGrids> m_keptGrids;
};

} // namespace orva
