#include "app/files/file_names.h"
#include "app/forms/level_choice_form.h"
#include "app/forms/options_form.h"
#include "app/state/memory_settings.h"
#include "app/state/recent_files.h"
#include "document/room_form.h"
#include "document/search_form.h"
#include "model/project.h"

#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(OptionsForm, UnitsConvertWhatIsShown)
{
    OptionsForm form{Settings{}};
    EXPECT_FALSE(form.differsFrom(Settings{}));
    form.chooseMetres(false);
    EXPECT_EQ(form.resolution, "0.328");
    EXPECT_EQ(form.grids[0] + " " + form.grids[1] + " " + form.grids[2], "16.4 1.64 3.28");
    EXPECT_TRUE(form.differsFrom(Settings{}));
    const Settings feet = form.applied(Settings{});
    EXPECT_FALSE(feet.Units_Meters);
    EXPECT_FLOAT_EQ(feet.SPLResolution, 0.328F);
    EXPECT_FLOAT_EQ(feet.GridUnit_Area, 3.28F);
    EXPECT_FALSE(OptionsForm(feet).differsFrom(feet));
    form.chooseDefaults();
    EXPECT_FALSE(form.differsFrom(Settings{}));
}

TEST(OptionsForm, TemperaturesAreClampedWithTheirSign)
{
    const std::tuple<const char*, bool, const char*, float> cases[] = {
        {"60", true, "50", 50},     {"-30,5", true, "-20", -20}, {"-7.5", true, "-7.5", -7.5F},
        {"140", false, "122", 50},  {"69.8", false, "69.8", 21}, {"-13", false, "-4", -20},
        {"68°F", true, "20", 20},   {"word", true, "21", 21},    {"-", true, "21", 21},
        {"1.234,5", true, "21", 21}};
    for (const auto& [typed, celsius, shown, stored] : cases) {
        SCOPED_TRACE(typed);
        OptionsForm form{Settings{}};
        form.chooseCelsius(celsius);
        form.temperature = typed;
        EXPECT_NEAR(form.applied(Settings{}).Temperature, stored, 1e-5);
        form.validateTemperature();
        EXPECT_EQ(form.temperature, shown);
    }
}

TEST(OptionsForm, PixelsAndResolution)
{
    OptionsForm form{Settings{}};
    form.resolution = "-0,25";
    form.validateResolution();
    EXPECT_EQ(form.resolution, "0.25");
    form.resolution = "0";
    form.validateResolution();
    EXPECT_TRUE(form.pixel);
    EXPECT_EQ(form.applied(Settings{}).PixelRes, 1);
    EXPECT_EQ(form.applied(Settings{}).SPLResolution, Settings{}.SPLResolution) << "not stored";
    form.choosePixel(false);
    EXPECT_EQ(form.resolution, "0.25") << "what was there before";
    // An eighth of c / 1000 Hz, to the nearest millimetre or thousandth of a foot.
    const std::tuple<bool, float, const char*> lambdas[] = {
        {true, 344, "0.043"},  {true, 347.9F, "0.043"}, {true, 348.01F, "0.044"},
        {false, 344, "0.141"}, {false, 340, "0.139"},   {false, 341.6F, "0.14"}};
    for (const auto& [metres, speed, shown] : lambdas) {
        form.choosePixel(true);
        form.chooseMetres(metres);
        form.chooseLambda8(speed);
        EXPECT_FALSE(form.pixel);
        EXPECT_EQ(form.resolution, shown) << speed;
    }

    const std::pair<const char*, const char*> grids[] = {
        {"-2", "2"}, {"-", "2"},        {"0", "1"},    {"10 m", "32.808399"}, {"33ft", "33"},
        {"", "33"},  {"1.234,5", "33"}, {"1e3", "33"}, {"40000", "33"}};
    for (const auto& [typed, shown] : grids) {
        form.grids[1] = typed;
        form.validateGrid(1);
        EXPECT_EQ(form.grids[1], shown) << typed;
    }
}

