#include "platform/ChildProcess.h"

#include <QDir>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <signal.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace lullwick {

namespace {

// How often a wait looks at the stop flag; short enough that a closing window never notices.
constexpr int stopPollMs = 50;

bool stopRequested(const std::atomic<bool> *stop)
{
    return stop && stop->load();
}

void killWithGroup(QProcess &process)
{
#ifdef Q_OS_UNIX
    // The child leads its own group, so helpers it started (a script's `sleep`) go with it.
    if (const qint64 pid = process.processId(); pid > 0)
        ::kill(-pid_t(pid), SIGKILL);
#endif
    process.kill();
}

} // namespace

ChildProcessResult ChildProcess::run(const QString &program, const QStringList &arguments,
                                     const std::atomic<bool> *stop, QDeadlineTimer deadline)
{
    ChildProcessResult result;
    // A relative name would make QProcess search PATH; the tools live at fixed places.
    if (!QDir::isAbsolutePath(program)) {
        result.launchError = QStringLiteral("%1 is not an absolute path").arg(program);
        return result;
    }
    if (stopRequested(stop)) {
        result.launchError = QStringLiteral("the service is shutting down");
        return result;
    }

    QProcess process; // no parent: it lives and dies on this worker thread
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessChannelMode(QProcess::SeparateChannels);
#ifdef Q_OS_UNIX
    // The child leads a group of its own, so a background group: reading a terminal would stop
    // it with SIGTTIN for good. It gets the null device there, and our own input anywhere else.
    if (::isatty(STDIN_FILENO))
        process.setStandardInputFile(QProcess::nullDevice());
    else
        process.setInputChannelMode(QProcess::ForwardedInputChannel);
#ifdef Q_OS_LINUX
    const pid_t parent = ::getpid();
    process.setChildProcessModifier([parent] {
        ::setpgid(0, 0);
        // Dies with us even when we are killed outright. The signal follows the thread that
        // forked, not the process; that thread waits below until the child has ended, so it
        // cannot end first. A parent gone before the call took effect is caught by the check.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(127);
    });
#else
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
#endif
#else
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
#endif
    process.start(QIODevice::ReadOnly);
    if (!process.waitForStarted(-1)) {
        result.launchError = process.errorString();
        return result;
    }
    result.started = true;

    // QProcess reads both pipes while it waits, so a child that fills one is never stalled.
    const bool polls = stop || !deadline.isForever();
    while (!process.waitForFinished(polls ? stopPollMs : -1)) {
        if (process.state() == QProcess::NotRunning)
            break;
        if (stopRequested(stop) || deadline.hasExpired()) {
            killWithGroup(process);
            process.waitForFinished(-1);
            break;
        }
    }
    result.exitStatus = process.exitCode();
    result.standardOutput = process.readAllStandardOutput();
    result.standardError = process.readAllStandardError();
    return result;
}

} // namespace lullwick
