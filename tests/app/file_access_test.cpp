#include "app/files/save_over.h"
#include "app/state/application_state.h"
#include "model/project_file.h"

#include <csignal>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace orva {
namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
protected:
    const fs::path folder =
        fs::path(testing::TempDir()) /
        (std::string("orva_") + testing::UnitTest::GetInstance()->current_test_info()->name());

    void SetUp() override
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    std::size_t filesThere() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
};

TEST_F(Files, AreReplacedWholeAndKeepPermissionsAndLinks)
{
    const fs::path file = folder / "a.lad";
    const fs::path link = folder / "link.lad";
    ASSERT_TRUE(writeFile(file, "old"));
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    fs::create_symlink("a.lad", link);
    ASSERT_TRUE(writeFile(link, "new text"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(*readFile(file, 100), "new text");
    EXPECT_EQ(*readFile(file, 3), "new");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    EXPECT_EQ(filesThere(), 2U);
    fs::create_symlink("\xFE.lad", folder / "to new");
    ASSERT_TRUE(writeFile(folder / "to new", "any bytes are a name"));
    EXPECT_EQ(*readFile(folder / "\xFE.lad", 100), "any bytes are a name");
    EXPECT_TRUE(fs::is_symlink(folder / "to new"));
}

TEST_F(Files, StayAsTheyWereWhenWritingFails)
{
    const fs::path file = folder / "a.lad";
    ASSERT_TRUE(writeFile(file, "old"));
    // A disk that is full after 1000 bytes.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full = {1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    const Result<Saved> written = writeFile(file, std::string(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().what.text(), "cannot be written: write: File too large");
    EXPECT_EQ(written.error().where, file.string());
    EXPECT_EQ(*readFile(file, 100), "old");
    EXPECT_EQ(filesThere(), 1U);

    const fs::path pipe = folder / "pipe"; // what is no regular file is never replaced
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(writeFile(pipe, "x"));
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_FALSE(readFile(pipe, 10)); // without waiting for a writer
    EXPECT_FALSE(readFile("/dev/zero", 10));
    const fs::path loop = folder / "loop";
    fs::create_symlink("loop", loop);
    EXPECT_FALSE(writeFile(loop, "x"));
    EXPECT_TRUE(fs::is_symlink(loop));
    EXPECT_FALSE(writeFile(folder, "x"));
    EXPECT_FALSE(writeFile("", "x"));
    EXPECT_FALSE(writeFile(folder / "missing" / "a.lad", "x"));
    EXPECT_FALSE(readFile(folder / "missing.lad", 10));
    EXPECT_FALSE(readFile(folder, 10));
}

TEST_F(Files, WhatAnotherProgramWroteIsNotSavedOver)
{
    const std::filesystem::path file = folder / "a.lad";
    using Content = std::optional<std::string>;
    struct Case {
        Content now;                     ///< what is there
        std::optional<Content> expected; ///< what is known of it
        bool written;
    };
    for (const Case& c : {Case{"old", Content("old"), true}, Case{"theirs", Content("old"), false},
                          Case{{}, Content("old"), false}, Case{"theirs", Content(), false},
                          Case{{}, Content(), true}, Case{"theirs", {}, true}}) {
        std::filesystem::remove(file);
        if (c.now) {
            ASSERT_TRUE(writeFile(file, *c.now));
        }
        const SaveOutcome outcome = saveOver(file, "mine", c.expected);
        EXPECT_EQ(std::holds_alternative<Saved>(outcome), c.written);
        EXPECT_EQ(*contentOf(file, 100), c.written ? Content("mine") : c.now);
        if (const auto* outside = std::get_if<ChangedOutside>(&outcome)) {
            EXPECT_EQ(outside->now, c.now);
        }
    }
}

TEST_F(Files, AProjectMakesItsSystemsDataCurrent)
{
    Workspace state;
    makeCurrent(state, newProject(kStandardSystem));
    ASSERT_TRUE(saveProject(state.project, folder / "sound.lad"));
    std::string bytes = *readFile(folder / "sound.lad", kProjectFileBytes);
    bytes[582] = 0; // a boolean behind the room block
    ASSERT_TRUE(writeFile(folder / "corrupt.lad", bytes));
    EXPECT_FALSE(loadProject(folder / "corrupt.lad"));

    makeCurrent(state, newProject(kCompactSystem));
    EXPECT_EQ(state.speakerData.BandLevel[0].Continuous, 96.3);
    const Result<LoadedProject> loaded = loadProject(folder / "sound.lad");
    ASSERT_TRUE(loaded);
    makeCurrent(state, loaded->project);
    EXPECT_EQ(state.project.array, newProject(kStandardSystem).array);
    EXPECT_EQ(state.speakerData.BandLevel[0].Continuous, 108);
}

TEST_F(Files, AnImportLastsUntilTheNextSystem)
{
    ApplicationState state;
    ASSERT_FALSE(LoadSystemData(state, folder)); // nothing there
    const auto load = LoadSystemData(state, ORVA_SOURCE_DIR "/data");
    ASSERT_TRUE(load);
    EXPECT_FALSE(load->at(0).error || load->at(1).error);
    EXPECT_FALSE(load->at(0).note || load->at(1).note);
    EXPECT_EQ(state.speakerData.directivity, state.systemData[kCompactSystem]);
    SelectSystem(state, kStandardSystem);
    ASSERT_TRUE(importSpeakerData(state, ORVA_SOURCE_DIR "/data/systemsm.dat"));
    EXPECT_EQ(state.speakerData.directivity, state.systemData[kCompactSystem]);
    EXPECT_EQ(state.speakerData.BandLevel[0].Continuous, 108);
    std::ofstream(folder / "half.xhn") << "no data";
    EXPECT_TRUE(importSpeakerData(state, folder / "half.xhn")->error);
    SelectSystem(state, kStandardSystem);
    EXPECT_EQ(state.speakerData.directivity, state.systemData[kStandardSystem]);
}

} // namespace
} // namespace orva
