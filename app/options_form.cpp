#include "app/options_form.h"

#include "document/room_form.h"
#include "lang/decimal_text.h"
#include "lang/number_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orva {

namespace {

constexpr double kColdest = -20;
constexpr double kHottest = 50;
constexpr double kLargestLength = 1e6; ///< whatever is typed, it fits the store and any drawing

double fahrenheit(double celsius)
{
    return celsius * 1.8 + 32;
}

double positive(const std::string& text)
{
    return std::min(std::abs(ParseDecimalText(text)), kLargestLength);
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
      temperature(temperatureText(celsius ? stored.Temperature : fahrenheit(stored.Temperature))),
      resolution(lengthText(stored.SPLResolution)),
      grids{lengthText(stored.GridUnit_Room), lengthText(stored.GridUnit_Rigging),
            lengthText(stored.GridUnit_Area)},
      m_keptResolution(resolution)
{
}

void OptionsForm::chooseMetres(bool chosen)
{
    if (chosen == metres)
        return;
    metres = chosen;
    const double factor = chosen ? kMetresPerFoot : kFeetShownPerMetre;
    for (std::string* text : {&resolution, &m_keptResolution})
        *text = plainText(positive(*text) * factor, 3);
    for (std::string& grid : grids)
        grid = plainText(positive(grid) * factor, 2);
}

void OptionsForm::chooseCelsius(bool chosen)
{
    if (chosen == celsius)
        return;
    const double degrees = ParseDecimalText(temperature);
    celsius = chosen;
    temperature = temperatureText(chosen ? (degrees - 32) / 1.8 : fahrenheit(degrees));
}

void OptionsForm::choosePixel(bool chosen)
{
    if (chosen == pixel)
        return;
    pixel = chosen;
    if (!chosen)
        resolution = m_keptResolution;
    else if (positive(resolution) > 0)
        m_keptResolution = resolution;
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
}

double OptionsForm::celsiusTyped() const
{
    const double degrees = ParseDecimalText(temperature);
    return std::clamp(celsius ? degrees : (degrees - 32) / 1.8, kColdest, kHottest);
}

void OptionsForm::validateTemperature()
{
    temperature = temperatureText(celsius ? celsiusTyped() : fahrenheit(celsiusTyped()));
}

void OptionsForm::validateResolution()
{
    if (pixel)
        return;
    if (positive(resolution) > 0)
        m_keptResolution = resolution = lengthText(std::max(positive(resolution), 1e-6));
    else
        choosePixel(true);
}

void OptionsForm::validateGrid(std::size_t index)
{
    const double size = positive(grids[index]);
    grids[index] = size > 0 ? lengthText(std::max(size, 1e-6)) : "1";
}

Settings OptionsForm::applied(const Settings& stored) const
{
    OptionsForm valid = *this;
    valid.validateTemperature();
    valid.validateResolution();
    for (std::size_t i = 0; i < kGrids; ++i)
        valid.validateGrid(i);

    const auto number = [](const std::string& text) { return static_cast<float>(positive(text)); };
    Settings settings = stored;
    settings.Celsius_Fahren = valid.celsius;
    settings.Temperature = static_cast<float>(valid.celsiusTyped());
    settings.Units_Meters = valid.metres;
    settings.AutoCorrect = valid.autoCorrect;
    if (!valid.pixel)
        settings.SPLResolution = number(valid.resolution);
    settings.PixelRes = valid.pixel ? 1 : 0;
    settings.ShowNewQuery = valid.showNewQuery;
    settings.GridUnit_Room = number(valid.grids[0]);
    settings.GridUnit_Rigging = number(valid.grids[1]);
    settings.GridUnit_Area = number(valid.grids[2]);
    return settings;
}

bool OptionsForm::differsFrom(const Settings& stored) const
{
    const double degrees = ParseDecimalText(temperature);
    const bool sameTexts =
        // as shown: degrees Fahrenheit rarely come back to the same °C
        std::abs(degrees - (celsius ? stored.Temperature : fahrenheit(stored.Temperature))) <
            1e-3 &&
        (pixel || says(positive(resolution), stored.SPLResolution)) &&
        says(positive(grids[0]), stored.GridUnit_Room) &&
        says(positive(grids[1]), stored.GridUnit_Rigging) &&
        says(positive(grids[2]), stored.GridUnit_Area);
    return !sameTexts || metres != stored.Units_Meters || autoCorrect != stored.AutoCorrect ||
           celsius != stored.Celsius_Fahren || pixel != (stored.PixelRes == 1) ||
           showNewQuery != stored.ShowNewQuery;
}

} // namespace orva
