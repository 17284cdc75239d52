#include "FakeToolDir.h"
#include "Fixtures.h"
#include "profile/Profile.h"
#include "restart/RestartModel.h"
#include "restart/RestartVerdict.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

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
        Fixtures::writeFile(reports.filePath(reportName));
    }
    std::unique_ptr<RestartModel> model(const QString &pmsetPath = {})
    {
        return std::make_unique<RestartModel>([this] { return apps; },
                                              pmsetPath.isNull() ? fake.pmsetPath() : pmsetPath,
                                              fake.logPath(), fake.spindumpPath(), reports.path());
    }
};

bool settle(const RestartModel &model)
{
    return QTest::qWaitFor([&] { return !model.isAnalyzing() && !model.isDecoding(); }, 20'000);
}

} // namespace

class TestRestartModel : public QObject {
    Q_OBJECT
    // The Mac wording; the Linux wording has its own tests.
    const ScopedProfile m_mac{Profile::System::macOS};

private Q_SLOTS:
    void decodeStoresItsOutcome_data()
    {
        QTest::addColumn<bool>("report");
        QTest::addColumn<QByteArray>("decoded"); // null: spindump writes nothing
        QTest::addColumn<QString>("stored");     // null: no decode runs
        const QByteArray decoded = Fixtures::read("spindump-decoded.txt");
        QTest::addRow("the hung process") << true << decoded << u"backupd [1180]"_s;
        QTest::addRow("nothing decoded") << true << QByteArray() << RestartModel::decodeFailureText();
        QTest::addRow("no stall report to decode") << false << decoded << QString();
    }
    void decodeStoresItsOutcome()
    {
        QFETCH(bool, report);
        QFETCH(QByteArray, decoded);
        QFETCH(QString, stored);
        Rig rig;
        if (!report)
            QFile::remove(rig.reports.filePath(reportName));
        if (!decoded.isNull())
            rig.fake.setOutput("spindump", decoded);
        auto model = rig.model();
        model->decodeStall(); // no analysis yet
        QVERIFY(!model->analysis());
        model->analyze();
        QVERIFY(settle(*model));
        const RestartAnalysis before = *model->analysis();
        QCOMPARE(bool(before.stallReportPath), report);

        QSignalSpy analysisSpy(model.get(), &RestartModel::analysisChanged);
        QSignalSpy decodingSpy(model.get(), &RestartModel::isDecodingChanged);
        model->decodeStall();
        QVERIFY(settle(*model));
        QCOMPARE(decodingSpy.count(), report ? 2 : 0);
        QCOMPARE(analysisSpy.count(), report ? 1 : 0);
        QCOMPARE(rig.fake.spindumpOutputPaths().size(), report ? 1 : 0);
        QCOMPARE(model->analysis()->decodedStallProcess,
                 stored.isNull() ? std::nullopt : std::optional(stored));
        QCOMPARE(model->analysis()->ranAt, before.ranAt);
        QCOMPARE(model->analysis()->findings, before.findings);
        QCOMPARE(model->analysis()->stallReportPath, before.stallReportPath);

        model->analyze(); // a new analysis starts undecoded
        QVERIFY(settle(*model));
        QVERIFY(!model->analysis()->decodedStallProcess);
        QVERIFY(model->analysis()->ranAt > before.ranAt);
    }

    void missingPmsetOnlyLosesTheUpdateEvidence()
    {
        Rig rig;
        auto model = rig.model(rig.fake.path() + "/missing/pmset");
        model->analyze();
        QVERIFY(settle(*model));
        QCOMPARE(model->analysis()->findings.size(), 3);
        QCOMPARE(RestartVerdict::of(*model->analysis()).text(),
                 "Nothing is conclusively blocking restart, but here are the things worth checking.");
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

    // The list is read on a worker after the fresh pmset reading.
    void runningAppsAreListedOffTheUIThreadAfterTheReading()
    {
        Rig rig;
        QThread *listedOn = nullptr;
        QList<FakeToolDir::Call> callsWhenListed;
        auto model = std::make_unique<RestartModel>(
            [&] {
                listedOn = QThread::currentThread();
                callsWhenListed = rig.fake.pmsetCalls();
                return rig.apps;
            },
            rig.fake.pmsetPath(), rig.fake.logPath(), rig.fake.spindumpPath(), rig.reports.path());
        model->analyze();
        QVERIFY(settle(*model));
        QVERIFY(listedOn);
        QVERIFY(listedOn != QCoreApplication::instance()->thread());
        QCOMPARE(callsWhenListed.size(), 1);
        QVERIFY(callsWhenListed.first().endNs != 0);
    }

    void decodeDuringAnalysisLeavesTheNewerAnalysis()
    {
        Rig rig;
        rig.fake.setOutput("spindump", Fixtures::read("spindump-decoded.txt"));
        auto model = rig.model();
        model->analyze();
        QVERIFY(settle(*model));
        const QDateTime firstRanAt = model->analysis()->ranAt;

        // The decode queues behind the evidence gathering, so it ends after the new analysis is stored.
        rig.fake.setSleep("log", 0.3);
        model->analyze();
        QTRY_COMPARE(rig.fake.toolCalls().size(), 4); // pmset, log, pmset, and the second log query began
        model->decodeStall();
        QVERIFY(model->isDecoding());
        QVERIFY(settle(*model));
        QCOMPARE(rig.fake.spindumpOutputPaths().size(), 1);
        QVERIFY(model->analysis()->ranAt > firstRanAt);
        QVERIFY(!model->analysis()->decodedStallProcess);
    }

    // The first of two overlapping analyses to end leaves the model busy with the second.
    void overlappingAnalysesStayBusyToTheEnd()
    {
        Rig rig;
        auto model = rig.model();
        QSignalSpy stored(model.get(), &RestartModel::analysisChanged);
        rig.fake.hold("log");
        model->analyze();
        QTRY_COMPARE(rig.fake.toolCalls().size(), 2); // its pmset read has ended, its log query is held
        rig.fake.hold("assertions");
        model->analyze();
        rig.fake.release("log");

        QTRY_COMPARE(stored.count(), 1); // the second is held at its pmset read
        QVERIFY(model->isAnalyzing());
        rig.fake.release("assertions");
        QVERIFY(settle(*model));
        QCOMPARE(stored.count(), 2);
    }

    void modelCanGoWhileAnalyzing()
    {
        Rig rig;
        rig.fake.setSleep("log", 60);
        auto model = rig.model();
        model->analyze();
        QTRY_COMPARE(rig.fake.toolCalls().size(), 2); // pmset done, log sleeping
        model.reset();
        QTest::qWait(100); // the suspended analysis must not touch the dead model
        QCOMPARE(rig.fake.toolCalls().last().endNs, 0);
    }
};

QTEST_GUILESS_MAIN(TestRestartModel)
#include "tst_restartmodel.moc"
