#include "report/ReportJson.h"

#include "profile/Profile.h"
#include "report/ReportOptions.h"
#include "restart/RestartVerdict.h"
#include "summary/AssertionRowText.h"
#include "summary/SummaryVerdict.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

template <typename T> QJsonValue orNull(const std::optional<T> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QString isoUtc(const QDateTime &instant)
{
    // Whole seconds: jq's date functions read no fractions.
    return instant.toUTC().toString(Qt::ISODate);
}

QJsonObject assertionObject(const Assertion &a, const ResolvedNames &names)
{
    const AssertionRowText row = AssertionRowText::make(a, names);
    const std::optional<ProcessInfo> entry = Profile::current().catalog().info(a.processName);
    std::optional<QString> createdForName;
    if (row.createdForPID && names.contains(*row.createdForPID))
        createdForName = names.value(*row.createdForPID);
    QJsonArray blocks;
    for (SleepKind kind : allSleepKinds) {
        if (a.kind.blockedSleepKinds().contains(kind))
            blocks.append(ReportOptions::word(kind));
    }
    QJsonValue catalog;
    if (entry) {
        catalog = QJsonObject{{u"headline"_s, entry->headline},
                              {u"explanation"_s, entry->explanation},
                              {u"callToAction"_s, orNull(entry->callToAction)}};
    }
    return {{u"pid"_s, a.pid},
            {u"processName"_s, a.processName},
            {u"assertionID"_s, a.assertionID},
            {u"timeHeld"_s, a.timeHeld},
            {u"type"_s, a.kind.typeWord()},
            {u"kind"_s, a.kind.name()},
            {u"namedReason"_s, orNull(a.namedReason)},
            {u"extras"_s, orNull(a.extras)},
            {u"holder"_s, orNull(row.holder)},
            {u"createdForPID"_s, orNull(row.createdForPID)},
            {u"createdForName"_s, orNull(createdForName)},
            {u"title"_s, row.title},
            {u"description"_s, Profile::current().describe(a.kind)},
            {u"blocks"_s, blocks},
            {u"catalog"_s, catalog}};
}

/// The positions in `all` of the records of `some`, matched by id.
QJsonArray indexesOf(const QList<Assertion> &some, const QList<Assertion> &all)
{
    QJsonArray indexes;
    for (const Assertion &a : some) {
        const auto at =
            std::find_if(all.cbegin(), all.cend(), [&a](const Assertion &b) { return a.id == b.id; });
        indexes.append(qint64(at - all.cbegin()));
    }
    return indexes;
}

QJsonArray findingsArray(const QList<Finding> &findings)
{
    QJsonArray array;
    for (const Finding &f : findings) {
        array.append(QJsonObject{{u"severity"_s, word(f.severity)},
                                 {u"source"_s, f.source},
                                 {u"title"_s, f.title},
                                 {u"detail"_s, f.detail},
                                 {u"action"_s, orNull(f.advice)}});
    }
    return array;
}

} // namespace

QJsonObject ReportJson::reading(const AssertionsSnapshot &snapshot, const ResolvedNames &names,
                                const std::optional<SleepFindings> &sleep)
{
    QJsonArray counts;
    for (const SystemWideCount &c : snapshot.systemWideCounts)
        counts.append(QJsonObject{{u"name"_s, c.name}, {u"count"_s, c.count}});
    QJsonArray assertions;
    for (const Assertion &a : snapshot.assertions)
        assertions.append(assertionObject(a, names));
    QJsonObject blockers;
    for (SleepKind kind : allSleepKinds)
        blockers.insert(ReportOptions::word(kind), indexesOf(snapshot.blockers(kind), snapshot.assertions));

    return {{u"schemaVersion"_s, schemaVersion},
            {u"capturedAt"_s, isoUtc(snapshot.capturedAt)},
            {u"systemWideCounts"_s, counts},
            {u"assertions"_s, assertions},
            {u"blockers"_s, blockers},
            {u"nonBlocking"_s, indexesOf(snapshot.nonBlockingAssertions(), snapshot.assertions)},
            {u"verdict"_s, SummaryVerdict::of(snapshot, sleep ? sleep->cannotSuspend : std::nullopt).text()},
            {u"sleepFindings"_s, sleep ? findingsArray(sleep->findings) : QJsonArray()}};
}

QJsonObject ReportJson::restart(const RestartAnalysis &analysis)
{
    QJsonArray findings;
    for (const RestartFinding &f : analysis.findings) {
        findings.append(QJsonObject{{u"severity"_s, word(f.severity)},
                                    {u"source"_s, f.source},
                                    {u"title"_s, f.title},
                                    {u"detail"_s, f.detail},
                                    {u"action"_s, orNull(f.advice)}});
    }
    return {{u"ranAt"_s, isoUtc(analysis.ranAt)},
            {u"verdict"_s, RestartVerdict::of(analysis).text()},
            {u"stallReportPath"_s, orNull(analysis.stallReportPath)},
            {u"findings"_s, findings}};
}

QJsonObject ReportJson::raw(const AssertionsSnapshot &snapshot, const QString &settingsRaw)
{
    return {{u"assertions"_s, snapshot.rawOutput}, {u"settings"_s, settingsRaw}};
}

} // namespace lullwick
