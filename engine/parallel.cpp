#include "engine/parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace orva {

namespace {
constexpr int kMostThreads = 256;
} // namespace

int coreCount()
{
    return static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
}

bool runBlocks(int count, int threads, const Progress& progress,
               const std::function<void(int)>& work)
{
    std::atomic<int> next = 0;
    std::atomic<int> done = 0;
    std::atomic<bool> stopped = false;
    const auto takeOne = [&] {
        if (stopped || next >= count)
            return false;
        const int block = next++;
        if (block >= count)
            return false;
        work(block);
        ++done;
        return true;
    };
    {
        std::vector<std::jthread> helpers;
        try {
            for (int i = 1; i < std::min({threads, count, kMostThreads}); ++i)
                helpers.emplace_back([&] {
                    while (takeOne()) {
                    }
                });
        } catch (const std::system_error&) {
            // The machine has no more threads to give: those that run do the work.
        }
        int told = 0;
        while (takeOne())
            if (told = done; progress && !progress(told, count))
                stopped = true;
        helpers.clear(); // waits for them
        if (!stopped && told < done && progress)
            stopped = !progress(done, count);
    }
    return !stopped && done == count;
}

} // namespace orva
