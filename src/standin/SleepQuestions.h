#pragma once

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QTextStream>
#include <functional>
#include <optional>

namespace lullwick {

/// The stand-in's `--sleep-evidence` answer: what systemd-logind says it can do (CanSuspend,
/// CanHibernate), its lid and idle settings with Docked and OnExternalPower, and the programs
/// that hold its lid lock, in the line format the program reads (see SleepEvidence). A bus or
/// service that is not there leaves its lines out.
class SleepQuestions {
public:
    SleepQuestions() = delete;

    /// Writes the lines to `out` and one line on `err` for each question that got no answer; the
    /// questions together may take until `deadline`.
    static void write(const std::optional<QDBusConnection> &systemBus, const QDeadlineTimer &deadline,
                      QTextStream &out, QTextStream &err);
};

} // namespace lullwick
