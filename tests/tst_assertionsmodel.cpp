#include "FakeToolDir.h"
#include "Fixtures.h"
#include "summary/AssertionsModel.h"

#include <QtTest>

using namespace lullwick;

namespace {

constexpr int refreshTimeoutMs = 20'000;

/// Tools that work: 16 assertions, created for 5000 (twice), 5001 and 5002; "settings\n"; and a ps
/// that knows 5000 and 5001.
bool playWorkingTools(const FakeToolDir &fake)
{
    fake.setOutput("assertions", Fixtures::generatedAssertions(16, 3));
    fake.setOutput("settings", "settings\n");
    fake.setProcessTable(
        {{5000, "/Applications/Spotify.app/Contents/MacOS/Spotify"}, {5001, "/usr/bin/caffeinate"}});
    return fake.isValid();
}

/// Every change notification of a model, in order, with the value it announced.
class ChangeLog : public QObject {
public:
    explicit ChangeLog(const AssertionsModel &m)
    {
        const auto on = [&](void (AssertionsModel::*changed)(), auto value) {
            connect(&m, changed, this, [this, value] { m_entries << value(); });
        };
        on(&AssertionsModel::isFetchingChanged,
           [&m] { return "isFetching=" + QString::number(m.isFetching()); });
        on(&AssertionsModel::snapshotChanged,
           [&m] { return "snapshot=" + QString::number(m.snapshot()->assertions.size()); });
        on(&AssertionsModel::settingsRawChanged, [&m] { return "settingsRaw=" + m.settingsRaw(); });
        on(&AssertionsModel::lastErrorChanged,
           [&m] { return "lastError=" + m.lastError().value_or("none"); });
        on(&AssertionsModel::resolvedNamesChanged, [&m] {
            QStringList names = m.resolvedNames().values();
            names.sort();
            return "resolvedNames=" + names.join(u',');
        });
        on(&AssertionsModel::showNonBlockedFirstChanged,
           [&m] { return "showNonBlockedFirst=" + QString::number(m.showNonBlockedFirst()); });
    }
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    QStringList m_entries;
};

bool finishRefresh(AssertionsModel &model)
{
    model.refresh();
    return QTest::qWaitFor([&] { return !model.isFetching(); }, refreshTimeoutMs);
}

} // namespace

class TestAssertionsModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void refreshesPublishInOrder()
    {
        FakeToolDir fake;
        QVERIFY(playWorkingTools(fake));
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        ChangeLog log(model);

        model.setShowNonBlockedFirst(true); // already true: notifies nobody
        model.setShowNonBlockedFirst(false);
        model.setShowNonBlockedFirst(false);
        QCOMPARE(log.take(), QStringList{"showNonBlockedFirst=0"});

        QVERIFY(finishRefresh(model));
        // lastError was already absent and resolvedNames already empty: no notification for either.
        QCOMPARE(log.take(),
                 (QStringList{"isFetching=1", "snapshot=16", "settingsRaw=settings\n",
                              "resolvedNames=Spotify", "resolvedNames=Spotify,caffeinate", "isFetching=0"}));
        // Each creator once, though two assertions were created for 5000.
        QList<qint64> asked = fake.psQueries();
        std::sort(asked.begin(), asked.end());
        QCOMPARE(asked, (QList<qint64>{5000, 5001, 5002}));

        // A failure keeps the previous reading, settings text and names.
        const QUuid firstId = model.snapshot()->assertions[0].id;
        fake.setExitStatus("assertions", 2);
        QVERIFY(finishRefresh(model));
        QCOMPARE(log.take(),
                 (QStringList{"isFetching=1", "lastError=pmset exited with status 2.", "isFetching=0"}));
        QCOMPARE(model.snapshot()->assertions[0].id, firstId);

        // A failed settings read only empties the text; the success clears the error and empties
        // the names before looking them up again.
        fake.setExitStatus("assertions", 0);
        fake.setExitStatus("settings", 1);
        QVERIFY(finishRefresh(model));
        QCOMPARE(log.take(), (QStringList{"isFetching=1", "snapshot=16", "settingsRaw=", "lastError=none",
                                          "resolvedNames=", "resolvedNames=Spotify",
                                          "resolvedNames=Spotify,caffeinate", "isFetching=0"}));
        QCOMPARE(model.resolvedNames(), (ResolvedNames{{5000, "Spotify"}, {5001, "caffeinate"}}));
    }

    // The model gets the failed assertions read only once the settings read is under way, so it
    // cannot skip that read and has to wait for it to end.
    void failedAssertionsReadWaitsForSettingsRead()
    {
        FakeToolDir fake;
        QVERIFY(playWorkingTools(fake));
        fake.setExitStatus("assertions", 1);
        fake.setErrorOutput("assertions", "not allowed\n");
        fake.hold("settings");
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        model.refresh();
        QVERIFY(fake.waitForStart("settings"));
        QCoreApplication::processEvents(); // delivers the failed assertions read
        QVERIFY(model.isFetching());

        fake.release("settings");
        QVERIFY(QTest::qWaitFor([&] { return !model.isFetching(); }, refreshTimeoutMs));
        QVERIFY(!model.snapshot());
        QCOMPARE(model.settingsRaw(), QString());
        QCOMPARE(model.lastError(), std::optional<QString>("pmset exited with status 1.\n\nnot allowed\n"));
    }

    // A second refresh asked for while one runs keeps the model busy until it, too, has ended.
    void overlappingRefreshesStayBusyToTheEnd()
    {
        FakeToolDir fake;
        QVERIFY(playWorkingTools(fake));
        fake.setOutput("assertions",
                       "Listed by owning process:\n   pid 1(a): [b] t W\n"); // no names to look up
        fake.hold("settings");
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        model.refresh();
        QVERIFY(fake.waitForStart("settings"));
        model.refresh(); // queued behind the first one's settings read
        fake.hold("assertions");
        fake.release("settings");

        // The first refresh ends while the second one's assertions read is held.
        QVERIFY(QTest::qWaitFor([&] { return fake.pmsetCalls().size() == 3; }, refreshTimeoutMs));
        QVERIFY(QTest::qWaitFor([&] { return model.settingsRaw() == "settings\n"; }, refreshTimeoutMs));
        QCoreApplication::processEvents();
        QVERIFY(model.isFetching());

        fake.release("assertions");
        QVERIFY(QTest::qWaitFor([&] { return !model.isFetching(); }, refreshTimeoutMs));
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QCOMPARE(calls.size(), 4);
        QVERIFY(std::all_of(calls.cbegin(), calls.cend(),
                            [](const FakeToolDir::Call &c) { return c.endNs != 0; }));
    }

    // Each pmset run is held until the test has seen the UI thread carry on without it.
    void uiThreadNeverWaitsForTheTool()
    {
        FakeToolDir fake;
        QVERIFY(playWorkingTools(fake));
        fake.hold("assertions");
        fake.hold("settings");
        AssertionsModel model(fake.pmsetPath(), fake.psPath());
        model.refresh(); // returns while pmset is held
        QVERIFY(fake.waitForStart("assertions"));
        QVERIFY(model.isFetching() && !model.snapshot());
        QCOMPARE(fake.pmsetCalls().value(0).endNs, 0);

        // The reading is published at once, while the settings read is still held.
        fake.release("assertions");
        QVERIFY(fake.waitForStart("settings"));
        QCoreApplication::processEvents();
        QVERIFY(model.snapshot());
        QCOMPARE(fake.pmsetCalls().value(1).endNs, 0);

        fake.release("settings");
        QVERIFY(QTest::qWaitFor([&] { return !model.isFetching(); }, refreshTimeoutMs));
        QCOMPARE(model.settingsRaw(), "settings\n");
    }
};

QTEST_GUILESS_MAIN(TestAssertionsModel)
#include "tst_assertionsmodel.moc"