TEST(FileNames, StayInTheirFolderAndEndAsTheyShould)
{
    const std::pair<const char*, const char*> proposed[] = {{"Halle A/B", "Halle A-B.lad"},
                                                            {"../evil", "evil.lad"},
                                                            {"Halle 2.Abend", "Halle 2.Abend.lad"},
                                                            {"a\\b\n", "a-b-.lad"},
                                                            {"  ", ""},
                                                            {"", ""},
                                                            {"...", ""},
                                                            {" Süd   ", "Süd.lad"}};
    for (const auto& [name, file] : proposed)
        EXPECT_EQ(proposedFileName(name, ".lad"), file) << name;
    const std::pair<const char*, const char*> ended[] = {
        {"/x/Halle 2.Abend", "/x/Halle 2.Abend.lad"},
        {"/x/a.LAD", "/x/a.LAD"},
        {"/x/a.lad", "/x/a.lad"},
        {"lad", "lad.lad"}};
    for (const auto& [typed, path] : ended)
        EXPECT_EQ(withExtension(typed, ".lad"), path);
}

TEST(OptionsForm, EveryEntryIsStoredAloneAndReset)
{
    struct Case {
        const char* what;
        void (*edit)(OptionsForm&);
        void (*expect)(Settings&);
        bool resets; ///< by "Default"
    };
    const Case cases[] = {
        {"auto-correct", [](OptionsForm& form) { form.autoCorrect = false; },
         [](Settings& settings) { settings.AutoCorrect = false; }, true},
        {"system selection", [](OptionsForm& form) { form.showNewQuery = false; },
         [](Settings& settings) { settings.ShowNewQuery = false; }, false},
        {"Fahrenheit", [](OptionsForm& form) { form.chooseCelsius(false); },
         [](Settings& settings) { settings.Celsius_Fahren = false; }, true},
        {"feet, as they were typed",
         [](OptionsForm& form) {
             form.chooseMetres(false);
             form.resolution = "0.1";
             form.grids = {"5", "0.5", "1"};
         },
         [](Settings& settings) { settings.Units_Meters = false; }, true},
        {"humidity too high", [](OptionsForm& form) { form.humidity = "120 %"; },
         [](Settings& settings) { settings.Humidity = 100; }, true},
        {"weather", [](OptionsForm& form) { form.weather = true; },
         [](Settings& settings) { settings.Weather = true; }, true},
        {"temperature", [](OptionsForm& form) { form.temperature = "-7,5"; },
         [](Settings& settings) { settings.Temperature = -7.5F; }, true},
        {"temperature too high", [](OptionsForm& form) { form.temperature = "60"; },
         [](Settings& settings) { settings.Temperature = 50; }, true},
        {"resolution", [](OptionsForm& form) { form.resolution = "-0,25"; },
         [](Settings& settings) { settings.SPLResolution = 0.25F; }, true},
        {"hardly a resolution", [](OptionsForm& form) { form.resolution = "0.00000000001"; },
         [](Settings& settings) { settings.SPLResolution = 1e-6F; }, true},
        {"pixels", [](OptionsForm& form) { form.choosePixel(true); },
         [](Settings& settings) { settings.PixelRes = 1; }, true},
        {"no resolution", [](OptionsForm& form) { form.resolution = "0"; },
         [](Settings& settings) { settings.PixelRes = 1; }, true},
        {"grid of the room", [](OptionsForm& form) { form.grids[0] = "-2"; },
         [](Settings& settings) { settings.GridUnit_Room = 2; }, true},
        {"no grid", [](OptionsForm& form) { form.grids[0] = "0"; },
         [](Settings& settings) { settings.GridUnit_Room = 1; }, true},
        {"of the rigging", [](OptionsForm& form) { form.grids[1] = "0"; },
         [](Settings& settings) { settings.GridUnit_Rigging = 1; }, true},
        {"of the area", [](OptionsForm& form) { form.grids[2] = "0.000000001"; },
         [](Settings& settings) { settings.GridUnit_Area = 1e-6F; }, true}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        Settings stored;
        stored.ShowDelay = 0; // neither is an entry of the dialog
        stored.newSystem = kCompactSystem;
        Settings expected = stored;
        test.expect(expected);
        OptionsForm form(stored);
        EXPECT_FALSE(form.differsFrom(stored));
        test.edit(form);
        EXPECT_TRUE(form.differsFrom(stored));
        EXPECT_EQ(form.applied(stored), expected);
        OptionsForm opened(expected);
        EXPECT_FALSE(opened.differsFrom(expected));
        EXPECT_EQ(opened.applied(expected), expected);
        opened.chooseDefaults();
        EXPECT_EQ(opened.applied(expected), test.resets ? stored : expected);
    }
}

