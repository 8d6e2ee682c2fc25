#include "app/state/settings.h"

#include "app/state/memory_settings.h"
#include "model/systems.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace orva {

namespace {

constexpr std::string_view kSection = "Options";

/// Reads and writes one field; the order of the table is the order in the store.
struct ReadField {
    const SettingsStore& store;

    void operator()(std::string_view key, bool& field) const
    {
        const std::optional<std::string> text = store.value(kSection, key);
        if (text == "True" || text == "False")
            field = text == "True";
    }
    void operator()(std::string_view key, std::int16_t& field) const
    {
        const std::optional<std::string> text = store.value(kSection, key);
        if (text == "0" || text == "1")
            field = text == "1" ? 1 : 0;
    }
    template<typename Choice>
    void operator()(std::string_view key, Choice& field, Choice last) const
    {
        const std::string text = store.value(kSection, key).value_or("");
        int number = -1;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc() && end == text.data() + text.size() && number >= 0 &&
            number <= static_cast<int>(last))
            field = static_cast<Choice>(number);
    }
    void operator()(std::string_view key, float& field, float low, float high) const
    {
        std::string text = store.value(kSection, key).value_or("");
        std::replace(text.begin(), text.end(), ',', '.');
        float number = 0;
        const char* end = text.data() + text.size();
        const auto [parsed, error] = std::from_chars(text.data(), end, number);
        if (error == std::errc() && parsed == end && number >= low && number <= high)
            field = number;
    }
};

struct WriteField {
    SettingsStore& store;

    void operator()(std::string_view key, bool field) const
    {
        store.setValue(kSection, key, field ? "True" : "False");
    }
    void operator()(std::string_view key, std::int16_t field) const
    {
        store.setValue(kSection, key, std::to_string(field));
    }
    template<typename Choice>
    void operator()(std::string_view key, Choice field, Choice) const
    {
        store.setValue(kSection, key, std::to_string(static_cast<int>(field)));
    }
    void operator()(std::string_view key, float field, float, float) const
    {
        std::array<char, 64> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), field,
                                       std::chars_format::fixed)
                             .ptr;
        store.setValue(kSection, key, {digits.data(), end});
    }
};

template<typename Record, typename Field>
void forEachField(Record& settings, const Field& field)
{
    constexpr float kAboveZero = std::numeric_limits<float>::min();
    constexpr float kLargest = std::numeric_limits<float>::max();
    field("AutoCorrect", settings.AutoCorrect);
    field("Units_Meters", settings.Units_Meters);
    field("ShowDelay", settings.ShowDelay);
    field("SPLResolution", settings.SPLResolution, kAboveZero, kLargest);
    field("PixelRes", settings.PixelRes);
    field("Temperature", settings.Temperature, kColdestC, kHottestC);
    field("Celsius_Fahren", settings.Celsius_Fahren);
    field("GridUnit_Room", settings.GridUnit_Room, kAboveZero, kLargest);
    field("GridUnit_Rigging", settings.GridUnit_Rigging, kAboveZero, kLargest);
    field("GridUnit_Area", settings.GridUnit_Area, kAboveZero, kLargest);
    field("ShowNewQuery", settings.ShowNewQuery);
    field("Weather", settings.Weather);
    field("Humidity", settings.Humidity, kDriestPercent, kWettestPercent);
    field("LiveMap", settings.LiveMap);
    field("Appearance", settings.Appearance, Appearance::Desktop);
    field("MapColours", settings.map.colours, MapColours::Even);
    field("MapRange", settings.map.range, MapRange::Audience);
    field("Contours", settings.map.contours);
}

} // namespace

bool sameButForLooks(const Settings& a, const Settings& b)
{
    Settings other = b;
    other.Appearance = a.Appearance;
    other.map = a.map;
    other.LiveMap = a.LiveMap;
    return a == other;
}

Settings LoadSettings(const SettingsStore& store)
{
    Settings settings;
    forEachField(settings, ReadField{store});
    bool compact = false;
    ReadField{store}("NewCompact", compact);
    settings.newSystem = compact ? kCompactSystem : kStandardSystem;
    return settings;
}

void SaveSettings(const Settings& settings, SettingsStore& store)
{
    forEachField(settings, WriteField{store});
    const bool compact = settings.newSystem == kCompactSystem;
    WriteField{store}("NewCompact", compact);
}

void SaveChangedSettings(const Settings& settings, const Settings& stored, SettingsStore& store)
{
    MemorySettings before;
    MemorySettings now;
    SaveSettings(stored, before);
    SaveSettings(settings, now);
    for (const auto& [place, text] : now.values) {
        const std::string_view key = std::string_view(place).substr(place.find('/') + 1);
        if (before.values.at(place) != text || !store.value(kSection, key))
            store.setValue(kSection, key, text);
    }
}

} // namespace orva
