#include "app/files/log.h"
#include "app/files/recovery.h"
#include "app/files/temporary_file.h"
#include "app/state/memory_settings.h"
#include "app/state/recent_files.h"
#include "document/setup_edit.h"

#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orva {
namespace {

namespace fs = std::filesystem;

class Recovery : public testing::Test {
protected:
    void SetUp() override { fs::remove_all(folder.parent_path()); }
    void TearDown() override { fs::remove_all(folder.parent_path()); }

    static Unsaved unsaved(float x)
    {
        Unsaved made{newDocument(kCompactSystem, true), {"/a folder/club.lad", "held"}};
        made.state.project.array.GBSetCradleCoord({x, 5});
        return made;
    }
    /// Another process writes its file and is killed at once.
    void leave(float x) const
    {
        const pid_t killed = fork();
        if (killed == 0) {
            auto* file = new RecoveryFile(folder);
            _exit(file->write(recoveryBytes(unsaved(x))) ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(killed, &status, 0), killed);
        ASSERT_EQ(status, 0);
    }
    std::size_t files() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }

    fs::path folder = fs::path(testing::TempDir()) / ("recovery" + std::to_string(getpid())) / "r";
};

TEST_F(Recovery, OffersWhatProcessesLeftThatAreGoneAndToOneOnly)
{
    leave(2);
    leave(3);
    RecoveryFile own(folder); // of a window that lives
    ASSERT_TRUE(own.write(recoveryBytes(unsaved(4))));
    Found found = findLeftBehind(folder);
    ASSERT_EQ(found.left.size(), 2U);
    for (const LeftBehind& left : found.left) {
        const float x = left.unsaved.state.project.array.GFAGetCradleCoord()[0];
        EXPECT_TRUE(x == 2 || x == 3);
        EXPECT_EQ(left.unsaved.state, unsaved(x).state);
        EXPECT_EQ(left.unsaved.file, (DocumentFile{"/a folder/club.lad", "held"}));
    }
    EXPECT_TRUE(findLeftBehind(folder).left.empty()) << "they are being offered";
    removeLeftBehind(found.left.front());
    found = {};
    EXPECT_EQ(findLeftBehind(folder).left.size(), 1U) << "left for later";
}

TEST_F(Recovery, AProperEndLeavesNothing)
{
    {
        RecoveryFile file(folder);
        ASSERT_TRUE(file.write(recoveryBytes(unsaved(2))));
        ASSERT_TRUE(file.write(recoveryBytes(unsaved(3))));
        EXPECT_EQ(files(), 2U) << "the file and its lock";
        file.remove();
        EXPECT_EQ(files(), 0U);
        ASSERT_TRUE(file.write(recoveryBytes(unsaved(4))));
    }
    EXPECT_EQ(files(), 0U);
    for (const std::string& rest :
         {std::string("1-2-0.lock"), temporaryName("1-2-0.recovery", 4'194'304, 0)})
        std::ofstream(folder / rest) << "rest";
    EXPECT_TRUE(findLeftBehind(folder).left.empty());
    EXPECT_EQ(files(), 0U) << "rests of processes that wrote nothing whole";
}

TEST_F(Recovery, DamagedFilesAreSetAside)
{
    const std::string whole = recoveryBytes(unsaved(2));
    ASSERT_TRUE(readRecovery(whole, "r"));
    std::mt19937 random(1);
    for (int i = 0; i < 400; ++i) {
        std::string damaged = whole;
        if (i % 2 == 0) {
            damaged.resize(random() % whole.size());
        } else {
            char& byte = damaged[random() % whole.size()];
            byte = static_cast<char>(byte ^ (1 << random() % 8));
        }
        EXPECT_FALSE(readRecovery(damaged, "r")) << i;
    }
    leave(2);
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".recovery")
            fs::resize_file(entry.path(), 100);
    const Found found = findLeftBehind(folder);
    EXPECT_TRUE(found.left.empty());
    ASSERT_EQ(found.damaged.size(), 1U);
    EXPECT_EQ(files(), 1U);
    EXPECT_TRUE(fs::directory_iterator(folder)->path().string().ends_with(".recovery.damaged"));
}

TEST_F(Recovery, AFolderThatCannotBeSaysWhy)
{
    fs::create_directories(folder.parent_path());
    std::ofstream(folder) << "a file";
    RecoveryFile file(folder);
    const Result<Done> written = file.write(recoveryBytes(unsaved(2)));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().where, folder);
}

TEST_F(Recovery, TheLogStaysBelowItsSizeAndKeepsTheLastLines)
{
    const fs::path file = folder / "orva.log";
    LogFile one(file);
    LogFile two(file);
    const std::string line(1000, 'x');
    for (int i = 0; i < 3000; ++i)
        (i % 2 == 0 ? one : two).write(std::to_string(i) + line);
    EXPECT_EQ(files(), 2U);
    EXPECT_LE(fs::file_size(file) + fs::file_size(file.string() + ".1"), LogFile::kMostBytes);
    EXPECT_GT(fs::file_size(file.string() + ".1"), LogFile::kMostBytes / 3);
    std::ifstream in(file);
    std::string last;
    for (std::string read; std::getline(in, read);)
        last = read;
    EXPECT_EQ(last.substr(0, 5), "2999x");
    const fs::path own = folder / "own.log";
    LogFile alone(own);
    for (int i = 0; i < 1500; ++i)
        alone.write(line);
    EXPECT_LT(fs::file_size(own), LogFile::kMostBytes / 2);
}

TEST(SharedSettings, TwoProgramsKeepWhatTheOtherStored)
{
    MemorySettings store;
    Settings one;
    Settings two;
    SaveSettings(one, store);
    one.Temperature = 30;
    SaveChangedSettings(one, Settings{}, store);
    two.Units_Meters = false;
    SaveChangedSettings(two, Settings{}, store);
    const Settings both = LoadSettings(store);
    EXPECT_EQ(both.Temperature, 30);
    EXPECT_FALSE(both.Units_Meters);

    RecentFiles first;
    RecentFiles second;
    first.change(store, [](RecentFiles& files) { files.AddToRecentFiles("/a.lad"); });
    second.change(store, [](RecentFiles& files) { files.AddToRecentFiles("/b.lad"); });
    EXPECT_EQ(second.paths(), (std::vector<std::string>{"/b.lad", "/a.lad"}));
}

} // namespace
} // namespace orva
