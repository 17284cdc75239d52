#pragma once

#include "model/RestartFinding.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace lullwick {

/// The result of one restart analysis.
struct RestartAnalysis {
    QDateTime ranAt;                            ///< when the record was assembled, after all evidence was in
    QList<RestartFinding> findings;             ///< most severe first
    std::optional<QString> stallReportPath;     ///< the newest shutdown stall report, if any
    std::optional<QString> decodedStallProcess; ///< after a decode: the hung process or the failure text
    bool journalDenied = false; ///< on Linux: the system journal could not be read for want of the right

    /// The `likely` findings, in the order of `findings`.
    [[nodiscard]] QList<RestartFinding> likelyFindings() const;
    /// The `possible` findings, in the order of `findings`.
    [[nodiscard]] QList<RestartFinding> possibleFindings() const;
};

} // namespace lullwick
