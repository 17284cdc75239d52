#include "FakeToolDir.h"
#include "Fixtures.h"
#include "restart/RestartModel.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace lullwick;

namespace {

constexpr int waitMs = 20'000;
const QString reportName = QStringLiteral("loginwindow_2026-11-19-220531_Mac.shutdownStall");

/// Fake tools and a reports folder with every evidence source firing.
struct Rig {
    FakeToolDir fake;
    QTemporaryDir reports;
    QList<RunningAppInfo> apps{{"TextEdit", "com.apple.TextEdit", 301}};

    Rig()
    {
        fake.setOutputFromFixture("assertions", "assertions-software-update.txt");
        fake.setOutputFromFixture("log", "loginwindow-compact.txt");
        QFile report(reports.filePath(reportName));
        if (!fake.isValid() || !report.open(QIODevice::WriteOnly))
            qFatal("cannot set up the fake tools");
    }
    std::unique_ptr<RestartModel> model(const QString &pmsetPath = {})
    {
        return std::make_unique<RestartModel>([this] { return apps; },
                                              pmsetPath.isNull() ? fake.pmsetPath() : pmsetPath,
                                              fake.logPath(), fake.spindumpPath(), reports.path());
    }
};

bool finish(RestartModel &model, void (RestartModel::*action)())
{
    (model.*action)();
    return QTest::qWaitFor([&] { return !model.isAnalyzing() && !model.isDecoding(); }, waitMs);
}

QStringList sourcesOf(const RestartModel &model)
{
    QStringList sources;
    for (const RestartFinding &f : model.analysis()->findings)
        sources.append(f.source);
    return sources;
}

} // namespace

class TestRestartModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decodeNeedsAReport()
    {
        Rig rig;
        QFile::remove(rig.reports.filePath(reportName));
        auto model = rig.model();
        QSignalSpy analysisSpy(model.get(), &RestartModel::analysisChanged);
        QSignalSpy decodingSpy(model.get(), &RestartModel::isDecodingChanged);
        model->decodeStall(); // no analysis yet
        QVERIFY(!model->analysis());

        QSignalSpy analyzingSpy(model.get(), &RestartModel::isAnalyzingChanged);
        QVERIFY(finish(*model, &RestartModel::analyze));
        QCOMPARE(analyzingSpy.count(), 2);
        QCOMPARE(analysisSpy.count(), 1);
        QVERIFY(model->analysis() && !model->analysis()->stallReportPath);
        model->decodeStall(); // an analysis without a report
        QTest::qWait(50);
        QCOMPARE(analysisSpy.count(), 1);
        QCOMPARE(decodingSpy.count(), 0);
        QVERIFY(rig.fake.spindumpOutputPaths().isEmpty());
    }

    void decodeStoresItsOutcome_data()
    {
        QTest::addColumn<QByteArray>("decoded"); // null: spindump writes nothing
        QTest::addColumn<QString>("stored");
        QTest::addRow("the hung process") << Fixtures::read("spindump-decoded.txt") << "backupd [1180]";
        QTest::addRow("no process line")
            << QByteArray("Duration: 36s\n") << RestartModel::decodeFailureText();
        QTest::addRow("no output") << QByteArray() << RestartModel::decodeFailureText();
    }
    void decodeStoresItsOutcome()
    {
        QFETCH(QByteArray, decoded);
        QFETCH(QString, stored);
        Rig rig;
        if (!decoded.isNull())
            rig.fake.setOutput("spindump", decoded);
        auto model = rig.model();
        QVERIFY(finish(*model, &RestartModel::analyze));
        const RestartAnalysis before = *model->analysis();

        QSignalSpy decodingSpy(model.get(), &RestartModel::isDecodingChanged);
        QVERIFY(finish(*model, &RestartModel::decodeStall));
        QCOMPARE(decodingSpy.count(), 2);
        const RestartAnalysis &after = *model->analysis();
        QCOMPARE(after.decodedStallProcess, std::optional(stored));
        QCOMPARE(after.ranAt, before.ranAt);
        QCOMPARE(after.findings, before.findings);
        QCOMPARE(after.stallReportPath, std::optional(rig.reports.filePath(reportName)));

        QVERIFY(finish(*model, &RestartModel::analyze));
        QVERIFY(!model->analysis()->decodedStallProcess);
        QVERIFY(model->analysis()->ranAt > before.ranAt);
    }

    void missingPmsetOnlyLosesTheUpdateEvidence()
    {
        Rig rig;
        auto model = rig.model(rig.fake.path() + "/missing/pmset");
        QVERIFY(finish(*model, &RestartModel::analyze));
        QCOMPARE(sourcesOf(*model),
                 (QStringList{"loginwindow log (last 10 min)", "Shutdown stall report", "Running apps"}));
    }

    void runningAppsLeaveOutNamelessAndSelf()
    {
        Rig rig;
        rig.apps = {{"", "com.example.nameless", 10},
                    {"Lullwick", RunningApps::ownIdentifier(), 11},
                    {"Terminal", std::nullopt, 12},
                    {"Lullwick", "com.example.other-lullwick", 13}};
        QCOMPARE(rig.model()->runningApps(), (QList<RunningAppInfo>{rig.apps[2], rig.apps[3]}));
    }

    void decodeDuringAnalysisLeavesTheNewerAnalysis()
    {
        Rig rig;
        rig.fake.setOutput("spindump", Fixtures::read("spindump-decoded.txt"));
        auto model = rig.model();
        QVERIFY(finish(*model, &RestartModel::analyze));
        const QDateTime firstRanAt = model->analysis()->ranAt;

        // The decode queues behind the evidence gathering, so it ends after the new analysis is stored.
        rig.fake.setSleep("log", 0.3);
        model->analyze();
        QTRY_COMPARE_WITH_TIMEOUT(rig.fake.toolCalls().size(), 4, waitMs); // the second log query began
        model->decodeStall();
        QVERIFY(model->isDecoding());
        QVERIFY(QTest::qWaitFor([&] { return !model->isAnalyzing() && !model->isDecoding(); }, waitMs));

        QCOMPARE(rig.fake.spindumpOutputPaths().size(), 1);
        QVERIFY(model->analysis()->ranAt > firstRanAt);
        QVERIFY(!model->analysis()->decodedStallProcess);
    }

    void modelCanGoWhileAnalyzing()
    {
        Rig rig;
        rig.fake.setSleep("log", 60);
        auto model = rig.model();
        model->analyze();
        QTRY_COMPARE_WITH_TIMEOUT(rig.fake.toolCalls().size(), 2, waitMs); // pmset done, log sleeping
        model.reset();
        QTest::qWait(100); // the suspended analysis must not touch the dead model
        QCOMPARE(rig.fake.toolCalls().last().endNs, 0);
    }
};

QTEST_GUILESS_MAIN(TestRestartModel)
#include "tst_restartmodel.moc"
