#pragma once

#include "model/FindingSeverity.h"

#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

namespace lullwick {

/// One piece of evidence for an answer the program gives: what may hold up a restart, or why the
/// computer does not sleep.
struct Finding {
    QUuid id; ///< fresh per finding; views key their cards by it
    FindingSeverity severity = FindingSeverity::info;
    QString source; ///< short name of the evidence source, e.g. "Running apps"
    QString title;  ///< one-line headline
    QString detail; ///< explanation; may hold line feeds
    std::optional<QString> advice;

    /// A finding with a fresh id.
    [[nodiscard]] static Finding make(FindingSeverity severity, QString source, QString title, QString detail,
                                      QString advice);

    bool operator==(const Finding &) const = default;
    // A hidden friend: a namespace-level overload would hide Qt's qHash(int) from other records.
    friend size_t qHash(const Finding &finding, size_t seed) noexcept;
};

/// Most severe first; findings of equal severity keep the order of their sources.
void rankBySeverity(QList<Finding> &findings);

} // namespace lullwick

Q_DECLARE_TYPEINFO(lullwick::Finding, Q_RELOCATABLE_TYPE);
