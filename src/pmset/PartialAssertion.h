#pragma once

#include "model/Assertion.h"

#include <QString>
#include <optional>

namespace lullwick {

/// An assertion under assembly while the pmset listing is read; internal to the pmset reader.
struct PartialAssertion {
    qint64 pid = 0;
    QString processName;
    QString assertionID;
    QString timeHeld;
    QString rawType;
    std::optional<QString> namedReason;
    QString extras; ///< trimmed continuation lines, already joined by "\n"
    bool hasExtras = false;

    /// Adds one trimmed continuation line.
    void appendExtra(QStringView line);

    /// The finished record, with a fresh id and its type word classified.
    [[nodiscard]] Assertion materialize() &&;
};

} // namespace lullwick
