#include "app/files/file_access.h"
#include "app/files/temporary_file.h"
#include "failing_disk.h"

#include <fstream>
#include <functional>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace orva {
namespace {

namespace fs = std::filesystem;
using Failures = std::vector<FailingDisk::Failure>;

class FileFailures : public testing::Test {
protected:
    const fs::path folder =
        fs::path(testing::TempDir()) /
        (std::string("orva_") + testing::UnitTest::GetInstance()->current_test_info()->name());
    const fs::path a = folder / "a.lad";
    const fs::path b = folder / "b.csv";

    void SetUp() override
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
        put(a, "old a");
        put(b, "old b");
    }
    void TearDown() override { fs::remove_all(folder); }

    static void put(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }
    static std::string in(const fs::path& file) { return *readFile(file, 1000); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder))
            found.push_back(entry.path().filename());
        std::sort(found.begin(), found.end());
        return found;
    }
};

TEST_F(FileFailures, AreNamedAndLeaveTheOldFileAndNoRests)
{
    const std::tuple<Failures, const char*> cases[] = {
        {{{"lstat", 1, EACCES}}, "lstat: Permission denied"},
        {{{"open", 1, EROFS}}, "open: Read-only file system"},
        {{{"write", 1, ENOSPC}}, "write: No space left on device"},
        {{{"write", 3, EDQUOT}}, "write: Disk quota exceeded"},
        {{{"fsync", 1, ENOSPC}}, "fsync: No space left on device"},
        {{{"close", 1, EIO}}, "close: Input/output error"},
        {{{"exchange", 1, EIO}}, "rename: Input/output error"},
        {{{"exchange", 1, EINVAL}, {"rename", 1, EIO}}, "rename: Input/output error"},
        {{{"fsync", 2, EIO}}, "fsync: Input/output error"}, // of the folder
        {{{"exchange", 1, EINVAL}, {"fsync", 2, EIO}}, "fsync: Input/output error"},
        {{{"fchown", 0, EPERM}, {"fchmod", 0, EPERM}, {"renameNew", 1, EIO}}, "cannot be kept"}};
    for (const auto& [failures, named] : cases) {
        SCOPED_TRACE(named);
        FailingDisk disk(failures);
        const Result<Saved> saved = writeFile(a, "a new text", disk);
        ASSERT_FALSE(saved);
        EXPECT_EQ(saved.error().where, a);
        EXPECT_NE(saved.error().what.text().find(named), std::string::npos)
            << saved.error().what.text();
        EXPECT_EQ(in(a), "old a");
        EXPECT_EQ(names(), (std::vector<std::string>{"a.lad", "b.csv"}));
    }
    FailingDisk interrupted({{"write", 1, EINTR}, {"fsync", 1, EINTR}, {"exchange", 1, EINVAL}});
    EXPECT_TRUE(writeFile(a, "a new text", interrupted));
    EXPECT_EQ(in(a), "a new text");
    FailingDisk neither({{"exchange", 0, EINVAL}, {"link", 0, EPERM}});
    EXPECT_TRUE(writeFile(a, "newer", neither));
    EXPECT_EQ(in(a), "newer");
    EXPECT_EQ(names().size(), 2U);
    FailingDisk unread({{"read", 1, EIO}});
    EXPECT_EQ(readFile(a, 10, unread).error().what.text(),
              "cannot be read: read: Input/output error");
}

