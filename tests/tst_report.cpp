#include "FakeToolDir.h"
#include "Fixtures.h"
#include "details/DetailsClipboard.h"
#include "pmset/PMSetService.h"
#include "report/ReportOptions.h"
#include "restart/RestartClipboard.h"
#include "restart/RestartModel.h"
#include "summary/SummaryClipboard.h"

#include <QtTest>

using namespace lullwick;

namespace {

constexpr int waitMs = 20'000;
const QString ownPid = QString::number(QCoreApplication::applicationPid());

/// The listing whose one created-for PID is this test's own, so the real ps names it.
QByteArray everyField()
{
    return Fixtures::readText("assertions-every-field.txt").replace("1069", ownPid).toUtf8();
}

struct Run {
    int status = -1;
    QByteArray out, err;
    QDateTime from, to; ///< the run's span; from a whole second, as the texts show no fractions
};

/// A copy of the built report beside a `lullwick-pmset` link to the fake pmset: the report finds
/// its pmset next to itself, and the fake reads its behaviour files next to the link.
struct Rig {
    FakeToolDir fake;

    explicit Rig(const QByteArray &listing)
    {
        fake.setOutput("assertions", listing);
        fake.setOutputFromFixture("settings", "settings-typical.txt");
        if (!fake.isValid() || !QFile::copy(LULLWICK_REPORT, fake.path() + "/lullwick-report") ||
            !QFile::link(fake.pmsetPath(), fake.path() + "/lullwick-pmset"))
            qFatal("cannot set up the report beside the fake pmset");
    }

    [[nodiscard]] Run run(const QStringList &arguments) const
    {
        // No display of any kind: the report must not need one.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        QProcess report;
        report.setProcessEnvironment(environment);
        Run run;
        const QDateTime start = QDateTime::currentDateTimeUtc();
        run.from = start.addMSecs(-start.time().msec());
        report.start(fake.path() + "/lullwick-report", arguments);
        if (report.waitForFinished(waitMs) && report.exitStatus() == QProcess::NormalExit)
            run.status = report.exitCode();
        run.to = QDateTime::currentDateTimeUtc();
        run.out = report.readAllStandardOutput();
        run.err = report.readAllStandardError();
        return run;
    }
};

/// What `build` gives for the whole second within the run that matches the output, if one does;
/// otherwise for the run's end, so that a failing comparison shows a near miss.
QString expectedWithin(const Run &run, const std::function<QString(const QDateTime &)> &build)
{
    for (QDateTime second = run.from; second <= run.to; second = second.addSecs(1)) {
        if (build(second).toUtf8() == run.out)
            return build(second);
    }
    return build(run.to);
}

} // namespace

class TestReport : public QObject {
    Q_OBJECT

    QJsonDocument m_json;
    Run m_jsonRun;

private Q_SLOTS:
    void initTestCase()
    {
        m_jsonRun = Rig(everyField()).run({"--json", "restart"});
        m_json = QJsonDocument::fromJson(m_jsonRun.out);
    }

    void textIsTheClipboardText_data()
    {
        QTest::addColumn<QString>("report");
        QTest::addRow("summary by default") << QString();
        QTest::addRow("summary") << "summary";
        QTest::addRow("details") << "details";
        QTest::addRow("restart after one analysis") << "restart";
    }
    void textIsTheClipboardText()
    {
        QFETCH(QString, report);
        const Rig rig(everyField());
        const Run run = rig.run(report.isNull() ? QStringList() : QStringList{report});
        QCOMPARE(run.status, 0);

        std::optional<RestartAnalysis> analysis;
        if (report == "restart") {
            RestartModel model([] { return RunningApps::current(); }, rig.fake.path() + "/lullwick-pmset");
            model.analyze();
            QTRY_VERIFY_WITH_TIMEOUT(model.analysis(), waitMs);
            analysis = model.analysis();
        }
        const QString expected = expectedWithin(run, [&](const QDateTime &at) {
            const AssertionsSnapshot reading = PMSetService::parse(QString::fromUtf8(everyField()), at);
            if (report == "details")
                return DetailsClipboard::text(reading, Fixtures::readText("settings-typical.txt"));
            if (report == "restart") {
                analysis->ranAt = at;
                return RestartClipboard::text(analysis);
            }
            return SummaryClipboard::text(reading, {{ownPid.toLongLong(), "tst_report"}});
        });
        QCOMPARE(QString::fromUtf8(run.out), expected);
    }

