#include "restart/SoftwareUpdateFinding.h"

#include "model/TextRules.h"
#include "platform/ProcessNames.h"
#include "profile/Profile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <fcntl.h>
#include <sys/stat.h>
#ifdef Q_OS_LINUX
#include <sys/sysmacros.h> // major, minor
#endif
#include <unistd.h>

namespace lullwick {

namespace {

// The lock apt, unattended-upgrades and PackageKit take for as long as they change packages.
const QString frontendLock = QStringLiteral("/var/lib/dpkg/lock-frontend");
constexpr qint64 maxNoteBytes = 64 * 1024;
constexpr qsizetype maxPackages = 12;

QByteArray readAtMost(const QString &path, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(size) : QByteArray();
}

/// The packages named in a reboot-required list, once each, in order.
QStringList packagesIn(QByteArrayView list)
{
    QStringList packages;
    qsizetype more = 0;
    const QString text = QString::fromUtf8(list);
    for (QStringView line : QStringView(text).tokenize(u'\n')) {
        const QString name = text::singleLine(line, 64);
        if (name.isEmpty() || packages.contains(name))
            continue;
        if (packages.size() < maxPackages)
            packages.append(name);
        else
            ++more;
    }
    if (more > 0)
        packages.append(Profile::current().restartEvidence().andMore.arg(more));
    return packages;
}

} // namespace

qint64 SoftwareUpdateFinding::holderInLockTable(QByteArrayView locks, quint32 major, quint32 minor,
                                                quint64 inode)
{
    // "1: POSIX  ADVISORY  WRITE 1234 08:01:5678 0 EOF": device numbers in hex, the inode in
    // decimal. Waiters ("1: -> POSIX …") hold nothing; OFD locks have no owning process (-1).
    const QByteArray device = QByteArray::number(major, 16).rightJustified(2, '0') + ':' +
                              QByteArray::number(minor, 16).rightJustified(2, '0') + ':' +
                              QByteArray::number(inode);
    for (const QByteArray &line : locks.toByteArray().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() < 6 || words[1] == "->" || words[5] != device)
            continue;
        bool isNumber = false;
        const qint64 pid = words[4].toLongLong(&isNumber);
        if (isNumber && pid > 0)
            return pid;
    }
    return 0;
}

qint64 SoftwareUpdateFinding::lockHolder(const QString &path, const QString &lockTable)
{
    const QByteArray nativePath = QFile::encodeName(path);
    // Non-blocking: a FIFO in the lock's place must not hold the analysis up.
    const int fd = ::open(nativePath.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (fd >= 0) {
        struct flock probe = {};
        probe.l_type = F_WRLCK;
        probe.l_whence = SEEK_SET;
        const bool asked = ::fcntl(fd, F_GETLK, &probe) == 0;
        ::close(fd);
        if (!asked)
            return 0;
        return probe.l_type != F_UNLCK && probe.l_pid > 0 ? probe.l_pid : 0;
    }
    // The lock file is readable by root only; the kernel's table of locks is readable by all.
    struct stat info = {};
    if (::stat(nativePath.constData(), &info) != 0)
        return 0;
    return holderInLockTable(readAtMost(lockTable, 4 * 1024 * 1024), ::major(info.st_dev),
                             ::minor(info.st_dev), info.st_ino);
}

std::optional<RestartFinding> SoftwareUpdateFinding::from(const QString &rootDir,
                                                          const InhibitorEvidence &evidence)
{
    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
    const QDir root(rootDir);
    if (const qint64 pid = lockHolder(root.filePath(frontendLock.sliced(1)))) {
        const QString process = text::singleLine(ProcessNames().name(pid).value_or(QString()), 64);
        const QString name = process.isEmpty() ? words.processNumber.arg(pid) : process;
        return RestartFinding::make(
            RestartSeverity::likely, words.softwareUpdatesSource, words.installingTitle.arg(name),
            words.installingDetail.arg(frontendLock, name, QString::number(pid)), words.installingAdvice);
    }
    if (!evidence.packageTransactions.isEmpty()) {
        return RestartFinding::make(
            RestartSeverity::likely, words.softwareUpdatesSource,
            words.installingTitle.arg(QStringLiteral("PackageKit")),
            words.packageKitDetail.arg(evidence.packageTransactions.join(QStringLiteral(", "))),
            words.installingAdvice);
    }
    // A link to the update's folder; a dangling one still means an update is staged.
    const QFileInfo staged(root.filePath(QStringLiteral("system-update")));
    if (staged.exists() || staged.isSymLink()) {
        return RestartFinding::make(RestartSeverity::possible, words.softwareUpdatesSource,
                                    words.offlineTitle, words.offlineDetail, words.offlineAdvice);
    }
    if (QFileInfo::exists(root.filePath(QStringLiteral("run/reboot-required")))) {
        const QStringList packages =
            packagesIn(readAtMost(root.filePath(QStringLiteral("run/reboot-required.pkgs")), maxNoteBytes));
        QString detail = words.restartRequiredDetail;
        if (!packages.isEmpty())
            detail +=
                words.restartRequiredPackages + QStringLiteral("\n\n") + packages.join(QStringLiteral(", "));
        return RestartFinding::make(RestartSeverity::info, words.softwareUpdatesSource,
                                    words.restartRequiredTitle, detail, words.restartRequiredAdvice);
    }
    return std::nullopt;
}

} // namespace lullwick
