#pragma once

#include "app/state/task.h"
#include "widgets/session.h"

#include <QWidget>
#include <deque>

namespace orva::ui {

/// What reads and writes files, beside the window and one after another: a slow disk stops no hand.
/// What is done there must own what it uses.
class DiskQueue final : public QObject {
    Q_OBJECT
public:
    template<typename T>
    using Work = std::function<T()>;

    DiskQueue(Session& session, QWidget* window);

    /// `begin` makes the work once its turn has come, on this thread, from what holds then. `done`
    /// is told what it returned, before add() returns where the disk is fast.
    template<typename T>
    void add(const std::function<Work<T>()>& begin, const std::function<void(T)>& done)
    {
        const auto outcome = std::make_shared<std::optional<T>>();
        enqueue({[outcome, begin] { return [outcome, work = begin()] { *outcome = work(); }; },
                 [outcome, done] {
                     if (*outcome) // else the memory did not suffice
                         done(std::move(**outcome));
                 }});
    }
    /// Does it and waits, under the progress dialog where it takes long. None where the user did
    /// not want to wait: the work goes on, and what it finds does not count.
    template<typename T>
    std::optional<T> run(const Work<T>& work)
    {
        const auto outcome = std::make_shared<std::optional<T>>();
        const auto ended = std::make_shared<bool>(false);
        enqueue({[outcome, work] { return [outcome, work] { *outcome = work(); }; },
                 [ended] { *ended = true; }});
        return waitUntil([ended] { return *ended; }) ? std::move(*outcome) : std::nullopt;
    }
    /// Waits for all of it, under the progress dialog; false where the user did not want to.
    bool finish();

    bool busy() const { return m_working || !m_jobs.empty(); }

signals:
    void jobEnded();
    /// It takes long enough to be said; or no longer.
    void waits(bool waits);

private:
    struct Job {
        std::function<std::function<void()>()> begin;
        std::function<void()> done;
    };
    void enqueue(Job job);
    void next();
    void ended();
    bool waitUntil(const std::function<bool()>& reached);

    Session& m_session;
    QWidget* m_window;
    std::deque<Job> m_jobs; ///< the first one is the one that is done, if any is
    bool m_working = false;
    bool m_saidToWait = false;
    Task m_task; ///< last: it is waited for first
};

} // namespace orva::ui
