#include "main/disk_queue.h"

#include "shell/progress_dialog.h"

#include <QEventLoop>

namespace orva::ui {

namespace {

constexpr int kFastMs = 60; ///< shorter than anyone notices

} // namespace

DiskQueue::DiskQueue(Session& session, QWidget* window)
    : QObject(window), m_session(session), m_window(window)
{
}

void DiskQueue::enqueue(Job job)
{
    m_jobs.push_back(std::move(job));
    if (m_working)
        return; // its turn will come
    next();
    if (!m_task.tellWithin(kFastMs) && !m_saidToWait) {
        m_saidToWait = true;
        emit waits(true);
    }
}

void DiskQueue::next()
{
    m_working = true;
    const auto told = [this] { ended(); };
    m_task.start([work = m_jobs.front().begin()](const Task::Stop&) { work(); }, told, told);
}

/// What its end brings may add more, wait for that, and end this queue's work meanwhile.
void DiskQueue::ended()
{
    const Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    m_working = false;
    job.done();
    if (!m_working && !m_jobs.empty())
        next();
    if (!busy() && std::exchange(m_saidToWait, false))
        emit waits(false);
    emit jobEnded();
}

bool DiskQueue::finish()
{
    return waitUntil([this] { return !busy(); });
}

bool DiskQueue::waitUntil(const std::function<bool()>& reached)
{
    if (reached())
        return true;
    ProgressDialog dialog(m_session, m_window);
    dialog.beginWaiting(m_session.text(Text::WaitForDisk));
    QEventLoop loop;
    connect(this, &DiskQueue::jobEnded, &loop, [&] {
        if (reached())
            loop.quit();
    });
    connect(&dialog, &ProgressDialog::aborted, &loop, &QEventLoop::quit);
    dialog.show();
    loop.exec();
    return reached();
}

} // namespace orva::ui
