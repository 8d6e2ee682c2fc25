#pragma once

#include <QObject>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

namespace orva {

/// Work that takes longer than a window may wait: a function over values that runs beside it, asks
/// from time to time whether to stop, and whose end is told on the thread of this object. Ends with
/// it: what runs is stopped and waited for.
class Task final : public QObject {
public:
    using Stop = std::function<bool()>;

    explicit Task(QObject* parent = nullptr) : QObject(parent) {}
    ~Task() override;

    /// Runs `work`; then, once this thread's event loop comes to it, `done`. What ran before is
    /// stopped and waited for, and its end is not told. Where the memory did not suffice `failed`
    /// is called instead, and std::bad_alloc thrown there.
    void start(std::function<void(const Stop& stop)> work, std::function<void()> done,
               std::function<void()> failed = {});
    /// Stops what runs and waits for it; its end is not told.
    void end();
    /// Asks the work to stop.
    void stop() { m_stop = true; }
    bool stopping() const { return m_stop; }
    /// Waits for its end; false when it did not come in time.
    bool wait(int ms);
    /// Waits as long for its end and tells it at once; false when it did not come in time.
    bool tellWithin(int ms);
    bool running() const { return m_thread && m_thread->isRunning(); }

private:
    std::unique_ptr<QThread> m_thread;
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_outOfMemory = false;
    std::uint64_t m_run = 0; ///< how often one was ended
};

} // namespace orva
