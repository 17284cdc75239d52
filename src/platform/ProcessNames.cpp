#include "platform/ProcessNames.h"

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

} // namespace lullwick
