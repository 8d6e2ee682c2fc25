// A third, made-up system is one record, one data file and its texts; everything else follows.
#include "app/state/application_state.h"
#include "document/document.h"
#include "document/setup_edit.h"
#include "engine/line_spl.h"
#include "model/contradictions.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace orva {

namespace {

constexpr std::int16_t kThird = 2;

/// Boxes like the compact ones, but both kinds, heavier, hung from fewer pins, and far louder.
SystemRecord makeThird()
{
    SystemRecord record = compactSystem();
    record.name = "arena";
    record.dataFile = "arena.dat";
    record.suffix = "A";
    record.countsKinds = true;
    record.midHighLabel = Text::MidHighCount;
    record.needsMidHigh = false;
    record.continuousDb.fill(130);
    record.newArray.types.fill(1);
    record.newArray.types[1] = record.newArray.types[3] = 0;
    record.newArray.angles.fill(2);
    record.newArray.angles[0] = 1;
    record.newArray.straight = 2;
    record.newArray.trapezoidal = 2;
    record.mostMidHigh = 10;
    record.mostBass = 2;
    record.boxes.straight.weightKg = 100;
    record.boxes.trapezoidal.weightKg = 90;
    record.cradle.PinX.resize(4);
    record.cradle.PinY.resize(4);
    record.TypeCodeGerade = 1; // codes are places in the list of types
    record.TypeCodeSchräg = 0;
    record.TypeCodeBass = 2;
    record.straightTrapezoidal = {1, 3};
    record.frameWeightKg = 50;
    record.maxWeightKg = 430;
    record.straightText = {"ARENA S", Text::SheetStraight, Text::SheetStraightWeight};
    record.trapezoidalText = {"ARENA T", Text::SheetTrapezoidal, Text::SheetTrapezoidalWeight};
    record.bassText = {"ARENA B", Text::SheetBass, Text::SheetBassWeight};
    return record;
}

} // namespace

/// In the place of the program's own list.
std::span<const SystemRecord* const> allSystems()
{
    static const SystemRecord third = makeThird();
    static const SystemRecord* const kAll[] = {&standardSystem(), &compactSystem(), &third};
    return kAll;
}

namespace {

TEST(ThirdSystem, NewProjectSetupGeometryLevelsSheetAndFile)
{
    const std::filesystem::path folder = testing::TempDir() + "orva_third_system";
    std::filesystem::create_directories(folder);
    for (const SystemRecord* system : allSystems())
        std::filesystem::copy_file(std::filesystem::path(ORVA_SOURCE_DIR "/data") /
                                       (system->name == "arena" ? "system.dat" : system->dataFile),
                                   folder / system->dataFile,
                                   std::filesystem::copy_options::overwrite_existing);
    Workspace state;
    ASSERT_TRUE(LoadSystemData(state, folder));
    makeCurrent(state, newProject(kThird));
    const LineArray& array = state.project.array;
    EXPECT_FALSE(array.fault());
    EXPECT_EQ(array.boxCount(), 4);
    EXPECT_TRUE(contradictions(array, Language::English).empty());

    // The setup's rules.
    Document document;
    document.open(newDocument(kThird, true), {""});
    EXPECT_TRUE(document.state().setup.countsKinds());
    EXPECT_EQ(document.state().setup.cmbNumSpk.items.size(), 10U);
    EXPECT_EQ(document.state().setup.PinNumber_cmb.items.size(), 4U);
    document.edit({Text::StepBoxType, 3}, [](DocumentState& changed) {
        changed.setup.chooseType(2, 0, true);
        return applySetup(changed, true);
    });
    EXPECT_EQ(document.gLineArray().GIAGetAllType()[2], 0);
    EXPECT_EQ(document.state().setup.cmbType[2].text(), "ARENA T");
    EXPECT_EQ(document.gLineArray().GIGetNumSchräg(), 3);
    document.edit({Text::StepBass}, [](DocumentState& changed) {
        changed.setup.chooseNumBass(1, true);
        return applySetup(changed, true);
    });
    EXPECT_EQ(document.gLineArray().GIAGetAllType()[0], 2);

    // Geometry and weights: two of 100 and two of 90 kg, frame 50, cable 5 + 2 x 0.5.
    EXPECT_EQ(array.GFGetSpeakerWeight(), 380);
    const std::string sheet = array.GSGetPrintout({});
    EXPECT_NE(sheet.find("ARENA T"), std::string::npos);
    EXPECT_NE(sheet.find("436kg"), std::string::npos) << sheet;
    EXPECT_NE(sheet.find("430kg"), std::string::npos) << "above its own limit";

    // Levels: its own references.
    const LevelChoice choice{{10, 10}, LevelField::Continuous, false};
    const auto levelOf = [&](std::int16_t system) {
        SelectSystem(state, system);
        return LineSPL(*state.levelKernel(), state.speakerData.BandLevel, array,
                       fohLine(state.project.room), choice, 1)[0];
    };
    EXPECT_NEAR(levelOf(kThird) - levelOf(kStandardSystem), 130 - 104.19, 1e-3)
        << "the same directivity";

    // Its file.
    const std::filesystem::path file = folder / "arena.lad";
    ASSERT_TRUE(saveProject(document.state().project, file));
    const Result<LoadedProject> loaded = loadProject(file);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->project, document.state().project);
    EXPECT_EQ(documentOf(loaded->project).setup.cmbType[0].text(), "ARENA B");
    std::filesystem::remove_all(folder);
}

} // namespace
} // namespace orva
