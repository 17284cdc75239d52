#include "FakeToolDir.h"
#include "Fixtures.h"
#include "summary/AssertionsModel.h"

#include <QtTest>

using namespace lullwick;

namespace {

constexpr int refreshTimeoutMs = 20'000;

/// A model over tools that work: 16 assertions, created for 5000 (twice), 5001 and 5002;
/// "settings\n"; and a ps that knows 5000 and 5001.
struct Rig {
    FakeToolDir fake;
    AssertionsModel model{fake.pmsetPath(), fake.psPath()};

    Rig()
    {
        fake.setOutput("assertions", Fixtures::generatedAssertions(16, 3));
        fake.setOutput("settings", "settings\n");
        fake.setProcessTable(
            {{5000, "/Applications/Spotify.app/Contents/MacOS/Spotify"}, {5001, "/usr/bin/caffeinate"}});
    }
    bool finished()
    {
        return QTest::qWaitFor([&] { return !model.isFetching(); }, refreshTimeoutMs);
    }
    bool refreshed()
    {
        model.refresh();
        return finished();
    }
};

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

} // namespace

class TestAssertionsModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void refreshesPublishInOrder()
    {
        Rig rig;
        AssertionsModel &model = rig.model;
        ChangeLog log(model);

        model.setShowNonBlockedFirst(true); // already true: notifies nobody
        model.setShowNonBlockedFirst(false);
        model.setShowNonBlockedFirst(false);
        QCOMPARE(log.take(), QStringList{"showNonBlockedFirst=0"});

        QVERIFY(rig.refreshed());
        // lastError was already absent and resolvedNames already empty: no notification for either.
        QCOMPARE(log.take(),
                 (QStringList{"isFetching=1", "snapshot=16", "settingsRaw=settings\n",
                              "resolvedNames=Spotify", "resolvedNames=Spotify,caffeinate", "isFetching=0"}));
        // Each creator once, though two assertions were created for 5000.
        QList<qint64> asked = rig.fake.psQueries();
        std::sort(asked.begin(), asked.end());
        QCOMPARE(asked, (QList<qint64>{5000, 5001, 5002}));

        // A failure keeps the previous reading, settings text and names.
        const QUuid firstId = model.snapshot()->assertions[0].id;
        rig.fake.setExitStatus("assertions", 2);
        QVERIFY(rig.refreshed());
        QCOMPARE(log.take(),
                 (QStringList{"isFetching=1", "lastError=pmset exited with status 2.", "isFetching=0"}));
        QCOMPARE(model.snapshot()->assertions[0].id, firstId);

        // A failed settings read only empties the text; the success clears the error and empties
        // the names before looking them up again.
        rig.fake.setExitStatus("assertions", 0);
        rig.fake.setExitStatus("settings", 1);
        QVERIFY(rig.refreshed());
        QCOMPARE(log.take(), (QStringList{"isFetching=1", "snapshot=16", "settingsRaw=", "lastError=none",
                                          "resolvedNames=", "resolvedNames=Spotify",
                                          "resolvedNames=Spotify,caffeinate", "isFetching=0"}));
        QCOMPARE(model.resolvedNames(), (ResolvedNames{{5000, "Spotify"}, {5001, "caffeinate"}}));
    }

    // Each pmset run is held until the test has seen the UI thread carry on without it. A reading
    // is published at once; a failed one reaches the model only once the settings read is under
    // way, so the model cannot skip that read and has to wait for it to end.
    void uiThreadNeverWaitsForTheTool_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("settings");
        QTest::addColumn<std::optional<QString>>("error");
        QTest::addRow("reading") << 0 << "settings\n" << std::optional<QString>();
        QTest::addRow("failed reading")
            << 1 << QString() << std::optional<QString>("pmset exited with status 1.\n\nnot allowed\n");
    }
    void uiThreadNeverWaitsForTheTool()
    {
        QFETCH(int, status);
        Rig rig;
        FakeToolDir &fake = rig.fake;
        fake.setExitStatus("assertions", status);
        fake.setErrorOutput("assertions", "not allowed\n");
        fake.hold("assertions");
        fake.hold("settings");
        rig.model.refresh(); // returns while pmset is held
        QVERIFY(fake.waitForStart("assertions"));
        QVERIFY(rig.model.isFetching() && !rig.model.snapshot());
        QCOMPARE(fake.pmsetCalls().value(0).endNs, 0);

        fake.release("assertions");
        QVERIFY(fake.waitForStart("settings"));
        QCoreApplication::processEvents(); // delivers the assertions read
        QCOMPARE(rig.model.snapshot().has_value(), status == 0);
        QVERIFY(rig.model.isFetching());
        QCOMPARE(fake.pmsetCalls().value(1).endNs, 0);

        fake.release("settings");
        QVERIFY(rig.finished());
        QTEST(rig.model.settingsRaw(), "settings");
        QTEST(rig.model.lastError(), "error");
    }

    // A second refresh asked for while one runs keeps the model busy until it, too, has ended.
    void overlappingRefreshesStayBusyToTheEnd()
    {
        Rig rig;
        FakeToolDir &fake = rig.fake;
        fake.setOutput("assertions",
                       "Listed by owning process:\n   pid 1(a): [b] t W\n"); // no names to look up
        fake.hold("settings");
        rig.model.refresh();
        QVERIFY(fake.waitForStart("settings"));
        rig.model.refresh(); // queued behind the first one's settings read
        fake.hold("assertions");
        fake.release("settings");

        // The first refresh ends while the second one's assertions read is held.
        QVERIFY(QTest::qWaitFor([&] { return fake.pmsetCalls().size() == 3; }, refreshTimeoutMs));
        QVERIFY(QTest::qWaitFor([&] { return rig.model.settingsRaw() == "settings\n"; }, refreshTimeoutMs));
        QCoreApplication::processEvents();
        QVERIFY(rig.model.isFetching());

        fake.release("assertions");
        QVERIFY(rig.finished());
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QCOMPARE(calls.size(), 4);
        QVERIFY(std::all_of(calls.cbegin(), calls.cend(),
                            [](const FakeToolDir::Call &c) { return c.endNs != 0; }));
    }
};

QTEST_GUILESS_MAIN(TestAssertionsModel)
#include "tst_assertionsmodel.moc"