TEST_F(FileFailures, OfTheSecondFileLeaveBothOld)
{
    const fs::path fresh = folder / "new.png";
    const std::tuple<Failures, fs::path, fs::path> cases[] = {
        {{{"exchange", 2, EIO}}, a, b},
        {{{"exchange", 0, EINVAL}, {"rename", 2, EIO}}, a, b},
        {{{"renameNew", 1, EIO}, {"rename", 1, EIO}}, a, fresh},
        {{{"exchange", 1, EIO}}, fresh, b},
        {{{"close", 2, EIO}}, a, b},
        {{{"fsync", 4, EIO}}, fresh, b}};
    for (const auto& [failures, first, second] : cases) {
        SCOPED_TRACE(first.string() + " " + second.string());
        FailingDisk disk(failures);
        PendingFiles files(disk);
        ASSERT_TRUE(files.add(first, "new 1"));
        ASSERT_TRUE(files.add(second, "new 2"));
        EXPECT_FALSE(files.commit());
        EXPECT_EQ(in(a) + in(b), "old aold b");
        EXPECT_EQ(names(), (std::vector<std::string>{"a.lad", "b.csv"}));
    }
    const auto handles = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = handles();
    {
        PendingFiles dropped;
        ASSERT_TRUE(dropped.add(a, "new"));
    }
    EXPECT_EQ(names(), (std::vector<std::string>{"a.lad", "b.csv"}));
    EXPECT_EQ(handles(), before);
    PendingFiles files;
    ASSERT_TRUE(files.add(a, "new 1"));
    ASSERT_TRUE(files.add(fresh, "new 2"));
    fs::create_hard_link(a, folder / "hard");
    fs::create_symlink("new.png", folder / "soft");
    for (const fs::path& same : {a, folder / "hard", folder / "soft", folder / "." / "new.png"})
        EXPECT_FALSE(files.add(same, "twice")) << same;
    EXPECT_TRUE(files.commit());
    EXPECT_EQ(in(a) + in(folder / "soft"), "new 1new 2");
}

TEST_F(FileFailures, OfAttributesKeepTheOldFileBeside)
{
    put(folder / "a.lad.old", "older still");
    FailingDisk disk({{"fchmod", 0, EPERM}});
    const Result<Saved> saved = writeFile(a, "new", disk);
    ASSERT_TRUE(saved);
    ASSERT_EQ(saved->notes.size(), 1U);
    EXPECT_NE(saved->notes[0].text().find("the mode (fchmod: Operation not permitted)"),
              std::string::npos);
    EXPECT_NE(saved->notes[0].text().find("a.lad.old2"), std::string::npos)
        << saved->notes[0].text();
    EXPECT_EQ(in(a) + in(folder / "a.lad.old") + in(folder / "a.lad.old2"), "newolder stillold a");
    EXPECT_EQ(names().size(), 4U);
}

TEST_F(FileFailures, KeepModeOwnerAndExtendedAttributes)
{
    fs::permissions(a, fs::perms(0604));
    const bool attributes = setxattr(a.c_str(), "user.note", "kept", 4, 0) == 0;
    const bool owned = chown(a.c_str(), 4321, 1234) == 0; // where the tests may
    const mode_t mask = umask(027);
    ASSERT_TRUE(writeFile(a, "new"));
    ASSERT_TRUE(writeFile(folder / "new", "new"));
    umask(mask);
    struct stat found = {};
    ASSERT_EQ(stat(a.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777, 0604U);
    EXPECT_EQ(found.st_uid == 4321 && found.st_gid == 1234, owned);
    std::string value(4, ' ');
    EXPECT_EQ(getxattr(a.c_str(), "user.note", value.data(), 4) == 4 && value == "kept",
              attributes);
    EXPECT_EQ(fs::status(folder / "new").permissions(), fs::perms(0640));
}

TEST_F(FileFailures, RestsOfKilledSavesGoWithTheNextOne)
{
    const pid_t killed = fork();
    if (killed == 0) {
        PendingFiles files;
        _exit(files.add(a, "half") ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(killed, &status, 0), killed);
    ASSERT_EQ(status, 0);
    const std::string rest = temporaryName("a.lad", killed, 0);
    ASSERT_TRUE(fs::exists(folder / rest));
    std::string wrongCheck = rest;
    wrongCheck.back() = rest.back() == 'Z' ? 'A' : static_cast<char>(rest.back() + 1);
    PendingFiles others; // a save of this process under way
    ASSERT_TRUE(others.add(a, "others"));
    const std::string kept[] = {wrongCheck,
                                "a.lad.backup",
                                "a.lad.123456",
                                temporaryName("a.lad", getppid(), 0),
                                temporaryName("x.lad", killed, 0),
                                temporaryName("a.lad", getpid(), 0)};
    for (const std::string& name : kept)
        std::ofstream(folder / name, std::ios::app);
    ASSERT_TRUE(writeFile(a, "new"));
    EXPECT_FALSE(fs::exists(folder / rest));
    for (const std::string& name : kept)
        EXPECT_TRUE(fs::exists(folder / name)) << name;
    EXPECT_FALSE(others.commit()) << "somebody has written it meanwhile";
    EXPECT_EQ(in(a), "new");
    EXPECT_EQ(temporaryWriter(temporaryName("a", 4'194'304, 9), "a"), 4'194'304);
}

} // namespace
} // namespace orva
