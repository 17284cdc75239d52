#pragma once

#include "model/RestartSeverity.h"

#include <QString>
#include <QUuid>
#include <optional>

namespace lullwick {

/// One piece of evidence of what may be holding up a restart.
struct RestartFinding {
    QUuid id; ///< fresh per finding; the Restart tab keys its cards by it
    RestartSeverity severity = RestartSeverity::info;
    QString source; ///< short name of the evidence source, e.g. "Running apps"
    QString title;  ///< one-line headline
    QString detail; ///< explanation; may hold line feeds
    std::optional<QString> advice;

    /// A finding with a fresh id.
    [[nodiscard]] static RestartFinding make(RestartSeverity severity, QString source, QString title,
                                             QString detail, QString advice);

    /// The source text that marks the stall-report finding.
    [[nodiscard]] static QString stallReportSource() { return QStringLiteral("Shutdown stall report"); }

    bool operator==(const RestartFinding &) const = default;
    // A hidden friend: a namespace-level overload would hide Qt's qHash(int) from other records.
    friend size_t qHash(const RestartFinding &finding, size_t seed) noexcept;
};

} // namespace lullwick

Q_DECLARE_TYPEINFO(lullwick::RestartFinding, Q_RELOCATABLE_TYPE);
