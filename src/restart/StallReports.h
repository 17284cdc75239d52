#pragma once

#include "model/RestartFinding.h"

#include <QString>
#include <QStringView>
#include <atomic>
#include <optional>

namespace lullwick {

/// Shutdown stall reports: finding the newest in the reports folder, describing it as a finding
/// dated from its file name, and decoding it with spindump to name the process that hung.
class StallReports {
public:
    StallReports() = delete;

    /// The full path of the newest stall report in `reportsDir`, chosen by name; nothing if none.
    [[nodiscard]] static std::optional<QString> mostRecent(const QString &reportsDir);
    /// The finding for the stall report at `path`.
    [[nodiscard]] static RestartFinding finding(const QString &path);
    /// The date in a stall report's file name, as "on March 7, 2024"; nothing when it has none.
    [[nodiscard]] static std::optional<QString> dateFromFileName(QStringView fileName);
    /// The value of the first non-empty "Process:" line of a decoded report.
    [[nodiscard]] static std::optional<QString> culpritFromSpindump(QStringView text);
    /// The name of the file a decode of `reportPath` writes: "lullwick-stall-<number>.txt".
    [[nodiscard]] static QString decodeFileName(const QString &reportPath);
    /// Runs spindump on the report into a private temporary file and names the process that hung.
    /// Blocking: the caller's worker thread waits for the child, which `stop` ends early.
    [[nodiscard]] static std::optional<QString> decode(const QString &spindumpPath, const QString &reportPath,
                                                       const std::atomic<bool> &stop);
};

} // namespace lullwick
