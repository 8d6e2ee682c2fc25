#include "engine/parallel.h"

#include <numeric>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(Parallel, EveryBlockRunsOnceOnAnyNumberOfThreads)
{
    for (const int threads : {1, 2, 7})
        for (const int count : {0, 1, 5, 1000}) {
            std::vector<int> runs(static_cast<std::size_t>(count));
            int last = 0;
            const auto caller = std::this_thread::get_id();
            const Progress progress = [&](int done, int total) {
                EXPECT_EQ(std::this_thread::get_id(), caller);
                EXPECT_EQ(total, count);
                EXPECT_GE(done, last);
                last = done;
                return true;
            };
            EXPECT_TRUE(runBlocks(count, threads, progress,
                                  [&](int i) { ++runs[static_cast<std::size_t>(i)]; }));
            EXPECT_EQ(runs, std::vector<int>(static_cast<std::size_t>(count), 1));
            EXPECT_EQ(last, count);
        }
}

TEST(Parallel, StopsWhenProgressSaysSo)
{
    std::atomic<int> runs = 0;
    EXPECT_FALSE(runBlocks(
        1000000, 3, [](int, int) { return false; }, [&](int) { ++runs; }));
    EXPECT_LT(runs, 1000000);
}

TEST(Parallel, CallersMayShareTheHelpersAndCallFromWithin)
{
    std::atomic<int> runs = 0;
    const auto inner = [&](int) { runBlocks(5, 2, {}, [&](int) { ++runs; }); };
    {
        std::vector<std::jthread> callers;
        callers.reserve(4);
        for (int i = 0; i < 4; ++i)
            callers.emplace_back([&] { EXPECT_TRUE(runBlocks(50, 3, {}, inner)); });
    }
    EXPECT_EQ(runs, 4 * 50 * 5);
}

} // namespace
} // namespace orva
