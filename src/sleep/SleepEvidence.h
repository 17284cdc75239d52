#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace lullwick {

/// What systemd-logind says about sleep, as the pmset stand-in's `--sleep-evidence` mode prints
/// it: one record a line, fields separated by tabs, the kind of record first.
///
///     can-suspend  yes|no|challenge|na
///     can-hibernate  yes|no|challenge|na
///     logind  PROPERTY  VALUE       (HandleLidSwitch…, Docked, OnExternalPower, IdleAction, IdleActionSec)
///     lid-handler  WHO  WHY  PID  PROCESS-NAME   (a program holding the handle-lid-switch lock)
///
/// The reader trusts nothing in it.
struct SleepEvidence {
    struct LidHandler {
        QString who;
        QString why;
        qint64 pid = 0;
        QString processName;
        bool operator==(const LidHandler &) const = default;
    };

    std::optional<QString> canSuspend;
    std::optional<QString> canHibernate;
    QHash<QString, QString> logind; ///< the properties named above, times in seconds
    QList<LidHandler> lidHandlers;

    /// A logind property read as yes/no; nothing when logind did not say.
    [[nodiscard]] std::optional<bool> flag(const QString &name) const;

    /// The stand-in's argument that asks for these records.
    [[nodiscard]] static QString standinArgument() { return QStringLiteral("--sleep-evidence"); }
    /// The logind properties the stand-in passes on, under these names.
    [[nodiscard]] static const QStringList &logindProperties();
    /// One record as a line: the fields made single-line and tab-free, joined by tabs, then "\n".
    [[nodiscard]] static QString line(const QStringList &fields);
    /// Reads the records; lines of another kind, unknown properties or values, and lines with the
    /// wrong number of fields are skipped. At most a few lid handlers are kept.
    [[nodiscard]] static SleepEvidence parse(QByteArrayView output);

    bool operator==(const SleepEvidence &) const = default;
};

} // namespace lullwick
