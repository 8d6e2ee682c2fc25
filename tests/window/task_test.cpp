#include "window_fixture.h"

#include <thread>

namespace orva::ui {
namespace {

void rest(int ms)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

TEST(Tasks, OnlyTheEndOfTheLastOneIsTold)
{
    Task task;
    int told = 0;
    for (int run = 1; run <= 3; ++run) {
        task.start([](const Task::Stop&) {}, [&told, run] { told = told * 10 + run; });
        ASSERT_TRUE(task.wait(10'000)); // its end is on its way
    }
    EXPECT_TRUE(comes([&] { return told != 0; }, 5000));
    EXPECT_EQ(told, 3);
    task.start([](const Task::Stop&) {}, [&told] { told = -1; });
    ASSERT_TRUE(task.wait(10'000));
    task.end();
    QApplication::processEvents();
    EXPECT_EQ(told, 3);
}

class Disk : public Window {
protected:
    DiskQueue& disk() { return window->findChild<ProjectCommands*>()->disk(); }
    /// A job that takes `ms` and gives its number.
    void add(int number, int ms)
    {
        disk().add<int>(
            [this, number, ms] {
                begun.push_back(number);
                return [number, ms] {
                    rest(ms);
                    return number;
                };
            },
            [this](int done) { ended.push_back(done); });
    }
    std::vector<int> begun;
    std::vector<int> ended;
};

TEST_F(Disk, JobsRunOneAfterAnotherBesideTheWindow)
{
    add(1, 0);
    EXPECT_EQ(ended, std::vector{1}) << "a fast disk is waited for";
    add(2, 300);
    EXPECT_EQ(ended, std::vector{1});
    EXPECT_EQ(control<QLabel>("lblStatusText")->text(), "Waiting for the disk...");
    add(3, 0);
    EXPECT_EQ(begun, (std::vector{1, 2})) << "its turn has not come";
    EXPECT_TRUE(disk().finish());
    EXPECT_EQ(ended, (std::vector{1, 2, 3}));
    EXPECT_EQ(control<QLabel>("lblStatusText")->text(), "");
    EXPECT_EQ(disk().run<int>([] { return 4; }), 4);
}

TEST_F(Disk, WhatIsGivenUpDoesNotCount)
{
    QTimer::singleShot(100, [] {
        auto* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    const std::optional<int> given = disk().run<int>([] {
        rest(400);
        return 1;
    });
    EXPECT_FALSE(given);
    EXPECT_TRUE(disk().busy());
    add(2, 0);
    EXPECT_TRUE(disk().finish());
    EXPECT_EQ(ended, std::vector{2});
}

TEST(Tasks, MemoryThatDoesNotSufficeIsThrownWhereTheTaskBelongs)
{
    Task task;
    int failed = 0;
    const auto done = [] { FAIL() << "there is nothing to show"; };
    task.start([](const Task::Stop&) { throw std::bad_alloc(); }, done, [&] { ++failed; });
    EXPECT_THROW(task.tellWithin(10'000), std::bad_alloc);
    EXPECT_EQ(failed, 1);
    bool whole = false;
    task.start([](const Task::Stop&) {}, [&] { whole = true; });
    EXPECT_TRUE(task.tellWithin(10'000));
    EXPECT_TRUE(whole);
}

} // namespace
} // namespace orva::ui
