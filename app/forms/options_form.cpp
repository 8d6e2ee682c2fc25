#include "app/forms/options_form.h"

#include "document/room_form.h"
#include "engine/acoustics.h"
#include "lang/decimal_text.h"
#include "lang/number_text.h"
#include "lang/typed_number.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace orva {

namespace {

/// What may stand behind a temperature, and whether it means Celsius; the chosen one where open.
constexpr std::pair<std::string_view, std::optional<bool>> kTemperatureUnits[] = {
    {"", {}}, {"°", {}}, {"°C", true}, {"C", true}, {"°F", false}, {"F", false}};

double withinRange(double degreesC)
{
    return std::clamp<double>(degreesC, kColdestC, kHottestC);
}

double celsiusOf(double degrees, bool celsius)
{
    return celsius ? degrees : celsiusOfFahrenheit(degrees);
}

std::string lengthText(double length)
{
    return plainText(length, 6);
}
std::string temperatureText(double degrees)
{
    return plainText(degrees, 4);
}

bool says(double typed, float stored)
{
    return std::abs(typed - static_cast<double>(stored)) <= 1e-6 * std::max(1.0, std::abs(typed));
}

} // namespace

OptionsForm::OptionsForm(const Settings& stored)
    : metres(stored.Units_Meters),
      autoCorrect(stored.AutoCorrect),
      celsius(stored.Celsius_Fahren),
      pixel(stored.PixelRes == 1),
      showNewQuery(stored.ShowNewQuery),
      appearance(stored.Appearance),
      map(stored.map),
      weather(stored.Weather),
      humidity(temperatureText(stored.Humidity)),
      temperature(temperatureText(celsius ? stored.Temperature : fahrenheit(stored.Temperature))),
      resolution(lengthText(stored.SPLResolution)),
      grids{lengthText(stored.GridUnit_Room), lengthText(stored.GridUnit_Rigging),
            lengthText(stored.GridUnit_Area)},
      m_keptHumidity(humidity),
      m_keptTemperature(temperature),
      m_keptResolution(resolution),
      m_keptGrids(grids)
{
}

void OptionsForm::chooseMetres(bool chosen)
{
    if (chosen == metres)
        return;
    const double factor = chosen ? kMetresPerFoot : kFeetShownPerMetre;
    const double shown = length(resolution, m_keptResolution);
    m_keptResolution = plainText(ParseDecimalText(m_keptResolution) * factor, 3);
    resolution = plainText(shown * factor, 3);
    for (std::size_t i = 0; i < kGrids; ++i)
        m_keptGrids[i] = grids[i] = plainText(length(grids[i], m_keptGrids[i]) * factor, 2);
    metres = chosen; // the entries were typed in the other unit
}

void OptionsForm::chooseCelsius(bool chosen)
{
    if (chosen == celsius)
        return;
    const double degrees = celsiusTyped();
    celsius = chosen;
    m_keptTemperature = temperature = temperatureText(chosen ? degrees : fahrenheit(degrees));
}

void OptionsForm::choosePixel(bool chosen)
{
    if (chosen == pixel)
        return;
    pixel = chosen;
    if (!chosen)
        resolution = m_keptResolution;
    else if (const double typed = length(resolution, m_keptResolution); typed > 0)
        m_keptResolution = lengthText(typed);
}

void OptionsForm::chooseLambda8(float speedOfSound)
{
    choosePixel(false);
    const double perSecond = speedOfSound * (metres ? 1000.0 : 3280.8399);
    resolution = plainText(std::nearbyint(perSecond / 8000) / 1000, 3);
}

void OptionsForm::chooseDefaults()
{
    const Settings first;
    metres = true;
    autoCorrect = true;
    celsius = true;
    choosePixel(false);
    temperature = temperatureText(first.Temperature);
    resolution = lengthText(first.SPLResolution);
    grids = OptionsForm(first).grids;
    appearance = first.Appearance;
    map = first.map;
    weather = first.Weather;
    humidity = temperatureText(first.Humidity);
}

