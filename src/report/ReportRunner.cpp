#include "report/ReportRunner.h"

#include "details/DetailsClipboard.h"
#include "report/ReportJson.h"
#include "report/ReportMetrics.h"
#include "restart/RestartClipboard.h"
#include "restart/RestartModel.h"
#include "summary/AssertionsModel.h"
#include "summary/SummaryClipboard.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace lullwick {

ReportRunner::ReportRunner(ReportOptions options)
    : m_options(options), m_assertions(std::make_unique<AssertionsModel>(ToolPaths::pmset(), ToolPaths::ps(),
                                                                         SleepCheck::forProfile()))
{
    if (m_options.mode == ReportOptions::Mode::restart || m_options.mode == ReportOptions::Mode::metrics)
        m_restart = std::make_unique<RestartModel>();
}

ReportRunner::~ReportRunner() = default;

void ReportRunner::start(std::function<void(const ReportOutcome &)> done)
{
    m_done = std::move(done);
    // Connections, not a task awaiting the models: a task would be left suspended for ever when a
    // signal ends the program and the models go first.
    const auto check = [this] { finishWhenDone(); };
    QObject::connect(m_assertions.get(), &AssertionsModel::isFetchingChanged, m_assertions.get(), check);
    if (m_restart)
        QObject::connect(m_restart.get(), &RestartModel::isAnalyzingChanged, m_restart.get(), check);
    // Both start at once: each model has its own pmset service, so neither waits for the other.
    m_assertions->refresh();
    if (m_restart)
        m_restart->analyze();
}

void ReportRunner::finishWhenDone()
{
    if (!m_done || m_assertions->isFetching() || (!m_assertions->snapshot() && !m_assertions->lastError()))
        return;
    if (m_restart && (m_restart->isAnalyzing() || !m_restart->analysis()))
        return;
    std::exchange(m_done, nullptr)(outcome());
}

ReportOutcome ReportRunner::outcome() const
{
    if (const std::optional<QString> &error = m_assertions->lastError()) {
        QByteArray text = error->toUtf8();
        if (!text.endsWith('\n'))
            text += '\n';
        // The metrics are written all the same: a collector then reads that the reading failed.
        return {m_options.mode == ReportOptions::Mode::metrics ? metrics() : QByteArray(), text,
                ReportOptions::pmsetFailed};
    }
    const bool blocked = std::any_of(allSleepKinds.cbegin(), allSleepKinds.cend(), [this](SleepKind kind) {
        return m_options.failIfBlocked.contains(kind) && !m_assertions->snapshot()->blockers(kind).isEmpty();
    });
    return {render(), {}, blocked ? ReportOptions::blocked : ReportOptions::ok};
}

QByteArray ReportRunner::metrics() const
{
    // A failed reading counts as none, whatever an earlier one found.
    const std::optional<AssertionsSnapshot> snapshot =
        m_assertions->lastError() ? std::nullopt : m_assertions->snapshot();
    // Without a sleep check (on macOS) its family is left out rather than counted as none.
    std::optional<QList<Finding>> sleepFindings;
    if (m_assertions->sleepFindings())
        sleepFindings = m_assertions->sleepFindings()->findings;
    return ReportMetrics::text({snapshot, m_assertions->resolvedNames(), m_restart->analysis(), sleepFindings,
                                QCoreApplication::applicationVersion()});
}

QByteArray ReportRunner::render() const
{
    using Mode = ReportOptions::Mode;
    if (m_options.mode == Mode::metrics)
        return metrics();
    const AssertionsSnapshot &snapshot = *m_assertions->snapshot();
    if (m_options.json) {
        QJsonObject document =
            ReportJson::reading(snapshot, m_assertions->resolvedNames(), m_assertions->sleepFindings());
        if (m_options.mode == Mode::restart)
            document.insert(QStringLiteral("restart"), ReportJson::restart(*m_restart->analysis()));
        if (m_options.mode == Mode::details)
            document.insert(QStringLiteral("raw"), ReportJson::raw(snapshot, m_assertions->settingsRaw()));
        return QJsonDocument(document).toJson(QJsonDocument::Indented);
    }
    switch (m_options.mode) {
    case Mode::summary:
        return SummaryClipboard::text(snapshot, m_assertions->resolvedNames(), {},
                                      m_assertions->sleepFindings())
            .toUtf8();
    case Mode::details:
        return DetailsClipboard::text(snapshot, m_assertions->settingsRaw()).toUtf8();
    case Mode::restart:
        return RestartClipboard::text(m_restart->analysis()).toUtf8();
    case Mode::metrics:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace lullwick
