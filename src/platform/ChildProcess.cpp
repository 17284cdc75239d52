#include "platform/ChildProcess.h"

#include <QDir>
#include <QProcess>

namespace lullwick {

ChildProcessResult ChildProcess::run(const QString &program, const QStringList &arguments)
{
    ChildProcessResult result;
    // A relative name would make QProcess search PATH; the tools live at fixed places.
    if (!QDir::isAbsolutePath(program)) {
        result.launchError = QStringLiteral("%1 is not an absolute path").arg(program);
        return result;
    }

    QProcess process; // no parent: it lives and dies on this worker thread
    process.setProgram(program);
    process.setArguments(arguments);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(QIODevice::ReadOnly);
    if (!process.waitForStarted(-1)) {
        result.launchError = process.errorString();
        return result;
    }
    result.started = true;

    // QProcess reads both pipes while it waits, so a child that fills one is never stalled.
    process.waitForFinished(-1);
    result.exitStatus = process.exitCode();
    result.standardOutput = process.readAllStandardOutput();
    result.standardError = process.readAllStandardError();
    return result;
}

} // namespace lullwick
