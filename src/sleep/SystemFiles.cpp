#include "sleep/SystemFiles.h"

#include "model/TextRules.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <unistd.h>

namespace lullwick {

namespace {

constexpr qint64 maxFileBytes = 64 * 1024;
// /sys/bus/*/devices rarely holds more than a few hundred; past this a listing is not a real one.
constexpr qsizetype maxEntries = 2048;

} // namespace

QString SystemFiles::under(const QString &path) const
{
    return m_root == u"/" ? path : QDir::cleanPath(m_root + u'/' + path);
}

std::optional<QByteArray> SystemFiles::read(const QString &path) const
{
    // Non-blocking: a FIFO in a file's place must not hold the check up.
    const QByteArray native = QFile::encodeName(under(path));
    const int fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (fd < 0)
        return std::nullopt;
    QByteArray bytes(maxFileBytes, Qt::Uninitialized);
    qint64 total = 0;
    while (total < maxFileBytes) {
        const ssize_t got = ::read(fd, bytes.data() + total, size_t(maxFileBytes - total));
        if (got <= 0)
            break;
        total += got;
    }
    ::close(fd);
    bytes.truncate(total);
    return bytes;
}

std::optional<QString> SystemFiles::firstLine(const QString &path, qsizetype maxLength) const
{
    const std::optional<QByteArray> bytes = read(path);
    if (!bytes)
        return std::nullopt;
    const qsizetype end = bytes->indexOf('\n');
    return text::singleLine(QString::fromUtf8(end < 0 ? *bytes : bytes->first(end)), maxLength);
}

bool SystemFiles::linksToDevNull(const QString &path) const
{
    const QByteArray native = QFile::encodeName(under(path));
    char target[64];
    const ssize_t length = ::readlink(native.constData(), target, sizeof target);
    return length == 9 && QByteArrayView(target, length) == "/dev/null";
}

QStringList SystemFiles::entries(const QString &path) const
{
    QStringList names;
    QDir dir(under(path));
    dir.setFilter(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    dir.setSorting(QDir::Name);
    names = dir.entryList();
    if (names.size() > maxEntries)
        names.resize(maxEntries);
    return names;
}

bool SystemFiles::onMainsPower() const
{
    const QString folder = QStringLiteral("/sys/class/power_supply");
    bool battery = false;
    for (const QString &name : entries(folder)) {
        const QString supply = folder + u'/' + name;
        const std::optional<QString> type = firstLine(supply + QStringLiteral("/type"));
        if (type == u"Mains" && firstLine(supply + QStringLiteral("/online")) == u"1")
            return true;
        battery |= type == u"Battery" && firstLine(supply + QStringLiteral("/scope")) != u"Device";
    }
    return !battery;
}

bool SystemFiles::hasLid() const
{
    if (!entries(QStringLiteral("/proc/acpi/button/lid")).isEmpty())
        return true;
    const QString inputs = QStringLiteral("/sys/class/input");
    const QStringList names = entries(inputs);
    return std::any_of(names.cbegin(), names.cend(), [&](const QString &name) {
        return name.startsWith(u"input") &&
               firstLine(inputs + u'/' + name + QStringLiteral("/name")) == u"Lid Switch";
    });
}

} // namespace lullwick