    void jsonCarriesTheReading_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("expected"); // JSON text
        QTest::addRow("schema version") << "schemaVersion" << QByteArray("1");
        QTest::addRow("counters in order")
            << "systemWideCounts/1" << QByteArray(R"j({"name": "SoftwareUpdateTask", "count": 1})j");
        QTest::addRow("created-for pid") << "assertions/0/createdForPID" << ownPid.toUtf8();
        QTest::addRow("created-for name resolved by ps")
            << "assertions/0/createdForName" << QByteArray(R"j("tst_report")j");
        // Above the largest PID Linux hands out, so ps cannot name it.
        QTest::addRow("created-for name not found") << "assertions/3/createdForName" << QByteArray("null");
        QTest::addRow("extras") << "assertions/0/extras"
                                << "\"Created for PID: " + ownPid.toUtf8() + ".\"";
        // The built profile's wording (Linux here); the Mac wording is checked in a Mac-profile build.
        QTest::addRow("record fields")
            << "assertions/2"
            << QByteArray(R"j({"pid": 5120, "processName": "backupd", "assertionID": "0x0000150000019b02",
                "timeHeld": "00:02:11", "type": "PreventSystemSleep", "kind": "preventSystemSleep",
                "namedReason": "Time Machine backup", "extras": null, "createdForPID": null,
                "createdForName": null, "title": "Time Machine backup",
                "description": "Refusing every suspend, automatic or asked for, until the lock is let go.",
                "blocks": ["idle", "system", "display"], "catalog": null})j");
        QTest::addRow("catalog entry of a Linux holder")
            << "assertions/1/catalog" << QByteArray(R"j({"headline": "Zoom call is active",
                "explanation": "Zoom keeps the screen on during a meeting.",
                "callToAction": "End or leave the meeting."})j");
        QTest::addRow("unknown type without name or catalog entry")
            << "assertions/5"
            << QByteArray(R"j({"pid": 877, "processName": "renderd", "assertionID": "0x0000160000019c07",
                "timeHeld": "00:00:40", "type": "RenderFarmHold", "kind": "other", "namedReason": null,
                "extras": null, "createdForPID": null, "createdForName": null,
                "title": "Assertion: RenderFarmHold.", "description": "Assertion: RenderFarmHold.",
                "blocks": [], "catalog": null})j");
        QTest::addRow("blockers as indexes")
            << "blockers" << QByteArray(R"j({"idle": [0, 1, 2, 4], "system": [2], "display": [1, 2]})j");
        QTest::addRow("non-blocking as indexes") << "nonBlocking" << QByteArray("[3, 5]");
        QTest::addRow("verdict")
            << "verdict"
            << QByteArray(R"j("Currently blocking: idle system sleep, all system sleep, display sleep.")j");
        QTest::addRow("restart verdict")
            << "restart/verdict" << QByteArray(R"j("Found a likely cause that’s holding up a restart.")j");
        QTest::addRow("update finding first")
            << "restart/findings/0" << QByteArray(R"j({"severity": "likely", "source": "Software update",
                "title": "A system update is installing right now",
                "detail": "A software updater is holding a lock (softwareupdated). Your computer won’t restart cleanly while an update is mid-install — it wants to finish writing the update first, which can look like a stuck or refused restart.",
                "action": "Let the update finish in your software updater (GNOME Software, Discover, or the terminal running apt), then restart again."})j");
    }
    void jsonCarriesTheReading()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, expected);
        QCOMPARE(m_jsonRun.status, 0);
        QJsonValue value = m_json.object();
        for (const QString &step : path.split('/'))
            value = value.isArray() ? value[step.toInt()] : value[step];
        QCOMPARE(value, QJsonDocument::fromJson("[" + expected + "]").array().first());
    }

    void jsonTimesAreUtc()
    {
        for (const QJsonValue &stamp : {m_json["capturedAt"], m_json["restart"]["ranAt"]}) {
            QVERIFY(stamp.toString().endsWith('Z'));
            const QDateTime at = QDateTime::fromString(stamp.toString(), Qt::ISODate);
            QVERIFY(at >= m_jsonRun.from && at <= m_jsonRun.to);
        }
    }

    // "--" ends the options: whatever follows is a report name, however it looks.
    void optionsEndAtDoubleDash_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("error"); // null: runs the details report, failing on display sleep
        QTest::addRow("an option after it is a report name")
            << QStringList{"--", "--fail-if-blocked=idle"} << "Unknown report: --fail-if-blocked=idle";
        QTest::addRow("a bare option after it is a report name")
            << QStringList{"--", "--json"} << "Unknown report: --json";
        QTest::addRow("options before it still count")
            << QStringList{"--fail-if-blocked=display", "--", "details"} << QString();
    }
    void optionsEndAtDoubleDash()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);
        const ReportOptions::Parsed parsed = ReportOptions::parse(QStringList{"lullwick-report"} + arguments);
        if (!error.isNull()) {
            QCOMPARE(parsed.action, ReportOptions::Action::usageError);
            QCOMPARE(parsed.message.section('\n', 0, 0), error);
            return;
        }
        QCOMPARE(parsed.action, ReportOptions::Action::run);
        QCOMPARE(parsed.options.mode, ReportOptions::Mode::details);
        QVERIFY(parsed.options.failIfBlocked.contains(SleepKind::display));
        QVERIFY(!parsed.options.failIfBlocked.contains(SleepKind::idleSystem));
    }

    void exitStatus_data()
    {
        const QByteArray idleOnly = Fixtures::read("assertions-typical.txt");
        const QByteArray nothing =
            "Listed by owning process:\n"
            "   pid 143(WindowServer): [0x1] 00:00:02 UserIsActive named: \"tickle\"\n";
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addRow("blocked, not asked") << everyField() << QStringList{} << 0;
        QTest::addRow("any kind blocked") << idleOnly << QStringList{"--fail-if-blocked"} << 1;
        QTest::addRow("nothing blocks") << nothing << QStringList{"--json", "--fail-if-blocked"} << 0;
        QTest::addRow("idle blocked") << idleOnly << QStringList{"--fail-if-blocked=idle"} << 1;
        QTest::addRow("system free") << idleOnly << QStringList{"--fail-if-blocked=system"} << 0;
        QTest::addRow("system blocked") << everyField() << QStringList{"--fail-if-blocked=system"} << 1;
        QTest::addRow("display free") << idleOnly << QStringList{"details", "--fail-if-blocked=display"} << 0;
        QTest::addRow("display blocked") << everyField() << QStringList{"--fail-if-blocked=display"} << 1;
        QTest::addRow("help") << nothing << QStringList{"--help"} << 0;
        QTest::addRow("unknown option") << nothing << QStringList{"--verbose"} << 2;
        QTest::addRow("unknown kind") << nothing << QStringList{"--fail-if-blocked=lid"} << 2;
        QTest::addRow("kind left empty") << nothing << QStringList{"--fail-if-blocked="} << 2;
        QTest::addRow("unknown report") << nothing << QStringList{"weekly"} << 2;
        QTest::addRow("two reports") << nothing << QStringList{"summary", "details"} << 2;
        QTest::addRow("pmset fails") << QByteArray() << QStringList{"--fail-if-blocked"} << 3;
    }
    void exitStatus()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        const Rig rig(listing);
        if (status == 3) {
            rig.fake.setExitStatus("assertions", 1);
            rig.fake.setErrorOutput("assertions", "pmset: no assertions\n");
        }
        const Run run = rig.run(arguments);
        QCOMPARE(run.status, status);
        // The report is printed whether or not it fails the run; errors go to standard error alone.
        QCOMPARE(run.out.isEmpty(), status >= 2);
        QCOMPARE(run.err.contains("Usage: "), status == 2);
        if (status == 3)
            QCOMPARE(run.err, "pmset exited with status 1.\n\npmset: no assertions\n");
        else if (status != 2)
            QCOMPARE(run.err, QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "tst_report.moc"
