#include "restart/LinuxRestartWording.h"

namespace lullwick {

namespace {

QString seconds(std::optional<qint64> maxSeconds)
{
    return maxSeconds ? QStringLiteral("up to %1 s").arg(*maxSeconds) : QStringLiteral("a few seconds");
}

} // namespace

QString LinuxRestartWording::shutdownLocksSource()
{
    return QStringLiteral("Shutdown locks");
}

QString LinuxRestartWording::unsavedWorkSource()
{
    return QStringLiteral("Apps with unsaved work");
}

QString LinuxRestartWording::softwareUpdatesSource()
{
    return QStringLiteral("Software updates");
}

QString LinuxRestartWording::lastShutdownSource()
{
    return QStringLiteral("Last shutdown (system journal)");
}

QString LinuxRestartWording::blockingLockTitle(const QString &holders, int count, const QString &why)
{
    QString title = holders + (count > 1 ? QStringLiteral(" are blocking restart and shutdown")
                                         : QStringLiteral(" is blocking restart and shutdown"));
    if (!why.isEmpty())
        title += QStringLiteral(": ") + why;
    return title;
}

QString LinuxRestartWording::blockingLockDetail()
{
    return QStringLiteral(
        "A program can ask systemd-logind to hold off shutdown until it’s done. While it holds "
        "such a lock, choosing Restart in the desktop does nothing — or asks whether to restart "
        "anyway — and only a forced restart gets past it. Holding a lock right now:");
}

QString LinuxRestartWording::blockingLockAdvice(const std::optional<QString> &about, const QString &process,
                                                qint64 pid)
{
    QString advice = about ? *about + u' ' : QString();
    advice += QStringLiteral("Let it finish, then restart again.");
    if (pid > 0) {
        advice += QStringLiteral(" If it’s stuck, quit %1 from your system monitor, or with “kill %2” in "
                                 "a terminal.")
                      .arg(process, QString::number(pid));
    }
    return advice;
}

QString LinuxRestartWording::delayLockTitle(const QString &holders, std::optional<qint64> maxSeconds)
{
    return holders + QStringLiteral(" will delay a restart by ") + seconds(maxSeconds);
}

QString LinuxRestartWording::delayLockDetail(std::optional<qint64> maxSeconds)
{
    return QStringLiteral("A delay lock doesn’t stop a restart. systemd-logind tells the program that the "
                          "computer is about to restart and waits until it lets go, for %1 at the most "
                          "(InhibitDelayMaxSec). Holding a delay lock right now:")
        .arg(seconds(maxSeconds));
}

QString LinuxRestartWording::delayLockAdvice()
{
    return QStringLiteral("Nothing to do: the restart goes ahead on its own once the program is ready or "
                          "the time is up.");
}

QString LinuxRestartWording::lockLine(const QString &holder, const QString &why, const QString &mode,
                                      const QString &process, qint64 pid)
{
    QString line = holder;
    if (!why.isEmpty())
        line += QStringLiteral(" — ") + why;
    QStringList about{mode};
    if (!process.isEmpty())
        about.append(process);
    if (pid > 0)
        about.append(QStringLiteral("PID ") + QString::number(pid));
    return line + QStringLiteral(" (") + about.join(QStringLiteral(", ")) + u')';
}

QString LinuxRestartWording::unsavedWorkTitle(const QStringList &apps)
{
    QString names;
    if (apps.size() == 1)
        names = apps.first();
    else if (apps.size() <= 3)
        names = apps.first(apps.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" and ") + apps.last();
    else
        names = apps.first(2).join(QStringLiteral(", ")) + QStringLiteral(" and %1 more").arg(apps.size() - 2);
    return names + (apps.size() == 1 ? QStringLiteral(" has unsaved work") : QStringLiteral(" have unsaved work"));
}

QString LinuxRestartWording::unsavedWorkDetail()
{
    return QStringLiteral(
        "These apps told the desktop session that logging out now would lose something. A restart logs "
        "you out first, so the session stops and shows a “Some applications are busy or have unsaved "
        "work” prompt — one that’s easy to miss behind other windows:");
}

QString LinuxRestartWording::unsavedWorkAdvice()
{
    return QStringLiteral("Switch to each app, save or close what’s open in it, then restart again.");
}

QString LinuxRestartWording::installingTitle(const QString &process)
{
    return process + QStringLiteral(" is installing or removing software right now");
}

QString LinuxRestartWording::installingDetail(const QString &lockPath, const QString &process, qint64 pid)
{
    return QStringLiteral("The package manager’s lock (%1) is held by %2 (PID %3). A restart now would stop "
                          "it halfway, which can leave packages half-installed and the system hard to "
                          "update afterwards.")
        .arg(lockPath, process, QString::number(pid));
}

QString LinuxRestartWording::installingAdvice()
{
    return QStringLiteral("Don’t restart until it has finished — a software window or terminal shows its "
                          "progress. If an earlier run was cut short, “sudo dpkg --configure -a” in a "
                          "terminal completes it.");
}

QString LinuxRestartWording::offlineUpdateTitle()
{
    return QStringLiteral("An update will be installed during the next restart");
}

QString LinuxRestartWording::offlineUpdateDetail()
{
    return QStringLiteral("An offline update is staged (/system-update). When the computer restarts, it "
                          "installs the update before the desktop comes back, so the restart takes longer "
                          "than usual and may look stuck on a progress screen.");
}

QString LinuxRestartWording::offlineUpdateAdvice()
{
    return QStringLiteral("Restart when you can spare a few minutes, and don’t power off while the update "
                          "installs.");
}

QString LinuxRestartWording::restartRequiredTitle()
{
    return QStringLiteral("Installed updates are waiting for a restart");
}

QString LinuxRestartWording::restartRequiredDetail(const QStringList &packages)
{
    QString detail = QStringLiteral("Updates installed since the computer started only take full effect "
                                    "after a restart (/run/reboot-required).");
    if (!packages.isEmpty()) {
        detail += QStringLiteral(" They came with:\n\n") + packages.join(QStringLiteral(", "));
    }
    return detail;
}

QString LinuxRestartWording::restartRequiredAdvice()
{
    return QStringLiteral("Nothing here holds the restart up: restart when it suits you.");
}

QString LinuxRestartWording::lastShutdownTitle(const QString &process, const QString &unit)
{
    if (process.isEmpty())
        return QStringLiteral("Last shutdown waited for ") + unit;
    return QStringLiteral("Last shutdown waited for %1 (%2)").arg(process, unit);
}

QString LinuxRestartWording::lastShutdownDetail()
{
    return QStringLiteral(
        "During the last shutdown, systemd asked these to stop and waited until its time limit ran out, "
        "then killed them. The same is likely to hold up the next restart:");
}

QString LinuxRestartWording::lastShutdownAdvice(const QString &process)
{
    return QStringLiteral("Quit %1 yourself before you restart. If it comes back every time, look at how "
                          "it’s started — an app that ignores the request to stop costs a minute or more "
                          "at every shutdown.")
        .arg(process);
}

QString LinuxRestartWording::hungUnitLine(const QString &unit, const QStringList &processes)
{
    if (processes.isEmpty())
        return unit;
    return unit + QStringLiteral(": ") + processes.join(QStringLiteral(", "));
}

QString LinuxRestartWording::runningAppsDetail()
{
    return QStringLiteral("When you restart, the desktop session asks each open app to quit. Any one of "
                          "these can quietly hold the restart up with a “Do you want to save?” dialog that "
                          "you may not see if it’s behind another window:");
}

QString LinuxRestartWording::runningAppsAdvice()
{
    return QStringLiteral("If restart hangs with nothing flagged above, click through these apps (especially "
                          "editors and anything with an open document) looking for an unsaved-changes "
                          "prompt, then quit them and retry.");
}

QString LinuxRestartWording::moreLine(qsizetype count)
{
    return QStringLiteral("… and %1 more").arg(count);
}

QString LinuxRestartWording::journalAccessNote()
{
    return QStringLiteral(
        "The last shutdown is read from the system journal, which only root and members of the "
        "systemd-journal or adm group can read. To let this see it, run “sudo usermod -aG "
        "systemd-journal $USER” in a terminal, then log out and back in.");
}

} // namespace lullwick