TEST(OptionsForm, UnitsAndPixelsComeBack)
{
    Settings feet;
    feet.Units_Meters = false;
    feet.Celsius_Fahren = false;
    feet.PixelRes = 1;
    feet.SPLResolution = 0.328F;
    feet.GridUnit_Room = 16.4F;
    feet.Temperature = 21.12345F; // 70.02221 °F
    OptionsForm form(feet);
    EXPECT_TRUE(form.pixel && !form.metres && !form.celsius);
    EXPECT_EQ(form.temperature, "70.0222");
    form.chooseMetres(false); // chosen already: nothing is converted
    form.chooseCelsius(false);
    form.choosePixel(true);
    EXPECT_FALSE(form.differsFrom(feet));
    form.chooseMetres(true); // x 0.3048
    EXPECT_EQ(form.grids[0], "5");
    form.resolution = "Pixel.";
    form.choosePixel(false);
    EXPECT_EQ(form.resolution, "0.1") << "what is kept was converted too";
    form.temperature = "50"; // (50 - 32) / 1.8
    form.chooseCelsius(true);
    EXPECT_EQ(form.temperature, "10");
    form.chooseCelsius(true);
    EXPECT_EQ(form.temperature, "10");
    form.resolution = "0.3";
    form.choosePixel(true);
    form.resolution = "0"; // what pixels leave in the box is not kept
    form.validateResolution();
    EXPECT_EQ(form.resolution, "0") << "not in use";
    form.choosePixel(false);
    EXPECT_EQ(form.resolution, "0.3");
}

TEST(RecentFiles, TheLatestFirstFiveAtMost)
{
    RecentFiles files;
    for (const char* path : {"/a", "/b", "/c", "/d", "/e", "/f"})
        files.AddToRecentFiles(path);
    EXPECT_EQ(files.paths(), (std::vector<std::string>{"/f", "/e", "/d", "/c", "/b"}));
    files.AddToRecentFiles("/C");
    EXPECT_EQ(files.paths(), (std::vector<std::string>{"/C", "/f", "/e", "/d", "/b"}));

    MemorySettings store;
    files.SaveRecentFiles(store);
    EXPECT_EQ(store.values.at("MRUFiles/0"), "/C");
    store.values["MRUFiles/3"] = "";
    RecentFiles loaded;
    loaded.LoadRecentFiles(store);
    EXPECT_EQ(loaded.paths(), (std::vector<std::string>{"/C", "/f", "/e"}));
    store.values["MRUFiles/1"] = "/c";
    loaded.LoadRecentFiles(store);
    EXPECT_EQ(loaded.paths(), (std::vector<std::string>{"/C", "/e"})) << "one file, twice";
}

