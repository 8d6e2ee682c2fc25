#include "engine/parallel.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace orva {

namespace {

/// Threads that stay from call to call: waking one takes two thirds of the time of starting one.
class Helpers {
public:
    static Helpers& all()
    {
        static Helpers helpers;
        return helpers;
    }

    /// Does `work` on this thread, and on up to `most` others while it does. All have ended when it
    /// returns; one that is late does not begin.
    void share(int most, const std::function<void()>& work)
    {
        Job job{&work, most};
        std::unique_lock lock(m_mutex);
        grow(most);
        const auto place = m_jobs.insert(m_jobs.end(), &job);
        lock.unlock();
        m_given.notify_all();
        work();
        lock.lock();
        m_jobs.erase(place);
        m_ended.wait(lock, [&job] { return job.inside == 0; });
    }

private:
    struct Job {
        const std::function<void()>* work;
        int wanted; ///< threads that may yet join in
        int inside = 0;
    };

    void grow(int most)
    {
        try {
            while (m_threads.size() < static_cast<std::size_t>(most))
                m_threads.emplace_back([this](const std::stop_token& stop) { serve(stop); });
        } catch (const std::system_error&) {
            // The machine has no more threads to give: those that run do the work.
        }
    }

    void serve(const std::stop_token& stop)
    {
        std::unique_lock lock(m_mutex);
        const auto isWanted = [](const Job* job) { return job->wanted > 0; };
        auto place = m_jobs.end();
        const auto found = [&] {
            place = std::find_if(m_jobs.begin(), m_jobs.end(), isWanted);
            return place != m_jobs.end();
        };
        while (m_given.wait(lock, stop, found)) {
            Job& job = **place;
            --job.wanted;
            ++job.inside;
            lock.unlock();
            (*job.work)();
            lock.lock();
            if (--job.inside == 0)
                m_ended.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable_any m_given;
    std::condition_variable m_ended;
    std::list<Job*> m_jobs;
    std::vector<std::jthread> m_threads; ///< the last member: they end before the others do
};

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
    std::mutex failing;
    std::exception_ptr failure;
    int told = 0;
    const auto caller = std::this_thread::get_id();
    const auto takeAll = [&]() noexcept { // the others still use what is here
        const bool tells = progress && std::this_thread::get_id() == caller;
        try {
            while (takeOne())
                if (tells && !progress(told = done, count))
                    stopped = true;
        } catch (...) {
            const std::scoped_lock lock(failing);
            failure = std::current_exception();
            stopped = true;
        }
    };
    const int helpers = std::min({threads, count, kMostThreads}) - 1;
    if (helpers > 0)
        Helpers::all().share(helpers, takeAll);
    else
        takeAll();
    if (failure)
        std::rethrow_exception(failure);
    if (!stopped && told < done && progress)
        stopped = !progress(done, count);
    return !stopped && done == count;
}

} // namespace orva
