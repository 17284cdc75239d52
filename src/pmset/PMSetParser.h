#pragma once

#include "model/AssertionsSnapshot.h"

#include <QDateTime>
#include <QString>

namespace lullwick {

/// Reads the `pmset -g assertions` listing: the system-wide counter lines, and each per-process
/// line with the indented lines under it.
class PMSetParser {
public:
    PMSetParser() = delete;

    /// Pure; never fails; unreadable lines are skipped, and the raw text is kept whatever it holds.
    [[nodiscard]] static AssertionsSnapshot parse(const QString &output, const QDateTime &capturedAt);
};

} // namespace lullwick
