#pragma once

#include "model/AssertionsSnapshot.h"
#include "model/RestartAnalysis.h"
#include "model/RunningAppInfo.h"
#include "platform/SerialWorker.h"
#include "profile/ToolPaths.h"
#include "restart/LinuxRestartSources.h"

#include <QFuture>
#include <QList>
#include <QString>
#include <optional>

namespace lullwick {

/// Gathers and ranks the evidence of what may hold up a restart, and decodes shutdown stall
/// reports (StallReports). Runs one request at a time on a worker thread of its own.
class RestartBlockerService {
public:
    explicit RestartBlockerService(QString logPath = ToolPaths::log(),
                                   QString spindumpPath = ToolPaths::spindump(),
                                   QString reportsDir = ToolPaths::diagnosticReports());
    /// The Linux program's service: it reads systemd-logind, the desktop session, the package
    /// manager and the system journal instead of the macOS sources.
    explicit RestartBlockerService(LinuxRestartSources linuxSources);
    /// Ends the child under way and drops the requests queued behind it; never waits for a tool.
    ~RestartBlockerService();
    Q_DISABLE_COPY_MOVE(RestartBlockerService)

    /// Consults the software update, loginwindow, stall report and running-apps sources, in that
    /// order (on Linux: shutdown locks, apps with unsaved work, software updates, the last shutdown
    /// and running apps), and ranks what they found, most severe first. Never fails; a failing
    /// source adds nothing.
    [[nodiscard]] QFuture<RestartAnalysis> analyze(std::optional<AssertionsSnapshot> assertions,
                                                   QList<RunningAppInfo> runningApps);
    /// Decodes the stall report at `path` with spindump and names the process that hung, if it can.
    [[nodiscard]] QFuture<std::optional<QString>> decodeStallReport(QString path);

    /// Whether the analysis uses an assertions reading (the Linux sources take none).
    [[nodiscard]] bool readsAssertions() const { return !m_linux; }

    /// The full path of the newest stall report in the reports folder, chosen by name; nothing if none.
    [[nodiscard]] std::optional<QString> mostRecentStallReport() const;

private:
    [[nodiscard]] static QList<RestartFinding>
    updateFindings(const std::optional<AssertionsSnapshot> &assertions);
    [[nodiscard]] static QList<RestartFinding> loginwindowFindings(const QString &logPath,
                                                                   const std::atomic<bool> &stop);
    [[nodiscard]] static QList<RestartFinding> runningAppFindings(const QList<RunningAppInfo> &apps);
    [[nodiscard]] static std::optional<QString> runLogShow(const QString &logPath,
                                                           const std::atomic<bool> &stop);

    const QString m_logPath;
    const QString m_spindumpPath;
    const QString m_reportsDir;
    const std::optional<LinuxRestartSources> m_linux;
    SerialWorker m_worker; // last member: destroyed first, while the paths are still alive
};

} // namespace lullwick
