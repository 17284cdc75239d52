#pragma once

#include <QString>
#include <optional>

namespace lullwick {

/// Names of running processes, read from /proc (where there is none, no process has a name).
class ProcessNames {
public:
    explicit ProcessNames(QString procDirectory = QStringLiteral("/proc"));

    /// The executable name of process `pid`; nothing when no such process is running.
    [[nodiscard]] std::optional<QString> name(qint64 pid) const;
    /// The child of process `pid` with the lowest PID; nothing when it has none.
    [[nodiscard]] std::optional<qint64> firstChild(qint64 pid) const;
    /// How many seconds ago process `pid` started; nothing when no such process is running.
    [[nodiscard]] std::optional<qint64> ageSeconds(qint64 pid) const;

private:
    QString m_procDirectory;
};

} // namespace lullwick