TEST(AreaEntries, TheOthersFollow)
{
    const SegmentFigures area = {5, 1.7F, 20, 1.7F, 0, 15};
    const std::tuple<const char*, AreaEntry, const char*, bool, SegmentFigures> cases[] = {
        {"end x", AreaEntry::X2, "9", true, {5, 1.7F, 9, 1.7F, 0, 4}},
        {"end y", AreaEntry::Y2, "16,7", true, {5, 1.7F, 20, 16.7F, 45, 21.21F}},
        {"start x moves all", AreaEntry::X1, "6", true, {6, 1.7F, 21, 1.7F, 0, 15}},
        {"angle moves the end", AreaEntry::Angle, "90", true, {5, 1.7F, 5, 16.7F, 90, 15}},
        {"length moves the end", AreaEntry::Length, "2.5", true, {5, 1.7F, 7.5F, 1.7F, 0, 2.5F}},
        {"feet: rounded in feet",
         AreaEntry::Angle,
         "90",
         false,
         {5, 1.7F, 16.4F * 0.3048F, 54.79F * 0.3048F, 90, 15}},
        {"feet typed where metres are shown",
         AreaEntry::Length,
         "10 ft",
         true,
         {5, 1.7F, 8.05F, 1.7F, 0, 3.048F}},
    };
    for (const auto& [what, entry, typed, metres, wanted] : cases) {
        SCOPED_TRACE(what);
        const std::optional<SegmentFigures> synced = SyncAreaEntries(area, entry, typed, metres);
        ASSERT_TRUE(synced);
        for (std::size_t i = 0; i < synced->size(); ++i)
            EXPECT_NEAR((*synced)[i], wanted[i], 1e-5) << i;
    }
    for (const char* typed : {"-", "", "5 m 3", "1.234,5", "5 V"})
        EXPECT_FALSE(SyncAreaEntries(area, AreaEntry::Length, typed, true)) << typed;
    EXPECT_FALSE(SyncAreaEntries(area, AreaEntry::Angle, "5 m", true));
}

TEST(RoomForm, LengthsInFeetComeBackAsTyped)
{
    for (const double feet : {0.0, 0.01, 1.0, 23.5, 98.425, -12.345, 1000.001})
        EXPECT_EQ(shownLength(static_cast<float>(
                                  metresOf(*typedLength(std::to_string(feet), false), false)),
                              false),
                  shownLength(feet, true));
}

TEST(RoomForm, TypedLengths)
{
    struct Case {
        const char* text;
        bool inMetres;
        double shown; ///< not a number: refused
    };
    constexpr double kRefused = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {{"33ft", true, 33 * 0.3048}, {"10 m", false, 10 / 0.3048},
                          {"4'", true, 4 * 0.3048},    {"4'", false, 4},
                          {" -2,5 ", true, -2.5},      {"10000", true, 10000},
                          {"10000.1", true, kRefused}, {"33000", false, kRefused},
                          {"32808", false, 32808},     {"5 yd", true, kRefused},
                          {"m", true, kRefused},       {"99999999999999999999", true, kRefused}};
    for (const Case& one : cases) {
        const std::optional<double> length = typedLength(one.text, one.inMetres);
        ASSERT_EQ(length.has_value(), !std::isnan(one.shown)) << one.text;
        if (length) {
            EXPECT_NEAR(*length, one.shown, 1e-9) << one.text;
        }
    }
}

TEST(RoomForm, AreaUnderAPoint)
{
    Room room = newProject(0).room; // 30 x 8, areas from (5, 1.7), (20, 1.7), (18, 3.5)
    const std::tuple<const char*, double, double, std::optional<int>> cases[] = {
        {"on area 1", 10, 1.7, 1},
        {"the nearer one", 24, 2.4, 2},
        {"on area 3", 22, 5, 3},
        {"an end that two share", 20, 1.7, 1},
        {"outside the room", 31, 2, std::nullopt},
        {"below the floor", 10, -0.1, std::nullopt},
        {"farther than half the height", 0.5, 1.7, std::nullopt}};
    for (const auto& [what, x, y, number] : cases)
        EXPECT_EQ(FindAreaAt(room, x, y), number) << what;
    ASSERT_TRUE(room.GBSetPointOfRef(FloatPair{8, 0}));
    EXPECT_FALSE(FindAreaAt(room, 22.5, 5)) << "the room ends at 22 m from the reference";
    EXPECT_EQ(FindAreaAt(room, 21.5, 5), 3);
}