double OptionsForm::celsiusTyped() const
{
    const std::optional<TypedNumber> typed = typedNumber(temperature);
    const std::string_view unit = typed ? typed->unit : "?";
    for (const auto& [known, inCelsius] : kTemperatureUnits)
        if (unit == known)
            return celsiusOf(typed->value, inCelsius.value_or(celsius));
    return celsiusOf(ParseDecimalText(m_keptTemperature), celsius);
}

double OptionsForm::humidityTyped() const
{
    const std::optional<TypedNumber> typed = typedNumber(humidity);
    const bool taken = typed && (typed->unit.empty() || typed->unit == "%");
    return std::clamp<double>(taken ? typed->value : ParseDecimalText(m_keptHumidity),
                              kDriestPercent, kWettestPercent);
}

double OptionsForm::length(const std::string& text, const std::string& kept) const
{
    return std::abs(typedLength(text, metres).value_or(ParseDecimalText(kept)));
}

void OptionsForm::validateTemperature()
{
    const double degrees = withinRange(celsiusTyped());
    m_keptTemperature = temperature = temperatureText(celsius ? degrees : fahrenheit(degrees));
}

void OptionsForm::validateHumidity()
{
    m_keptHumidity = humidity = temperatureText(humidityTyped());
}

void OptionsForm::validateResolution()
{
    if (pixel)
        return;
    if (const double typed = length(resolution, m_keptResolution); typed > 0)
        m_keptResolution = resolution = lengthText(std::max(typed, 1e-6));
    else
        choosePixel(true);
}

void OptionsForm::validateGrid(std::size_t index)
{
    const double size = length(grids[index], m_keptGrids[index]);
    m_keptGrids[index] = grids[index] = size > 0 ? lengthText(std::max(size, 1e-6)) : "1";
}

Settings OptionsForm::applied(const Settings& stored) const
{
    OptionsForm valid = *this;
    valid.validateTemperature();
    valid.validateHumidity();
    valid.validateResolution();
    for (std::size_t i = 0; i < kGrids; ++i)
        valid.validateGrid(i);

    const auto number = [](const std::string& text) {
        return static_cast<float>(ParseDecimalText(text));
    };
    Settings settings = stored;
    settings.Celsius_Fahren = valid.celsius;
    settings.Temperature = static_cast<float>(withinRange(valid.celsiusTyped()));
    settings.Units_Meters = valid.metres;
    settings.AutoCorrect = valid.autoCorrect;
    if (!valid.pixel)
        settings.SPLResolution = number(valid.resolution);
    settings.PixelRes = valid.pixel ? 1 : 0;
    settings.ShowNewQuery = valid.showNewQuery;
    settings.GridUnit_Room = number(valid.grids[0]);
    settings.GridUnit_Rigging = number(valid.grids[1]);
    settings.GridUnit_Area = number(valid.grids[2]);
    settings.Weather = weather;
    settings.Humidity = number(valid.humidity);
    settings.Appearance = appearance;
    settings.map = map;
    return settings;
}

bool OptionsForm::differsFrom(const Settings& stored) const
{
    const bool sameTexts =
        // as shown: degrees Fahrenheit rarely come back to the same °C
        std::abs(celsiusTyped() - static_cast<double>(stored.Temperature)) < 5e-4 &&
        says(humidityTyped(), stored.Humidity) &&
        (pixel || says(length(resolution, m_keptResolution), stored.SPLResolution)) &&
        says(length(grids[0], m_keptGrids[0]), stored.GridUnit_Room) &&
        says(length(grids[1], m_keptGrids[1]), stored.GridUnit_Rigging) &&
        says(length(grids[2], m_keptGrids[2]), stored.GridUnit_Area);
    return !sameTexts || metres != stored.Units_Meters || autoCorrect != stored.AutoCorrect ||
           celsius != stored.Celsius_Fahren || pixel != (stored.PixelRes == 1) ||
           showNewQuery != stored.ShowNewQuery || appearance != stored.Appearance ||
           map != stored.map || weather != stored.Weather;
}

} // namespace orva
