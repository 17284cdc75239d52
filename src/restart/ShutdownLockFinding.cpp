#include "restart/ShutdownLockFinding.h"

#include "profile/Profile.h"

namespace lullwick {

namespace {

// Past this many, the list stops helping and starts hiding the first lines.
constexpr qsizetype maxListed = 8;

QString holders(const QList<InhibitorEvidence::ShutdownLock> &locks)
{
    const QString first = ShutdownLockFinding::holderName(locks.constFirst());
    if (locks.size() == 1)
        return first;
    // One arg() call: a name holding "%2" must stay as it is.
    return Profile::current().restartEvidence().holdersMore.arg(first, QString::number(locks.size() - 1));
}

/// "Holder — why (mode, process, PID n)", the holder told by the catalog's headline where it has one.
QString lockLine(const InhibitorEvidence::ShutdownLock &lock)
{
    const std::optional<ProcessInfo> info = Profile::current().catalog().info(lock.processName);
    QString line = info ? info->headline : ShutdownLockFinding::holderName(lock);
    if (!lock.why.isEmpty())
        line += QStringLiteral(" — ") + lock.why;
    QStringList about{lock.mode};
    if (!lock.processName.isEmpty())
        about.append(lock.processName);
    if (lock.pid > 0)
        about.append(Profile::current().restartEvidence().pidNumber.arg(lock.pid));
    return line + QStringLiteral(" (") + about.join(QStringLiteral(", ")) + u')';
}

QString listed(const QString &lead, const QList<InhibitorEvidence::ShutdownLock> &locks)
{
    QStringList lines;
    for (const InhibitorEvidence::ShutdownLock &lock : locks.first(qMin(locks.size(), maxListed)))
        lines.append(lockLine(lock));
    if (locks.size() > maxListed)
        lines.append(Profile::current().restartEvidence().moreLine.arg(locks.size() - maxListed));
    return lead + QStringLiteral("\n\n") + lines.join(u'\n');
}

} // namespace

QString ShutdownLockFinding::holderName(const InhibitorEvidence::ShutdownLock &lock)
{
    if (!lock.who.isEmpty())
        return lock.who;
    if (!lock.processName.isEmpty())
        return lock.processName;
    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
    return lock.pid > 0 ? words.processNumber.arg(lock.pid) : words.someProgram;
}

std::optional<RestartFinding> ShutdownLockFinding::from(const InhibitorEvidence &evidence)
{
    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
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
        QString title =
            (blocking.size() > 1 ? words.blockingTitleMany : words.blockingTitle).arg(holders(blocking));
        if (!first.why.isEmpty())
            title += QStringLiteral(": ") + first.why;
        // What the program is, when the catalog knows it, then how to let it finish or quit it.
        QStringList advice;
        if (const std::optional<ProcessInfo> info = Profile::current().catalog().info(first.processName))
            advice.append(info->explanation);
        advice.append(words.blockingAdvice);
        if (first.pid > 0)
            advice.append(
                words.blockingQuit.arg(first.processName.isEmpty() ? holderName(first) : first.processName,
                                       QString::number(first.pid)));
        return RestartFinding::make(RestartSeverity::likely, words.shutdownLocksSource, title,
                                    listed(words.blockingDetail, blocking + delaying), advice.join(u' '));
    }
    if (!delaying.isEmpty()) {
        const QString limit = evidence.inhibitDelayMaxSeconds
                                  ? words.delayUpTo.arg(*evidence.inhibitDelayMaxSeconds)
                                  : words.delayFewSeconds;
        return RestartFinding::make(RestartSeverity::info, words.shutdownLocksSource,
                                    words.delayTitle.arg(holders(delaying), limit),
                                    listed(words.delayDetail.arg(limit), delaying), words.delayAdvice);
    }
    return std::nullopt;
}

} // namespace lullwick
