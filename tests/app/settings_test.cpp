#include "app/state/memory_settings.h"
#include "failing_disk.h"

#include <QSettings>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <tuple>

#include <gtest/gtest.h>
#include <unistd.h>

namespace orva {
namespace {

/// Every field away from its default.
Settings changed()
{
    return {false,
            false,
            0,
            0.328F,
            1,
            -12.5F,
            false,
            16.4F,
            1.64F,
            3.28F,
            false,
            true,
            12.5F,
            true,
            Appearance::Dark,
            {MapColours::Even, MapRange::Audience, true},
            true};
}

TEST(Settings, FirstStartAndWayThroughTheStore)
{
    MemorySettings store;
    EXPECT_EQ(LoadSettings(store), Settings{});
    SaveSettings(changed(), store);
    EXPECT_EQ(LoadSettings(store), changed());
    const std::map<std::string, std::string> texts = {{"Options/AutoCorrect", "False"},
                                                      {"Options/Units_Meters", "False"},
                                                      {"Options/ShowDelay", "0"},
                                                      {"Options/SPLResolution", "0.328"},
                                                      {"Options/PixelRes", "1"},
                                                      {"Options/Temperature", "-12.5"},
                                                      {"Options/Celsius_Fahren", "False"},
                                                      {"Options/GridUnit_Room", "16.4"},
                                                      {"Options/GridUnit_Rigging", "1.64"},
                                                      {"Options/GridUnit_Area", "3.28"},
                                                      {"Options/ShowNewQuery", "False"},
                                                      {"Options/Weather", "True"},
                                                      {"Options/Humidity", "12.5"},
                                                      {"Options/LiveMap", "True"},
                                                      {"Options/Appearance", "2"},
                                                      {"Options/MapColours", "1"},
                                                      {"Options/MapRange", "1"},
                                                      {"Options/Contours", "True"},
                                                      {"Options/NewCompact", "True"}};
    EXPECT_EQ(store.values, texts);
}

/// Puts a field back to its default.
template<auto field>
void first(Settings& settings)
{
    settings.*field = Settings{}.*field;
}

TEST(Settings, UnreadableValuesAreDefaults)
{
    const std::tuple<const char*, const char*, float> numbers[] = {
        {"Temperature", "12,5", 12.5F}, {"Temperature", "50", 50},   {"Temperature", "50.1", 21},
        {"Temperature", "-20.1", 21},   {"Temperature", "warm", 21}, {"Temperature", "", 21},
        {"Temperature", "12 °C", 21},   {"Temperature", "nan", 21},  {"Temperature", "inf", 21},
        {"Temperature", "1,2,3", 21}};
    for (const auto& [key, text, value] : numbers) {
        MemorySettings store;
        store.setValue("Options", key, text);
        EXPECT_EQ(LoadSettings(store).Temperature, value) << text;
    }
    using Texts = std::initializer_list<const char*>;
    const Texts numberless = {"0", "-1", "-0.5", "inf", "nan", "1e39", "0.5 m", "1.2.3", "x", ""};
    const Texts neither = {"true", "FALSE", "1", "0", "-1", "True ", ""};
    const Texts noDigit = {"2", "-1", "True", "x", ""};
    const std::tuple<const char*, Texts, void (*)(Settings&)> refused[] = {
        {"AutoCorrect", neither, first<&Settings::AutoCorrect>},
        {"Units_Meters", neither, first<&Settings::Units_Meters>},
        {"Celsius_Fahren", neither, first<&Settings::Celsius_Fahren>},
        {"ShowNewQuery", neither, first<&Settings::ShowNewQuery>},
        {"NewCompact", neither, first<&Settings::newSystem>},
        {"ShowDelay", noDigit, first<&Settings::ShowDelay>},
        {"PixelRes", noDigit, first<&Settings::PixelRes>},
        {"SPLResolution", numberless, first<&Settings::SPLResolution>},
        {"GridUnit_Room", numberless, first<&Settings::GridUnit_Room>},
        {"GridUnit_Rigging", numberless, first<&Settings::GridUnit_Rigging>},
        {"GridUnit_Area", numberless, first<&Settings::GridUnit_Area>}};
    for (const auto& [key, texts, reset] : refused)
        for (const char* text : texts) {
            MemorySettings store;
            SaveSettings(changed(), store);
            store.setValue("Options", key, text);
            Settings expected = changed();
            reset(expected);
            EXPECT_EQ(LoadSettings(store), expected) << key << " = " << text;
        }
    for (const auto& [text, value] : {std::pair("-20", -20.0F), {"50", 50.0F}, {"0", 0.0F}}) {
        MemorySettings store;
        store.setValue("Options", "Temperature", text);
        EXPECT_EQ(LoadSettings(store).Temperature, value);
    }
}

/// A user who has stored nothing yet. The toolkit asks only once where that is, and several
/// processes run these tests at a time.
class PlatformSettings : public testing::Test {
protected:
    PlatformSettings()
    {
        std::filesystem::remove_all(folder);
        setenv("XDG_CONFIG_HOME", folder.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    }
    ~PlatformSettings() override { std::filesystem::remove_all(folder); }

    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("orva_settings_" + std::to_string(getpid()));
};

TEST_F(PlatformSettings, TwoProgramsKeepEachOthersKeys)
{
    {
        const auto one = platformSettingsStore();
        const auto other = platformSettingsStore();
        EXPECT_EQ(LoadSettings(*one), Settings{});
        other->setValue("MRUFiles", "0", "/projects/Große Halle, Köln.lad");
        SaveSettings(changed(), *one);
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "ORVA" / "ORVA.conf"));
    EXPECT_EQ(LoadSettings(*platformSettingsStore()), changed());
    EXPECT_EQ(platformSettingsStore()->value("MRUFiles", "0"), "/projects/Große Halle, Köln.lad");
    EXPECT_EQ(platformSettingsStore()->value("MRUFiles", "1"), std::nullopt);

