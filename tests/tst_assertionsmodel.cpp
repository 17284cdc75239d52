#include "FakeToolDir.h"
#include "Fixtures.h"
#include "summary/AssertionsModel.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QtTest>

using namespace lullwick;

namespace {

constexpr int refreshTimeoutMs = 20'000;

// Two assertions created for 1069, one for 2001, one for 3003 (which ps doesn't know).
const QByteArray listingWithCreators =
    "Listed by owning process:\n"
    "   pid 402(coreaudiod): [0x1] 00:01:00 PreventUserIdleSystemSleep named: \"a\"\n"
    "\tCreated for PID: 1069.\n"
    "   pid 402(coreaudiod): [0x2] 00:02:00 PreventUserIdleSystemSleep named: \"b\"\n"
    "\tCreated for PID: 1069.\n"
    "   pid 77(runningboardd): [0x3] 00:00:10 BackgroundTask\n"
    "\tCreated for PID: 2001.\n"
    "   pid 78(runningboardd): [0x4] 00:00:10 BackgroundTask\n"
    "\tCreated for PID: 3003.\n";

const QHash<qint64, QString> processTable{{1069, "/Applications/Spotify.app/Contents/MacOS/Spotify"},
                                          {2001, "/usr/bin/caffeinate"}};

/// Records every change notification of a model, in order, with the value it announced.
class ChangeLog {
public:
    explicit ChangeLog(const AssertionsModel &m)
    {
        QObject::connect(&m, &AssertionsModel::isFetchingChanged, &m_context,
                         [&] { m_entries << QStringLiteral("isFetching=%1").arg(m.isFetching()); });
        QObject::connect(&m, &AssertionsModel::snapshotChanged, &m_context, [&] {
            m_entries
                << QStringLiteral("snapshot=%1").arg(m.snapshot() ? m.snapshot()->assertions.size() : -1);
        });
        QObject::connect(&m, &AssertionsModel::settingsRawChanged, &m_context,
                         [&] { m_entries << QStringLiteral("settingsRaw=%1").arg(m.settingsRaw().size()); });
        QObject::connect(&m, &AssertionsModel::lastErrorChanged, &m_context, [&] {
            m_entries << QStringLiteral("lastError=%1").arg(m.lastError() ? "set" : "none");
        });
        QObject::connect(&m, &AssertionsModel::resolvedNamesChanged, &m_context, [&] {
            QStringList names = m.resolvedNames().values();
            names.sort();
            m_entries << QStringLiteral("resolvedNames=") + names.join(u',');
        });
    }
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    QObject m_context;
    QStringList m_entries;
};

/// Tools that work: the listing with creators, `settings`, and a ps that knows two of the creators.
void playWorkingTools(const FakeToolDir &fake, const QByteArray &settings = "settings\n")
{
    fake.setOutput("assertions", listingWithCreators);
    fake.setOutput("settings", settings);
    fake.setProcessTable(processTable);
}

bool finishRefresh(AssertionsModel &model)
{
    model.refresh();
    return QTest::qWaitFor([&] { return !model.isFetching(); }, refreshTimeoutMs);
}

QSet<QUuid> idsOf(const AssertionsModel &model)
{
    QSet<QUuid> ids;
    for (const Assertion &a : model.snapshot()->assertions)
        ids.insert(a.id);
    return ids;
}

} // namespace

class TestAssertionsModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty()
    {
        AssertionsModel model;
        QVERIFY(!model.snapshot());
        QVERIFY(model.settingsRaw().isEmpty());
        QVERIFY(!model.lastError());
        QVERIFY(!model.isFetching());
        QVERIFY(model.resolvedNames().isEmpty());
        QVERIFY(model.showNonBlockedFirst());

        QSignalSpy spy(&model, &AssertionsModel::showNonBlockedFirstChanged);
        model.setShowNonBlockedFirst(true);
        QCOMPARE(spy.count(), 0);
        model.setShowNonBlockedFirst(false);
        model.setShowNonBlockedFirst(false);
        QCOMPARE(spy.count(), 1);
        QVERIFY(!model.showNonBlockedFirst());
    }

    void successPublishesInOrder()
    {
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        playWorkingTools(fake, Fixtures::read("settings-typical.txt"));
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        ChangeLog log(model);

        QVERIFY(finishRefresh(model));
        const QString settingsSize = QString::number(Fixtures::readText("settings-typical.txt").size());
        // lastError was already absent and resolvedNames already empty: no notification for either.
        QCOMPARE(log.take(),
                 (QStringList{"isFetching=1", "snapshot=4", "settingsRaw=" + settingsSize,
                              "resolvedNames=Spotify", "resolvedNames=Spotify,caffeinate", "isFetching=0"}));
        QCOMPARE(model.resolvedNames(), (ResolvedNames{{1069, "Spotify"}, {2001, "caffeinate"}}));

        // Fail once so that the next success has an error to clear and names to empty.
        fake.setExitStatus("assertions", 1);
        QVERIFY(finishRefresh(model));
        QCOMPARE(log.take(), (QStringList{"isFetching=1", "lastError=set", "isFetching=0"}));

        fake.setExitStatus("assertions", 0);
        fake.setOutput("settings", "changed settings\n");
        QVERIFY(finishRefresh(model));
        QCOMPARE(log.take(), (QStringList{"isFetching=1", "snapshot=4", "settingsRaw=17", "lastError=none",
                                          "resolvedNames=", "resolvedNames=Spotify",
                                          "resolvedNames=Spotify,caffeinate", "isFetching=0"}));
        QCOMPARE(model.settingsRaw(), "changed settings\n");
    }

    void failureKeepsPreviousReading()
    {
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        playWorkingTools(fake);
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        QVERIFY(finishRefresh(model));
        const QSet<QUuid> idsBefore = idsOf(model);
        const ResolvedNames namesBefore = model.resolvedNames();

        fake.setExitStatus("assertions", 2);
        QSignalSpy snapshotSpy(&model, &AssertionsModel::snapshotChanged);
        QSignalSpy settingsSpy(&model, &AssertionsModel::settingsRawChanged);
        QSignalSpy namesSpy(&model, &AssertionsModel::resolvedNamesChanged);
        QSignalSpy errorSpy(&model, &AssertionsModel::lastErrorChanged);
        QVERIFY(finishRefresh(model));

        QCOMPARE(snapshotSpy.count(), 0);
        QCOMPARE(settingsSpy.count(), 0);
        QCOMPARE(namesSpy.count(), 0);
        QCOMPARE(errorSpy.count(), 1);
        QCOMPARE(model.lastError(), std::optional<QString>("pmset exited with status 2."));
        QCOMPARE(idsOf(model), idsBefore);
        QCOMPARE(model.settingsRaw(), "settings\n");
        QCOMPARE(model.resolvedNames(), namesBefore);
    }

    void failedAssertionsReadDiscardsSettingsRead()
    {
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        fake.setExitStatus("assertions", 1);
        fake.setErrorOutput("assertions", "not allowed\n");
        fake.setOutput("settings", "settings\n");
        fake.setSleep("settings", 0.3);
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        QVERIFY(finishRefresh(model));

        QVERIFY(!model.snapshot());
        QCOMPARE(model.settingsRaw(), QString());
        QCOMPARE(model.lastError(), std::optional<QString>("pmset exited with status 1.\n\nnot allowed\n"));
        // The settings read is cancelled; if it had already started, the refresh waited for its end.
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QVERIFY(!calls.isEmpty() && calls.size() <= 2);
        QCOMPARE(calls[0].call, "assertions");
        for (const FakeToolDir::Call &call : calls)
            QVERIFY2(call.endNs != 0, qPrintable(call.call + " was still running"));
    }

    void failingSettingsReadIsSilent()
    {
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        fake.setOutputFromFixture("assertions", "assertions-typical.txt");
        fake.setOutput("settings", "old settings\n");
        fake.setProcessTable(processTable);
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        QVERIFY(finishRefresh(model));
        QCOMPARE(model.settingsRaw(), "old settings\n");

        fake.setExitStatus("settings", 1);
        QVERIFY(finishRefresh(model));
        QVERIFY(model.snapshot());
        QCOMPARE(model.snapshot()->assertions.size(), 5);
        QCOMPARE(model.settingsRaw(), QString());
        QVERIFY(!model.lastError());
    }

    void eachCreatorIsLookedUpOnce_data()
    {
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QList<qint64>>("queries");
        QTest::addColumn<ResolvedNames>("names");
        QTest::addRow("three assertions for one pid")
            << QByteArray("Listed by owning process:\n"
                          "   pid 1(coreaudiod): [a] 1 BackgroundTask\n\tCreated for PID: 1069.\n"
                          "   pid 1(coreaudiod): [b] 1 BackgroundTask\n\tCreated for PID: 1069.\n"
                          "   pid 2(powerd): [c] 1 BackgroundTask\n\tCreated for PID: 1069.\n")
            << QList<qint64>{1069} << ResolvedNames{{1069, "Spotify"}};
        QTest::addRow("no creators") << Fixtures::read("assertions-typical.txt").replace("Created", "Made")
                                     << QList<qint64>{} << ResolvedNames{};
    }
    void eachCreatorIsLookedUpOnce()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QList<qint64>, queries);
        QFETCH(ResolvedNames, names);
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        fake.setOutput("assertions", listing);
        fake.setProcessTable(processTable);
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        QVERIFY(finishRefresh(model));
        QList<qint64> asked = fake.psQueries();
        std::sort(asked.begin(), asked.end());
        QCOMPARE(asked, queries);
        QCOMPARE(model.resolvedNames(), names);
    }

    void windowStaysResponsiveWhileToolIsSlow()
    {
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        fake.setOutputFromFixture("assertions", "assertions-typical.txt");
        fake.setSleep("assertions", 0.5);
        AssertionsModel model(fake.pmsetPath(), fake.psPath());

        QElapsedTimer sinceTick;
        qint64 largestGapMs = 0;
        int ticks = 0;
        QTimer timer;
        timer.setInterval(5);
        connect(&timer, &QTimer::timeout, this, [&] {
            largestGapMs = std::max(largestGapMs, sinceTick.restart());
            ++ticks;
        });
        QElapsedTimer total;
        total.start();
        sinceTick.start();
        timer.start();
        QVERIFY(finishRefresh(model));
        timer.stop();

        QVERIFY2(total.elapsed() >= 500, "the fake pmset should have slept");
        QVERIFY(ticks > 20);
        QVERIFY2(largestGapMs < 50, qPrintable(QStringLiteral("largest gap %1 ms").arg(largestGapMs)));
    }

    void modelCanGoWhileRefreshing()
    {
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        playWorkingTools(fake);
        fake.setSleep("assertions", 60);
        auto model = std::make_unique<AssertionsModel>(fake.pmsetPath(), fake.psPath());
        model->refresh();
        QVERIFY(model->isFetching());
        QTRY_COMPARE(fake.pmsetPIDs().size(), 1);
        // The hung tool is ended with its own children, and the queued settings read never starts;
        // the suspended refresh must not touch the dead model.
        model.reset();
        QTRY_VERIFY_WITH_TIMEOUT(!FakeToolDir::processGroupAlive(fake.pmsetPIDs().value(0)), 1000);
        QTest::qWait(100);
        QCOMPARE(fake.pmsetPIDs().size(), 1);
        QCOMPARE(fake.pmsetCalls().value(0).endNs, 0);
    }
};

QTEST_GUILESS_MAIN(TestAssertionsModel)
#include "tst_assertionsmodel.moc"
