#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <QStringList>
#include <atomic>

namespace lullwick {

/// What running one child process produced.
struct ChildProcessResult {
    bool started = false;
    QString launchError; ///< the platform's reason when the child could not be started
    int exitStatus = 0;  ///< the child's own exit status (the signal number if a signal ended it)
    QByteArray standardOutput;
    QByteArray standardError;
};

/// Runs system tools: by absolute path with an argument list, never through a shell.
class ChildProcess {
public:
    ChildProcess() = delete;

    /// Starts `program` with exactly `arguments`, standard input inherited, drains both output
    /// pipes while it runs and waits for it to exit. Blocks the calling (worker) thread.
    /// Once `stop` is set, nothing more is started and a running child is killed with its group;
    /// so is a child still running when `deadline` expires (its exit status is then SIGKILL's).
    [[nodiscard]] static ChildProcessResult
    run(const QString &program, const QStringList &arguments, const std::atomic<bool> *stop = nullptr,
        QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));
};

} // namespace lullwick
