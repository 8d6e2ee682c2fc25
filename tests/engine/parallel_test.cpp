#include "engine/parallel.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
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
                EXPECT_GT(done, last);
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
    for (const int most : {1, 4, 1000}) { // alone the caller stops at once
        int runs = 0;
        EXPECT_FALSE(runBlocks(
            1000, 1, [most](int done, int) { return done < most; }, [&](int) { ++runs; }));
        EXPECT_EQ(runs, most);
    }
}

TEST(Parallel, ItsHelpersStopToo)
{
    // Helpers wait in their first block until the caller was told, so the caller gets one however
    // late it comes; then each block lasts, so they cannot run through all before they stop.
    constexpr int kBlocks = 10000;
    const auto caller = std::this_thread::get_id();
    std::atomic<bool> told = false;
    std::atomic<int> runs = 0;
    const Progress stop = [&](int, int) {
        told = true;
        told.notify_all();
        return false;
    };
    EXPECT_FALSE(runBlocks(kBlocks, 3, stop, [&](int) {
        ++runs;
        if (std::this_thread::get_id() == caller)
            return;
        told.wait(false);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }));
    EXPECT_LT(runs, kBlocks);
}

TEST(Parallel, AsManyThreadsAsAskedForWorkAtOnce)
{
    // Each block waits until all threads are in one: the second call must wake those of the first.
    for (const int threads : {3, 3, 2, 4}) {
        std::mutex mutex;
        std::condition_variable came;
        int inside = 0;
        int together = 0;
        EXPECT_TRUE(runBlocks(threads, threads, {}, [&](int) {
            std::unique_lock lock(mutex);
            ++inside;
            came.notify_all();
            // so long only where a thread is missing
            together +=
                came.wait_for(lock, std::chrono::seconds(20), [&] { return inside == threads; });
        }));
        EXPECT_EQ(together, threads);
    }
    // Four helpers stay by now: they must not all join a caller that wants one.
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    EXPECT_TRUE(runBlocks(40, 2, {}, [&](int) {
        const int now = ++inside;
        for (int before = most; now > before && !most.compare_exchange_weak(before, now);) {
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        --inside;
    }));
    EXPECT_LE(most, 2);
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

TEST(Parallel, WhatABlockThrowsComesToTheCallerOnceAllHaveEnded)
{
    for (const int threads : {1, 3}) {
        std::atomic<int> inside = 0;
        EXPECT_THROW(runBlocks(200, threads, {},
                               [&](int block) {
                                   ++inside;
                                   if (block == 20)
                                       throw std::bad_alloc();
                                   std::this_thread::sleep_for(std::chrono::microseconds(100));
                                   --inside;
                               }),
                     std::bad_alloc);
        EXPECT_EQ(inside, 1) << "the block that threw";
        EXPECT_TRUE(runBlocks(20, threads, {}, [](int) {}));
    }
}

} // namespace
} // namespace orva
