#pragma once

#include "model/AssertionsSnapshot.h"
#include "model/RestartAnalysis.h"
#include "sleep/SleepCheck.h"
#include "summary/ResolvedNames.h"

#include <QJsonObject>
#include <QString>

namespace lullwick {

/// The report as one JSON document, for scripts; the README describes its fields.
class ReportJson {
public:
    ReportJson() = delete;

    /// Raised whenever a field changes meaning or goes away.
    static constexpr int schemaVersion = 1;

    /// The reading: capture time, counters, every assertion explained, the blockers of each kind
    /// of sleep (as indexes into the assertions), the non-blocking ones, the verdict and the sleep
    /// check's findings (an empty list without a sleep check).
    [[nodiscard]] static QJsonObject reading(const AssertionsSnapshot &snapshot, const ResolvedNames &names,
                                             const std::optional<SleepFindings> &sleep = std::nullopt);
    /// The restart analysis: when it ran, its verdict and its findings.
    [[nodiscard]] static QJsonObject restart(const RestartAnalysis &analysis);
    /// Both pmset texts as they were printed.
    [[nodiscard]] static QJsonObject raw(const AssertionsSnapshot &snapshot, const QString &settingsRaw);
};

} // namespace lullwick
