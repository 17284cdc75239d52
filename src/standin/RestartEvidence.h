#pragma once

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QTextStream>
#include <functional>
#include <optional>

namespace lullwick {

/// The stand-in's `--restart-evidence` answer: systemd-logind's shutdown locks and its longest
/// delay, PackageKit's transactions that change software, and the desktop session's logout
/// inhibitors, in the line format the program reads
/// (see InhibitorEvidence). A bus or service that is not there leaves its lines out.
class RestartEvidence {
public:
    RestartEvidence() = delete;

    /// Writes the lines to `out` and one line on `err` for each source that gave nothing; each
    /// source may take until `sourceDeadline()` says.
    static void write(const std::optional<QDBusConnection> &systemBus,
                      const std::optional<QDBusConnection> &sessionBus,
                      const std::function<QDeadlineTimer()> &sourceDeadline, QTextStream &out,
                      QTextStream &err);
};

} // namespace lullwick
