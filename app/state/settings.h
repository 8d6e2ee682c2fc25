#pragma once

#include "app/files/disk.h"
#include "drawing/drawing_options.h"
#include "engine/acoustics.h"
#include "model/result.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orva {

/// Colours and style of the window: the given ones, light, dark, or as the desktop is.
enum class Appearance : std::int16_t { Classic, Light, Dark, Desktop };

/// The user's preferences, named by their keys in the store. Lengths are in the unit in force when
/// they were applied.
struct Settings {
    bool AutoCorrect = true;
    bool Units_Meters = true;
    std::int16_t ShowDelay = 1;                           ///< 0 or 1
    float SPLResolution = 0.1F;                           ///< cell of the map, above 0
    std::int16_t PixelRes = 0;                            ///< 1: cells are pixels
    float Temperature = 21;                               ///< °C, -20..50
    bool Celsius_Fahren = true;                           ///< shown in °C
    float GridUnit_Room = DrawingOptions{}.GridUnit_Room; ///< above 0, as the next two
    float GridUnit_Rigging = DrawingOptions{}.GridUnit_Rigging;
    float GridUnit_Area = DrawingOptions{}.GridUnit_Area;
    bool ShowNewQuery = true;
    bool Weather = false; ///< the air absorbs as at temperature and humidity
    float Humidity = static_cast<float>(kHumidityPercent); ///< percent, 1..100
    bool LiveMap = false;                                  ///< the map follows every edit
    orva::Appearance Appearance = orva::Appearance::Classic;
    MapStyle map;               ///< stored as "MapColours", "MapRange" and "Contours"
    std::int16_t newSystem = 0; ///< of the next new project; stored as "NewCompact"

    friend bool operator==(const Settings&, const Settings&) = default;
};

/// Whether two differ in nothing that is calculated or measured, only in what it looks like.
bool sameButForLooks(const Settings& a, const Settings& b);

/// Where text values are kept by section and key.
class SettingsStore {
public:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    virtual ~SettingsStore() = default;

    /// None where the key is missing.
    virtual std::optional<std::string> value(std::string_view section,
                                             std::string_view key) const = 0;
    virtual void setValue(std::string_view section, std::string_view key,
                          std::string_view text) = 0;
    /// Reads what others wrote, runs `change` and brings what it set to where it is kept, with
    /// nobody between.
    virtual Result<Done> exchange(const std::function<void()>& change)
    {
        change();
        return flush();
    }
    /// Brings what was set to where it is kept; an error says why it could not.
    virtual Result<Done> flush() = 0;
};

/// The platform's store of this user for organisation and application "ORVA". Programs that use it
/// at the same time keep each other's keys; what cannot be stored leaves the stored ones whole.
std::unique_ptr<SettingsStore> platformSettingsStore(Disk& disk = systemDisk());

/// Renames the platform's store of this user, if there is one, so that the next start is a first
/// one; its new name, empty where there was none.
Result<std::string> setSettingsAside();

/// A missing or unreadable value, or one outside its range, is the default. Numbers are read with
/// "." or ",".
Settings LoadSettings(const SettingsStore& store);

/// Writes every key. Numbers are written with ".".
void SaveSettings(const Settings& settings, SettingsStore& store);
/// Writes the keys of what differs from `stored`, and those that the store lacks: what another
/// program has written meanwhile stays.
void SaveChangedSettings(const Settings& settings, const Settings& stored, SettingsStore& store);

} // namespace orva
