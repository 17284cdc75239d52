#include "restart/RestartBlockerService.h"

#include "model/TextRules.h"
#include "platform/ChildProcess.h"
#include "profile/Profile.h"
#include "restart/StallReports.h"

#include <QCollator>
#include <QLocale>
#include <QSet>
#include <algorithm>

namespace lullwick {

namespace {

// A line names an interrupted quit when its lower-cased text holds one of these...
constexpr QStringView interruptionKeywords[] = {
    u"cancel",        u"interrupt",      u"refus",     u"failed to", u"did not",
    u"will not quit", u"not responding", u"timed out", u"abort",     u"reopen",
};
// ...and also one of these, which point at an application.
constexpr QStringView applicationMarkers[] = {u".app", u"\"", u"com."};

bool containsAny(QStringView text, const auto &needles)
{
    return std::any_of(std::begin(needles), std::end(needles),
                       [text](QStringView needle) { return text.contains(needle); });
}

/// A case-insensitive collator in the user's locale. Under C or POSIX (LANG=C.UTF-8 on build
/// machines) Qt's collator compares code points, which puts "Zed" before "Éclair"; the names
/// are then ordered by the root collation rules that English uses unchanged.
QCollator nameCollator()
{
    QLocale locale;
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::English, QLocale::UnitedStates);
    QCollator collator(locale);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace

RestartBlockerService::RestartBlockerService(QString logPath, QString spindumpPath, QString reportsDir)
    : m_logPath(std::move(logPath)), m_spindumpPath(std::move(spindumpPath)),
      m_reportsDir(std::move(reportsDir))
{}

RestartBlockerService::RestartBlockerService(LinuxRestartSources linuxSources)
    : m_linux(std::move(linuxSources))
{}

RestartBlockerService::~RestartBlockerService() = default;

std::optional<QString> RestartBlockerService::mostRecentStallReport() const
{
    return StallReports::mostRecent(m_reportsDir);
}

QFuture<std::optional<QString>> RestartBlockerService::decodeStallReport(QString path)
{
    return m_worker.run(
        [spindumpPath = m_spindumpPath, path = std::move(path)](const std::atomic<bool> &stop) {
            return StallReports::decode(spindumpPath, path, stop);
        });
}

QFuture<RestartAnalysis> RestartBlockerService::analyze(std::optional<AssertionsSnapshot> assertions,
                                                        QList<RunningAppInfo> runningApps)
{
    return m_worker.run([logPath = m_logPath, reportsDir = m_reportsDir, linuxSources = m_linux,
                         assertions = std::move(assertions),
                         runningApps = std::move(runningApps)](const std::atomic<bool> &stop) {
        QList<RestartFinding> findings;
        std::optional<QString> stallReport;
        bool journalDenied = false;
        if (linuxSources) {
            findings += linuxSources->findings(runningApps, stop, &journalDenied);
        } else {
            findings += updateFindings(assertions);
            findings += loginwindowFindings(logPath, stop);
            stallReport = StallReports::mostRecent(reportsDir);
            if (stallReport)
                findings.append(StallReports::finding(*stallReport));
        }
        findings += runningAppFindings(runningApps);
        rankBySeverity(findings);
        return RestartAnalysis{QDateTime::currentDateTimeUtc(), std::move(findings), stallReport,
                               std::nullopt, journalDenied};
    });
}

QList<RestartFinding>
RestartBlockerService::updateFindings(const std::optional<AssertionsSnapshot> &assertions)
{
    if (!assertions)
        return {};
    QStringList names;
    for (const Assertion &a : assertions->assertions) {
        const QString lower = a.processName.toLower();
        const bool isUpdate = a.kind == AssertionKind::softwareUpdateTask || lower == u"softwareupdated" ||
                              lower == u"mobileassetd";
        if (isUpdate && !names.contains(a.processName))
            names.append(a.processName);
    }
    if (names.isEmpty())
        return {};
    const Profile::Restart &texts = Profile::current().restart();
    return {RestartFinding::make(RestartSeverity::likely, QStringLiteral("Software update"),
                                 texts.updateTitle, texts.updateDetail.arg(names.join(u", ")),
                                 texts.updateAdvice)};
}

std::optional<QString> RestartBlockerService::runLogShow(const QString &logPath,
                                                         const std::atomic<bool> &stop)
{
    const QStringList arguments{QStringLiteral("show"),
                                QStringLiteral("--last"),
                                QStringLiteral("10m"),
                                QStringLiteral("--predicate"),
                                QStringLiteral("process == \"loginwindow\""),
                                QStringLiteral("--info"),
                                QStringLiteral("--style"),
                                QStringLiteral("compact")};
    const ChildProcessResult run = ChildProcess::run(logPath, arguments, &stop);
    if (!run.started || run.exitStatus != 0)
        return std::nullopt;
    return text::decodeUtf8(run.standardOutput);
}

QList<RestartFinding> RestartBlockerService::loginwindowFindings(const QString &logPath,
                                                                 const std::atomic<bool> &stop)
{
    const std::optional<QString> log = runLogShow(logPath, stop);
    if (!log)
        return {};
    QStringList kept;
    for (QStringView line : QStringView(*log).tokenize(u'\n')) {
        const QString lower = line.toString().toLower();
        if (containsAny(lower, interruptionKeywords) && containsAny(lower, applicationMarkers))
            kept.append(text::trimmed(line).toString());
    }
    if (kept.isEmpty())
        return {};
    // The most recent four are enough to name the app; older ones would bury them.
    if (kept.size() > 4)
        kept = kept.sliced(kept.size() - 4);
    return {RestartFinding::make(
        RestartSeverity::possible, QStringLiteral("loginwindow log (last 10 min)"),
        QStringLiteral("loginwindow logged an interrupted quit or restart"),
        QStringLiteral("While orchestrating a recent restart or logout, loginwindow recorded the "
                       "following. An app named here is a strong candidate for what blocked the "
                       "restart:\n\n") +
            kept.join(u'\n'),
        QStringLiteral("If you recognize an app above, switch to it and look for an "
                       "unsaved-document dialog or an open sheet, then save or close it and try "
                       "restarting again."))};
}

QList<RestartFinding> RestartBlockerService::runningAppFindings(const QList<RunningAppInfo> &apps)
{
    if (apps.isEmpty())
        return {};
    QStringList names;
    names.reserve(apps.size());
    for (const RunningAppInfo &app : apps)
        names.append(app.name);
    const QCollator collator = nameCollator();
    std::stable_sort(names.begin(), names.end(),
                     [&collator](const QString &a, const QString &b) { return collator.compare(a, b) < 0; });
    return {RestartFinding::make(
        RestartSeverity::info, QStringLiteral("Running apps"),
        QString::number(apps.size()) + QStringLiteral(" apps are open and will be asked to quit"),
        Profile::current().restart().runningAppsDetail + names.join(u", "),
        QStringLiteral("If restart hangs with nothing flagged above, click through these apps "
                       "(especially editors and anything with an open document) looking for an "
                       "unsaved-changes prompt, then quit them and retry."))};
}

} // namespace lullwick
