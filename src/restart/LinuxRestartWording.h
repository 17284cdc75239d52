#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace lullwick {

/// The texts of the restart findings that only the Linux program makes, in one place.
class LinuxRestartWording {
public:
    LinuxRestartWording() = delete;

    // Source names, in the order the analysis consults them.
    [[nodiscard]] static QString shutdownLocksSource();
    [[nodiscard]] static QString unsavedWorkSource();
    [[nodiscard]] static QString softwareUpdatesSource();
    [[nodiscard]] static QString lastShutdownSource();

    /// `holders` names the first holder and how many more there are, e.g. "Backup" or "Backup and 2 more".
    [[nodiscard]] static QString blockingLockTitle(const QString &holders, int count, const QString &why);
    [[nodiscard]] static QString blockingLockDetail();
    /// `about` says what the first holder is, when known.
    [[nodiscard]] static QString blockingLockAdvice(const std::optional<QString> &about, const QString &process,
                                                    qint64 pid);
    [[nodiscard]] static QString delayLockTitle(const QString &holders, std::optional<qint64> maxSeconds);
    [[nodiscard]] static QString delayLockDetail(std::optional<qint64> maxSeconds);
    [[nodiscard]] static QString delayLockAdvice();
    /// One listed lock: who holds it, why, and the process behind it.
    [[nodiscard]] static QString lockLine(const QString &holder, const QString &why, const QString &mode,
                                          const QString &process, qint64 pid);

    [[nodiscard]] static QString unsavedWorkTitle(const QStringList &apps);
    [[nodiscard]] static QString unsavedWorkDetail();
    [[nodiscard]] static QString unsavedWorkAdvice();

    [[nodiscard]] static QString installingTitle(const QString &process);
    [[nodiscard]] static QString installingDetail(const QString &lockPath, const QString &process, qint64 pid);
    [[nodiscard]] static QString installingAdvice();
    [[nodiscard]] static QString offlineUpdateTitle();
    [[nodiscard]] static QString offlineUpdateDetail();
    [[nodiscard]] static QString offlineUpdateAdvice();
    [[nodiscard]] static QString restartRequiredTitle();
    /// `packages` are those the system listed as wanting the restart, if any.
    [[nodiscard]] static QString restartRequiredDetail(const QStringList &packages);
    [[nodiscard]] static QString restartRequiredAdvice();

    [[nodiscard]] static QString lastShutdownTitle(const QString &process, const QString &unit);
    [[nodiscard]] static QString lastShutdownDetail();
    [[nodiscard]] static QString lastShutdownAdvice(const QString &process);
    /// One unit that did not stop in time, with the processes that were killed in it.
    [[nodiscard]] static QString hungUnitLine(const QString &unit, const QStringList &processes);

    [[nodiscard]] static QString runningAppsDetail();
    [[nodiscard]] static QString runningAppsAdvice();

    /// "… and N more", the last line of a list cut short.
    [[nodiscard]] static QString moreLine(qsizetype count);

    /// How the user lets the program read the system journal; part of the Restart tab's caveat.
    [[nodiscard]] static QString journalAccessNote();
};

} // namespace lullwick
