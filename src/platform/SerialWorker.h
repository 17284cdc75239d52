#pragma once

#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>
#include <atomic>
#include <utility>

namespace lullwick {

/// The executor of a serialised service: one worker thread that runs calls one at a time, in the
/// order they were requested, never on the UI thread. Destroying it ends the children its calls
/// started and lets the queued calls fall through without starting any, so a window that goes
/// away never waits for a tool that does not exit.
class SerialWorker {
public:
    SerialWorker() { m_pool.setMaxThreadCount(1); }
    ~SerialWorker()
    {
        m_stop.store(true);
        m_pool.waitForDone();
    }
    Q_DISABLE_COPY_MOVE(SerialWorker)

    /// Queues `call`; it receives the stop flag to hand on to `ChildProcess::run`.
    template <typename Call> auto run(Call call)
    {
        return QtConcurrent::run(&m_pool, [this, call = std::move(call)]() mutable { return call(m_stop); });
    }

private:
    std::atomic<bool> m_stop{false};
    QThreadPool m_pool;
};

} // namespace lullwick
