#pragma once

#include "model/AssertionKind.h"

#include <QString>
#include <QUuid>
#include <optional>

namespace lullwick {

/// One per-process power assertion as `pmset -g assertions` lists it.
struct Assertion {
    QUuid id;            ///< fresh per record; not stable across readings
    qint64 pid = 0;      ///< owning process
    QString processName; ///< as printed between the parentheses
    QString assertionID; ///< as printed between the square brackets
    QString timeHeld;    ///< held-time word as printed
    AssertionKind kind = AssertionKind::makeOther({});
    std::optional<QString> namedReason; ///< the quoted name, if the line has one
    std::optional<QString> extras;      ///< trimmed continuation lines joined by "\n", if any

    /// The PID from the first "Created for PID:" line of `extras` that holds a number.
    [[nodiscard]] std::optional<qint64> createdForPID() const;

    /// Whether `text` reads as a reason (it has a space, or at most one dot) rather than a dotted
    /// identifier.
    [[nodiscard]] static bool looksLikeFriendlyReason(QStringView text);

    bool operator==(const Assertion &) const = default;
};

size_t qHash(const Assertion &assertion, size_t seed = 0) noexcept;

} // namespace lullwick

// Every member only holds pointers to shared data, so a list may move records by memcpy.
Q_DECLARE_TYPEINFO(lullwick::Assertion, Q_RELOCATABLE_TYPE);