TEST(RoomForm, WhatLiesOutsideTheRoom)
{
    Project project = newProject(0);
    EXPECT_FALSE(outOfRoom(project.room, project.array).any());
    project.array.GBSetCradleCoord({1, 8.2F});
    project.array.GBSetBassBoxCoord({-1, 0});
    ASSERT_TRUE(project.room.GBSetFOH(FloatPair{30.5F, 2}));
    ASSERT_TRUE(project.room.GBSetAudienceArea3(SegmentFigures{0, -1, 31, 2, 0, 1}));
    ASSERT_TRUE(project.room.GBSetPointOfRef(FloatPair{0, 0}));
    OutOfRoom outside = outOfRoom(project.room, project.array);
    EXPECT_EQ(outside.cradle, (std::array{false, true}));
    EXPECT_EQ(outside.bassBox, (std::array{true, false}));
    EXPECT_EQ(outside.foh, (std::array{true, false}));
    EXPECT_EQ(outside.areas[2], (std::array{false, true, true, false}));
    project.array.GBSetBassBox(false);
    ASSERT_TRUE(project.room.GBSetNumAreas(2));
    outside = outOfRoom(project.room, project.array);
    EXPECT_EQ(outside.bassBox, (std::array{false, false})) << "not used";
    EXPECT_EQ(outside.areas[2], (std::array<bool, 4>{})) << "not in use";
}

TEST(LevelChoiceForm, AbsoluteLevelsAreBroadband)
{
    LevelChoiceForm form(Language::English);
    EXPECT_EQ(form.cmbTerzOktave.items.front().text + form.cmbTerzOktave.items[10].text +
                  form.cmbTerzOktave.items.back().text,
              " 100 Hz 1000Hz12500Hz");
    form.chooseAveraging(1);
    form.chooseBand(10);
    EXPECT_EQ(form.choice().bands.from, 9);
    EXPECT_EQ(form.choice().field, LevelField::Relative);
    for (const auto type : {LevelChoiceForm::Continuous, LevelChoiceForm::Peak}) {
        form.chooseMapType(type);
        EXPECT_FALSE(form.averagingEnabled || form.bandEnabled || form.offersBands());
        EXPECT_EQ(form.cmbTerzOktave.text(), " All avgd.");
        EXPECT_EQ(form.choice().bands.count(), kBands);
    }
    form.setLanguage(Language::German);
    EXPECT_EQ(form.Average_cmb.selected, 3);
    form.chooseMapType(LevelChoiceForm::Detailed);
    EXPECT_EQ(form.Average_cmb.selected, 1) << "the kept averaging";
    EXPECT_EQ(form.cmbTerzOktave.text(), " 1000Hz") << "the kept band";
    form.chooseAveraging(3);
    EXPECT_TRUE(form.averagingEnabled && !form.bandEnabled);
    form.chooseAveraging(0);
    EXPECT_EQ(form.choice().bands.from, 10);
}

TEST(LevelChoiceForm, ListsInAnotherLanguageKeepWhatIsSelected)
{
    const std::vector<Choice> english = {
        {"1/3 Octave "}, {"  1   Octave "}, {"  3   Octave "}, {" Broadband "}};
    for (int averaging = 0; averaging < 4; ++averaging) {
        SCOPED_TRACE(averaging);
        LevelChoiceForm form(Language::English);
        EXPECT_EQ(form.Average_cmb.selected, 0);
        EXPECT_EQ(form.cmbTerzOktave.selected, 0);
        EXPECT_TRUE(form.averagingEnabled && form.bandEnabled && form.aWeighted);
        EXPECT_EQ(form.Average_cmb.items, english);
        form.chooseBand(7);
        form.chooseAveraging(averaging);
        const bool broadband = averaging == 3;
        const LevelChoice before = form.choice();
        EXPECT_EQ(form.cmbTerzOktave.items.size(), broadband ? 23U : 22U);
        form.setLanguage(Language::German);
        ASSERT_EQ(form.Average_cmb.items.size(), 4U);
        EXPECT_EQ(form.Average_cmb.items[0].text, "1/3 Oktave ");
        EXPECT_EQ(form.Average_cmb.items[2].text, "  3   Oktaven ");
        EXPECT_EQ(form.Average_cmb.selected, averaging);
        EXPECT_EQ(form.cmbTerzOktave.items.size(), broadband ? 23U : 22U);
        EXPECT_EQ(form.cmbTerzOktave.text(), broadband ? " Alle gem." : " 500 Hz");
        EXPECT_EQ(form.choice().bands.from, before.bands.from);
        EXPECT_EQ(form.choice().bands.to, before.bands.to);
        form.setLanguage(Language::English);
        EXPECT_EQ(form.Average_cmb.items, english);
        EXPECT_EQ(form.cmbTerzOktave.text(), broadband ? " All avgd." : " 500 Hz");
    }
    LevelChoiceForm form(Language::English);
    const std::pair<int, int> bands[] = {{21, 21}, {22, 21}, {-1, 21}, {0, 0}};
    for (const auto& [chosen, selected] : bands) {
        form.chooseBand(chosen);
        EXPECT_EQ(form.cmbTerzOktave.selected, selected) << chosen;
        EXPECT_EQ(form.choice().bands.from, selected) << chosen;
    }
}

