#include "platform/ProcessNames.h"

#include <QDir>
#include <QFile>

namespace lullwick {

namespace {

// The kernel keeps at most this many bytes of a process's name.
constexpr qsizetype commLength = 15;

QByteArray readAtMost(const QString &path, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(size) : QByteArray();
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
        // "PID (name) state PPID ...": the name may hold spaces and parentheses, so the fields
        // are counted from its last ")".
        const QByteArray stat = readAtMost(m_procDirectory + u'/' + entry + QStringLiteral("/stat"), 4096);
        const QList<QByteArray> fields = stat.sliced(stat.lastIndexOf(')') + 1).split(' ');
        if (fields.size() > 2 && fields[2].toLongLong() == pid)
            first = child;
    }
    return first;
}

} // namespace lullwick
