#pragma once

#include "model/Finding.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QDeadlineTimer>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <atomic>

namespace lullwick {

/// What happened the last times the computer tried to suspend, from the kernel's and systemd's
/// own messages in the system journal: of this boot and the one before, the last day only.
class LastSuspends {
public:
    LastSuspends() = delete;

    /// What the findings need to know besides the journal.
    struct Context {
        QByteArray currentBoot;  ///< this boot's id as the journal writes it: 32 hex digits
        QStringList wakeDevices; ///< the devices allowed to wake the computer, named as a person knows them
        QSet<QString> maskedNow; ///< sleep targets masked right now, which the sleep check names itself
    };

    /// Whether the system journal could be read.
    enum class Access { read, denied, failed };

    struct Reading {
        Access access = Access::failed;
        QList<Finding> findings; ///< in a fixed order of causes, at most one each
    };

    /// The fixed arguments: JSON, the last day, newest first, only the entries of systemd-sleep,
    /// logind, NVIDIA's sleep units and the kernel's errors and notices whose messages concern a
    /// suspend, and at most a couple of thousand of them, so that journalctl does the sifting,
    /// however big the journal.
    [[nodiscard]] static QStringList journalctlArguments();
    /// The arguments that ask for all the kernel's messages about a suspend between `from` and
    /// `to` (µs since the epoch): what it said about the last attempt that failed.
    [[nodiscard]] static QStringList kernelArguments(qint64 from, qint64 to);
    /// Runs journalctl at `journalctlPath` once, and once more after a failed attempt, for no
    /// longer than until `deadline`.
    [[nodiscard]] static Reading read(const QString &journalctlPath, const Context &context,
                                      const std::atomic<bool> &stop, QDeadlineTimer deadline);
    /// The findings from journal entries, one JSON object a line, as one or more journalctl
    /// outputs give them. Lines that are not entries, and entries not written by the kernel or systemd, are
    /// skipped.
    [[nodiscard]] static QList<Finding> fromJournal(QByteArrayView jsonLines, const Context &context);

    /// This boot's id, read from the kernel; empty when unreadable.
    [[nodiscard]] static QByteArray currentBoot();
};

} // namespace lullwick
