#pragma once

#include "model/RestartFinding.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <atomic>
#include <optional>

namespace lullwick {

/// What held up the previous shutdown, from systemd's own messages in the system journal: the
/// units that did not stop in time and the processes killed in them.
class LastShutdownFinding {
public:
    LastShutdownFinding() = delete;

    /// The fixed arguments: the previous boot, as JSON, only messages of the service manager
    /// itself (PID 1), only the fields read, and only the last few thousand of them. Not quiet:
    /// journalctl says when the system journal may not be read.
    [[nodiscard]] static QStringList journalctlArguments();
    /// Runs journalctl at `journalctlPath` once and reads what it prints; `journalDenied` (when
    /// given) tells whether the system journal could not be read for want of the right.
    [[nodiscard]] static std::optional<RestartFinding>
    read(const QString &journalctlPath, const std::atomic<bool> &stop, bool *journalDenied = nullptr);
    /// One `possible` finding from journal entries (one JSON object a line), or nothing after a
    /// clean shutdown. Lines that are not entries are skipped.
    [[nodiscard]] static std::optional<RestartFinding> fromJournal(QByteArrayView jsonLines);
};

} // namespace lullwick
