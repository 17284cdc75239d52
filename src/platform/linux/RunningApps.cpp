#include "platform/RunningApps.h"

#include "platform/AppIdentity.h"
#include "platform/linux/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <unistd.h>

namespace lullwick::RunningApps {

namespace {

struct Process {
    qint64 pid = 0;
    qint64 parent = 0;
    const DesktopEntry *entry = nullptr;
};

QByteArray readProcFile(const QString &root, qint64 pid, const char *name)
{
    QFile file(QStringLiteral("%1/%2/%3").arg(root).arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

qint64 parentOf(const QString &root, qint64 pid)
{
    // "pid (comm) state ppid ...": the command may hold spaces and parentheses, so read after the last ")".
    const QByteArray stat = readProcFile(root, pid, "stat");
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() : 0;
}

/// The names the process runs as: its executable's and its first argument's last path component.
QStringList programNamesOf(const QString &root, qint64 pid)
{
    QStringList names;
    QString executable = QFileInfo(QStringLiteral("%1/%2/exe").arg(root).arg(pid)).symLinkTarget();
    executable.remove(QStringLiteral(" (deleted)")); // the binary was replaced by an upgrade
    const QByteArray commandLine = readProcFile(root, pid, "cmdline");
    const QString firstArgument = QString::fromLocal8Bit(commandLine.left(commandLine.indexOf('\0')));
    for (const QString &path : {executable, firstArgument}) {
        const QString name = path.sliced(path.lastIndexOf(u'/') + 1);
        if (!name.isEmpty() && !names.contains(name))
            names.append(name);
    }
    return names;
}

} // namespace

QList<RunningAppInfo> current(const QString &processRoot)
{
    const QList<DesktopEntry> entries = DesktopEntry::installed(QLocale().name());
    // Where entries share a program, the one whose id ends in the program's name speaks for it
    // ("org.gnome.gedit" for gedit); otherwise the first in precedence order.
    QHash<QString, const DesktopEntry *> byProgram;
    for (bool idMatchesOnly : {true, false}) {
        for (const DesktopEntry &entry : entries) {
            for (const QString &program : entry.programNames) {
                const bool idMatches = entry.id.section(u'.', -1).compare(program, Qt::CaseInsensitive) == 0;
                if ((idMatches || !idMatchesOnly) && !byProgram.contains(program))
                    byProgram.insert(program, &entry);
            }
        }
    }

    const uint user = ::getuid();
    QList<Process> processes;
    QHash<qint64, const DesktopEntry *> entryOf;
    for (const QFileInfo &info : QDir(processRoot).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const qint64 pid = info.fileName().toLongLong(&isNumber);
        if (!isNumber || info.ownerId() != user)
            continue;
        for (const QString &name : programNamesOf(processRoot, pid)) {
            if (const DesktopEntry *entry = byProgram.value(name)) {
                processes.append({pid, parentOf(processRoot, pid), entry});
                entryOf.insert(pid, entry);
                break;
            }
        }
    }
    std::sort(processes.begin(), processes.end(),
              [](const Process &a, const Process &b) { return a.pid < b.pid; });

    QList<RunningAppInfo> apps;
    for (const Process &process : processes) {
        // Helpers an application starts from its own binary (browser tabs, zygotes) are the
        // same application, not another one to quit.
        if (entryOf.value(process.parent) == process.entry)
            continue;
        apps.append({process.entry->name, process.entry->id, process.pid});
    }
    return apps;
}

std::optional<QString> ownIdentifier()
{
    return AppIdentity::identifier();
}

} // namespace lullwick::RunningApps
