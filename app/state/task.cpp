#include "app/state/task.h"

#include <QCoreApplication>
#include <new>

namespace orva {

Task::~Task()
{
    end();
}

void Task::end()
{
    if (!m_thread)
        return;
    ++m_run; // its end may be on its way already
    m_stop = true;
    m_thread->wait();
    m_thread.reset();
}

void Task::start(std::function<void(const Stop&)> work, std::function<void()> done,
                 std::function<void()> failed)
{
    end();
    m_stop = false;
    m_outOfMemory = false;
    m_thread.reset(QThread::create([this, work = std::move(work)] {
        try {
            work([this] { return m_stop.load(); });
        } catch (const std::bad_alloc&) {
            m_outOfMemory = true;
        }
    }));
    connect(m_thread.get(), &QThread::finished, this,
            [this, run = m_run, done = std::move(done), failed = std::move(failed)] {
                if (run != m_run)
                    return;
                m_thread->wait();
                if (!m_outOfMemory)
                    return done();
                if (failed)
                    failed();
                throw std::bad_alloc();
            });
    m_thread->start();
}

bool Task::wait(int ms)
{
    return !m_thread || m_thread->wait(static_cast<unsigned long>(ms));
}

bool Task::tellWithin(int ms)
{
    if (!wait(ms))
        return false;
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    return true;
}

} // namespace orva
