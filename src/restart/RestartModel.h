#pragma once

#include "model/RestartAnalysis.h"
#include "model/RunningAppInfo.h"
#include "platform/RunningApps.h"
#include "platform/SerialWorker.h"
#include "profile/ToolPaths.h"
#include "restart/LinuxRestartSources.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

namespace lullwick {

class PMSetService;
class RestartBlockerService;

/// Where the running applications come from; the platform's list unless a test supplies one.
using RunningAppsProvider = std::function<QList<RunningAppInfo>()>;

/// The state behind the Restart tab: the latest analysis and whether an analysis or a decode is
/// under way. Lives on the UI thread; flags given an equal value notify nobody.
class RestartModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(std::optional<lullwick::RestartAnalysis> analysis READ analysis NOTIFY analysisChanged)
    Q_PROPERTY(bool isAnalyzing READ isAnalyzing NOTIFY isAnalyzingChanged)
    Q_PROPERTY(bool isDecoding READ isDecoding NOTIFY isDecodingChanged)

public:
    explicit RestartModel(
        RunningAppsProvider provider = [] { return RunningApps::current(); },
        QString pmsetPath = ToolPaths::pmset(), QString logPath = ToolPaths::log(),
        QString spindumpPath = ToolPaths::spindump(), QString reportsDir = ToolPaths::diagnosticReports(),
        QObject *parent = nullptr);
    /// A model whose service reads the Linux evidence from `linuxSources`, whatever the profile.
    RestartModel(RunningAppsProvider provider, QString pmsetPath, LinuxRestartSources linuxSources,
                 QObject *parent = nullptr);
    ~RestartModel() override;

    [[nodiscard]] const std::optional<RestartAnalysis> &analysis() const { return m_analysis; }
    [[nodiscard]] bool isAnalyzing() const { return m_isAnalyzing; }
    [[nodiscard]] bool isDecoding() const { return m_isDecoding; }

    /// Takes a fresh assertions reading and runs a new analysis, which replaces the stored one.
    void analyze();
    /// Decodes the stall report of the stored analysis, if it has one, and stores the result in it.
    void decodeStall();
    /// The applications a restart would ask to quit: the provider's list without nameless
    /// entries and without this program. Reads the system: an analysis calls it on a worker.
    [[nodiscard]] QList<RunningAppInfo> runningApps() const;

    /// What a decode that names no process stores in place of the process.
    [[nodiscard]] static QString decodeFailureText();

Q_SIGNALS:
    void analysisChanged();
    void isAnalyzingChanged();
    void isDecodingChanged();

private:
    QCoro::Task<void> runAnalysis();
    QCoro::Task<void> runDecode();
    void setAnalysis(RestartAnalysis analysis);
    void setIsAnalyzing(bool value);
    void setIsDecoding(bool value);

    std::optional<RestartAnalysis> m_analysis;
    quint64 m_analysisNumber = 0; // counts stored analyses, so a decode can tell its own is still shown
    bool m_isAnalyzing = false;
    bool m_isDecoding = false;
    int m_analysesUnderWay = 0;
    int m_decodesUnderWay = 0;
    RunningAppsProvider m_provider;
    std::unique_ptr<PMSetService> m_pmset;
    std::unique_ptr<RestartBlockerService> m_service;
    // Listing the running applications reads every installed desktop entry and walks /proc on
    // Linux, so it runs here rather than on the UI thread. Last member: destroyed first.
    SerialWorker m_appsWorker;
};

} // namespace lullwick
