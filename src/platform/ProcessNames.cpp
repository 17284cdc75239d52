#include "platform/ProcessNames.h"

#include <QDir>
#include <QFile>
#include <unistd.h>

namespace lullwick {

namespace {

// The kernel keeps at most this many bytes of a process's name.
constexpr qsizetype commLength = 15;

QByteArray readAtMost(const QString &path, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(size) : QByteArray();
}

/// The fields of a "/proc/PID/stat" line after the process's name, which may hold spaces and
/// parentheses: they are counted from its last ")". The first of them is the state.
QList<QByteArray> statFields(const QString &path)
{
    const QByteArray stat = readAtMost(path, 4096);
    return stat.sliced(stat.lastIndexOf(')') + 1).trimmed().split(' ');
}

} // namespace

ProcessNames::ProcessNames(QString procDirectory) : m_procDirectory(std::move(procDirectory)) {}

std::optional<QString> ProcessNames::name(qint64 pid) const
{
    if (pid <= 0)
        return std::nullopt;
    const QString dir = m_procDirectory + u'/' + QString::number(pid);
    QFile commFile(dir + QStringLiteral("/comm"));
    if (!commFile.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray name = commFile.readAll();
    if (name.endsWith('\n'))
        name.chop(1);

    // A name of full length may have been cut short ("gnome-session-b"); the first word of the
    // command line then usually holds it whole, and is taken only when it begins with the cut.
    if (name.size() == commLength) {
        QByteArray first = readAtMost(dir + QStringLiteral("/cmdline"), 4096);
        first.truncate(first.indexOf('\0') < 0 ? first.size() : first.indexOf('\0'));
        first = first.sliced(first.lastIndexOf('/') + 1);
        if (first.size() > name.size() && first.startsWith(name))
            name = first;
    }
    return QString::fromUtf8(name);
}

std::optional<qint64> ProcessNames::firstChild(qint64 pid) const
{
    if (pid <= 0)
        return std::nullopt;
    std::optional<qint64> first;
    const QStringList entries = QDir(m_procDirectory).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool numeric = false;
        const qint64 child = entry.toLongLong(&numeric);
        if (!numeric || (first && child >= *first))
            continue;
        const QList<QByteArray> fields = statFields(m_procDirectory + u'/' + entry + QStringLiteral("/stat"));
        if (fields.size() > 1 && fields[1].toLongLong() == pid)
            first = child;
    }
    return first;
}

std::optional<qint64> ProcessNames::ageSeconds(qint64 pid) const
{
    if (pid <= 0)
        return std::nullopt;
    // The start time is the 20th field after the state, in clock ticks since boot.
    const QList<QByteArray> fields =
        statFields(m_procDirectory + u'/' + QString::number(pid) + QStringLiteral("/stat"));
    bool started = false, up = false;
    const qint64 ticks = fields.value(19).toLongLong(&started);
    const double uptime =
        readAtMost(m_procDirectory + QStringLiteral("/uptime"), 64).split(' ').value(0).toDouble(&up);
    const long perSecond = ::sysconf(_SC_CLK_TCK);
    if (!started || !up || perSecond <= 0)
        return std::nullopt;
    return std::max<qint64>(qint64(uptime) - ticks / perSecond, 0);
}

} // namespace lullwick