    std::ofstream(folder / "ORVA" / "ORVA.conf") << "[Options]\nTemperature=12,5\n";
    EXPECT_EQ(LoadSettings(*platformSettingsStore()).Temperature, 12.5F);
}

TEST_F(PlatformSettings, EveryTextComesBack)
{
    std::map<std::string, std::string> texts = {{"plain", "/a/b c.lad"},
                                                {"empty", ""},
                                                {"edges", " a "},
                                                {"list", "a,b; c=d"},
                                                {"quote", "\"a\\b\""},
                                                {"control", "\x01"
                                                            "1f\n\tg"},
                                                {"umlauts", "Große 高 😀"},
                                                {"sign", "@Invalid()"},
                                                {"per cent", "%20"},
                                                {"deep/er", "x"},
                                                {"Ärger", "y"},
                                                {"€", "z"}};
    const char* const pieces[] = {" ", ",", ";", "=", "\"", "\\", "@", "%", "\n", "\t", "\x01",
                                  "0", "a", "F", "x", "é",  "高", "[", "]", "#",  "/",  "\x7f"};
    std::mt19937 random(1);
    for (int i = 0; i < 500; ++i) {
        std::string& text = texts["random" + std::to_string(i)];
        for (std::uint32_t length = random() % 8; length > 0; --length)
            text += pieces[random() % std::size(pieces)];
    }
    const auto store = platformSettingsStore();
    (void)store->exchange([&] {
        for (const auto& [key, text] : texts)
            store->setValue("Sätze", key, text);
    });
    QSettings settings("ORVA", "ORVA"); // another reader
    for (const auto& [key, text] : texts) {
        EXPECT_EQ(platformSettingsStore()->value("Sätze", key), text) << key;
        EXPECT_EQ(settings.value(QString::fromStdString("Sätze/" + key)).toString().toStdString(),
                  text);
    }
}

TEST_F(PlatformSettings, FullDiskLeavesWhatIsStored)
{
    SaveSettings(changed(), *platformSettingsStore());
    for (const char* call : {"open", "write", "fsync", "rename", "exchange"}) {
        FailingDisk disk({{call, 0, ENOSPC}, {"exchange", 0, ENOSPC}});
        const auto store = platformSettingsStore(disk);
        const Result<Done> stored = store->exchange([&] { SaveSettings({}, *store); });
        ASSERT_FALSE(stored) << call;
        EXPECT_NE(stored.error().text().find("ORVA.conf"), std::string::npos);
        EXPECT_EQ(LoadSettings(*platformSettingsStore()), changed()) << call;
    }
}

} // namespace
} // namespace orva
