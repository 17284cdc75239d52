#pragma once

#include "model/Assertion.h"
#include "model/SleepKind.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace lullwick {

/// One system-wide counter line: a name and its count.
struct SystemWideCount {
    QString name;
    qint64 count = 0;

    bool operator==(const SystemWideCount &) const = default;
};

} // namespace lullwick

Q_DECLARE_TYPEINFO(lullwick::SystemWideCount, Q_RELOCATABLE_TYPE);

namespace lullwick {

/// One complete reading of `pmset -g assertions`.
struct AssertionsSnapshot {
    QDateTime capturedAt;                    ///< when the reading was taken
    QString rawOutput;                       ///< the whole output, unchanged
    QList<Assertion> assertions;             ///< per-process assertions in output order
    QList<SystemWideCount> systemWideCounts; ///< counter lines in output order, duplicates kept

    /// The assertions that hold off `kind`; a process's idle-sleep assertion is left out
    /// when the same process also holds a system-sleep assertion.
    [[nodiscard]] QList<Assertion> blockers(SleepKind kind) const;

    /// The assertions that hold off no kind of sleep.
    [[nodiscard]] QList<Assertion> nonBlockingAssertions() const;
};

} // namespace lullwick
