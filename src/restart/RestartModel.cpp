#include "restart/RestartModel.h"

#include "pmset/PMSetService.h"
#include "profile/Profile.h"
#include "restart/RestartBlockerService.h"

#include <QCoroFuture>
#include <QPointer>

namespace lullwick {

namespace {

/// The evidence service of the current profile. On Linux the pmset stand-in also answers for the
/// session's locks and inhibitors; the macOS tools are not there.
std::unique_ptr<RestartBlockerService> evidenceService(const QString &pmsetPath, QString logPath,
                                                       QString spindumpPath, QString reportsDir)
{
    if (Profile::current().kind() == Profile::System::Linux)
        return std::make_unique<RestartBlockerService>(LinuxRestartSources{pmsetPath});
    return std::make_unique<RestartBlockerService>(std::move(logPath), std::move(spindumpPath),
                                                   std::move(reportsDir));
}

} // namespace

RestartModel::RestartModel(RunningAppsProvider provider, QString pmsetPath, QString logPath,
                           QString spindumpPath, QString reportsDir, QObject *parent)
    : QObject(parent), m_provider(std::move(provider)), m_pmset(std::make_unique<PMSetService>(pmsetPath)),
      m_service(
          evidenceService(pmsetPath, std::move(logPath), std::move(spindumpPath), std::move(reportsDir)))
{}

RestartModel::RestartModel(RunningAppsProvider provider, QString pmsetPath, LinuxRestartSources linuxSources,
                           QObject *parent)
    : QObject(parent), m_provider(std::move(provider)),
      m_pmset(std::make_unique<PMSetService>(std::move(pmsetPath))),
      m_service(std::make_unique<RestartBlockerService>(std::move(linuxSources)))
{}

RestartModel::~RestartModel() = default;

QString RestartModel::decodeFailureText()
{
    return QStringLiteral(
        "Couldn’t decode automatically. Click “Reveal report” and open it in Console, or run "
        "spindump on it from Terminal with sudo.");
}

void RestartModel::analyze()
{
    runAnalysis();
}

void RestartModel::decodeStall()
{
    runDecode();
}

QList<RunningAppInfo> RestartModel::runningApps() const
{
    if (!m_provider)
        return {};
    const std::optional<QString> own = RunningApps::ownIdentifier();
    QList<RunningAppInfo> apps;
    for (RunningAppInfo &app : m_provider()) {
        // Absent identifiers on both sides count as the same application.
        if (!app.name.isEmpty() && app.bundleID != own)
            apps.append(std::move(app));
    }
    return apps;
}

QCoro::Task<void> RestartModel::runAnalysis()
{
    // The model can go away while a step is awaited; every resumption checks first.
    const QPointer<RestartModel> self(this);

    ++m_analysesUnderWay;
    setIsAnalyzing(true);
    // Without a reading the analysis still runs; it only lacks the software-update evidence.
    std::optional<AssertionsSnapshot> snapshot;
    if (m_service->readsAssertions()) {
        PMSetService::Result<AssertionsSnapshot> reading = co_await m_pmset->fetchAssertions();
        if (!self)
            co_return;
        if (auto *read = std::get_if<AssertionsSnapshot>(&reading))
            snapshot = std::move(*read);
    }

    QList<RunningAppInfo> apps =
        co_await m_appsWorker.run([this](const std::atomic<bool> &) { return runningApps(); });
    if (!self)
        co_return;
    RestartAnalysis analysis = co_await m_service->analyze(std::move(snapshot), std::move(apps));
    if (!self)
        co_return;
    setAnalysis(std::move(analysis));
    setIsAnalyzing(--m_analysesUnderWay > 0);
}

QCoro::Task<void> RestartModel::runDecode()
{
    const QPointer<RestartModel> self(this);

    if (!m_analysis || !m_analysis->stallReportPath)
        co_return;
    RestartAnalysis decoded = *m_analysis;
    const quint64 startedFrom = m_analysisNumber;

    ++m_decodesUnderWay;
    setIsDecoding(true);
    const std::optional<QString> culprit = co_await m_service->decodeStallReport(*decoded.stallReportPath);
    if (!self)
        co_return;
    // A newer analysis stored meanwhile wins: its report may differ, and the user is looking at it.
    if (startedFrom == m_analysisNumber) {
        decoded.decodedStallProcess = culprit.value_or(decodeFailureText());
        m_analysis = std::move(decoded);
        Q_EMIT analysisChanged();
    }
    setIsDecoding(--m_decodesUnderWay > 0);
}

void RestartModel::setAnalysis(RestartAnalysis analysis)
{
    // Analyses have no equality: every one is new.
    m_analysis = std::move(analysis);
    ++m_analysisNumber;
    Q_EMIT analysisChanged();
}

void RestartModel::setIsAnalyzing(bool value)
{
    if (m_isAnalyzing == value)
        return;
    m_isAnalyzing = value;
    Q_EMIT isAnalyzingChanged();
}

void RestartModel::setIsDecoding(bool value)
{
    if (m_isDecoding == value)
        return;
    m_isDecoding = value;
    Q_EMIT isDecodingChanged();
}

} // namespace lullwick
