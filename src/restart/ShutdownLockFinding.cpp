#include "restart/ShutdownLockFinding.h"

#include "catalog/ProcessCatalog.h"
#include "restart/LinuxRestartWording.h"

namespace lullwick {

namespace {

// Past this many, the list stops helping and starts hiding the first lines.
constexpr qsizetype maxListed = 8;

QString holders(const QList<InhibitorEvidence::ShutdownLock> &locks)
{
    const QString first = ShutdownLockFinding::holderName(locks.constFirst());
    return locks.size() == 1 ? first : QStringLiteral("%1 and %2 more").arg(first).arg(locks.size() - 1);
}

QString listed(QString lead, const QList<InhibitorEvidence::ShutdownLock> &locks)
{
    QStringList lines;
    for (const InhibitorEvidence::ShutdownLock &lock : locks.first(qMin(locks.size(), maxListed))) {
        lines.append(LinuxRestartWording::lockLine(ShutdownLockFinding::holderName(lock), lock.why, lock.mode,
                                                   lock.processName, lock.pid));
    }
    if (locks.size() > maxListed)
        lines.append(LinuxRestartWording::moreLine(locks.size() - maxListed));
    return lead + QStringLiteral("\n\n") + lines.join(u'\n');
}

} // namespace

QString ShutdownLockFinding::holderName(const InhibitorEvidence::ShutdownLock &lock)
{
    if (!lock.processName.isEmpty()) {
        if (const std::optional<ProcessInfo> info = ProcessCatalog::info(lock.processName))
            return info->headline;
    }
    if (!lock.who.isEmpty())
        return lock.who;
    if (!lock.processName.isEmpty())
        return lock.processName;
    return lock.pid > 0 ? QStringLiteral("Process %1").arg(lock.pid) : QStringLiteral("A program");
}

std::optional<RestartFinding> ShutdownLockFinding::from(const InhibitorEvidence &evidence)
{
    QList<InhibitorEvidence::ShutdownLock> blocking, delaying;
    for (const InhibitorEvidence::ShutdownLock &lock : evidence.shutdownLocks) {
        // block-weak holds off a restart from the desktop just the same.
        if (lock.mode.startsWith(u"block"))
            blocking.append(lock);
        else if (lock.mode == u"delay")
            delaying.append(lock);
    }
    if (!blocking.isEmpty()) {
        const InhibitorEvidence::ShutdownLock &first = blocking.constFirst();
        std::optional<QString> about;
        if (const std::optional<ProcessInfo> info = ProcessCatalog::info(first.processName))
            about = info->explanation;
        return RestartFinding::make(
            RestartSeverity::likely, LinuxRestartWording::shutdownLocksSource(),
            LinuxRestartWording::blockingLockTitle(holders(blocking), int(blocking.size()), first.why),
            listed(LinuxRestartWording::blockingLockDetail(), blocking + delaying),
            LinuxRestartWording::blockingLockAdvice(about, first.processName.isEmpty() ? holderName(first)
                                                                                       : first.processName,
                                                    first.pid));
    }
    if (!delaying.isEmpty()) {
        return RestartFinding::make(
            RestartSeverity::info, LinuxRestartWording::shutdownLocksSource(),
            LinuxRestartWording::delayLockTitle(holders(delaying), evidence.inhibitDelayMaxSeconds),
            listed(LinuxRestartWording::delayLockDetail(evidence.inhibitDelayMaxSeconds), delaying),
            LinuxRestartWording::delayLockAdvice());
    }
    return std::nullopt;
}

} // namespace lullwick
