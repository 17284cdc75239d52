#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace lullwick {

/// What the system and session services hold against a restart, as the pmset stand-in's `--restart-evidence`
/// mode prints it: one record a line, fields separated by tabs, the kind of record first.
///
///     shutdown-lock  MODE  WHO  WHY  PID  PROCESS-NAME
///     inhibit-delay-max  SECONDS
///     logout-inhibitor  APP-ID  REASON  PID  PROCESS-NAME
///     package-transaction  ROLE      (a PackageKit transaction that changes software)
///
/// PID is 0 when unknown. The reader trusts nothing in it.
struct InhibitorEvidence {
    /// A systemd-logind lock whose "what" includes shutdown.
    struct ShutdownLock {
        QString mode; ///< block, block-weak or delay
        QString who;
        QString why;
        qint64 pid = 0;
        QString processName;
        bool operator==(const ShutdownLock &) const = default;
    };
    /// A desktop-session inhibitor whose flags include logout.
    struct LogoutInhibitor {
        QString appId;
        QString reason;
        qint64 pid = 0; ///< the application's process, when it registered as a client
        QString processName;
        bool operator==(const LogoutInhibitor &) const = default;
    };

    QList<ShutdownLock> shutdownLocks;
    std::optional<qint64> inhibitDelayMaxSeconds;
    QList<LogoutInhibitor> logoutInhibitors;
    QStringList packageTransactions; ///< their roles, e.g. "update-packages"

    /// One record as a line: the fields made single-line and tab-free, joined by tabs, then "\n".
    [[nodiscard]] static QString line(const QStringList &fields);
    /// Reads the records; lines of another kind or with the wrong number of fields are skipped.
    /// Texts are made single-line and cut short; at most a few hundred records of each kind are kept.
    [[nodiscard]] static InhibitorEvidence parse(QByteArrayView output);
};

} // namespace lullwick