TEST(SearchForm, AllowsWhatEachStateAllows)
{
    SearchForm form;
    const auto state = [&] {
        std::string allowed;
        allowed += form.buttonEnabled() ? "b" : "-";
        allowed += form.optionsEnabled() ? "o" : "-";
        allowed += form.cancelEnabled() ? "c" : "-";
        allowed += form.acceptEnabled() ? "a" : "-";
        return std::to_string(static_cast<int>(form.caption())) + " " +
               std::to_string(static_cast<int>(form.buttonText())) + " " + allowed;
    };
    EXPECT_EQ(state(), "147 154 boc-");
    form.setCountable(false);
    EXPECT_EQ(state(), "147 154 -oc-");
    form.setCountable(true);
    form.begin();
    EXPECT_EQ(state(), "228 223 b---");
    form.stop(false, false);
    EXPECT_EQ(state(), "230 154 b-c-") << "paused before anything was tested";
    form.begin();
    form.stop(false, true);
    EXPECT_EQ(state(), "230 224 b-c-");
    form.select(3);
    EXPECT_EQ(state(), "230 224 b-ca");
    form.begin();
    EXPECT_EQ(form.selected(), -1);
    form.stop(true, true);
    EXPECT_EQ(state(), "231 224 --ca");
    EXPECT_EQ(form.selected(), 0);
}

TEST(SearchForm, TheTargetIsWhatTheDrawnLineShowsAlongTheArea)
{
    struct Case {
        FitLine line;
        double start, length, slope, level;
    };
    const Case cases[] = {{{{0, 100}, {20, 100}}, 0, 20, 0, 100},
                          {{{5, 100}, {15, 96}}, 5, 10, -0.4, 100},
                          {{{-5, 100}, {25, 94}}, 0, 20, -0.2, 99},
                          {{{-2, 92}, {2, 100}}, 0, 2, 2, 96}};
    for (const Case& one : cases) {
        const auto target = targetUnder(one.line, 20, 0.1);
        ASSERT_TRUE(target);
        EXPECT_NEAR(target->startM, one.start, 1e-9);
        EXPECT_NEAR(target->lengthM, one.length, 1e-9);
        EXPECT_NEAR(target->slopeDbPerM, one.slope, 1e-9);
        EXPECT_NEAR(target->levelDb, one.level, 1e-9);
    }
    for (const FitLine& line : {FitLine{{5, 0}, {5.09, 0}},
                                {{-3, 0}, {0.05, 9}},
                                {{19.95, 0}, {22, 0}},
                                {{3, 1}, {3, 1}}})
        EXPECT_FALSE(targetUnder(line, 20, 0.1)) << "too short";
    EXPECT_FALSE(targetUnder({{3, 1}, {3, 2}}, 20, 0)) << "upright";
}

TEST(SearchForm, NumberOfPoints)
{
    const std::pair<const char*, int> cases[] = {
        {"60.9", 60}, {"-40", 40}, {"1", 2},   {"0", 2},    {"20000", 10000}, {"1e9", 77},
        {"word", 77}, {"", 77},    {"3,9", 3}, {"x60", 77}, {" -12 m", 77},   {"-12 ", 12}};
    for (const auto& [typed, points] : cases)
        EXPECT_EQ(typedPoints(typed, 77), points) << typed;
}

} // namespace
} // namespace orva
