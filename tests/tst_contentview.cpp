#include "FakeToolDir.h"
#include "Fixtures.h"
#include "app/ContentView.h"
#include "app/LullwickApp.h"
#include "details/DetailsClipboard.h"
#include "platform/DateFormat.h"
#include "platform/linux/FeedUpdater.h"
#include "profile/Profile.h"
#include "restart/RestartClipboard.h"
#include "restart/RestartModel.h"
#include "summary/AssertionsModel.h"
#include "summary/SummaryClipboard.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QtTest>
#include <csignal>

using namespace lullwick;

namespace {

ContentView *contentOver(const FakeToolDir &fake)
{
    return new ContentView(new AssertionsModel(fake.pmsetPath(), fake.psPath()),
                           new RestartModel([] { return QList<RunningAppInfo>{}; }, fake.pmsetPath(),
                                            fake.logPath(), fake.spindumpPath(), fake.path() + "/reports"));
}

struct Header {
    QLabel *status;
    QWidget *spinner;
    QPushButton *copy;
    QPushButton *refresh;
};

Header headerOf(const ContentView &view)
{
    return {view.findChild<QLabel *>("status"), view.findChild<QWidget *>("spinner"),
            view.findChild<QPushButton *>("copy"), view.findChild<QPushButton *>("refresh")};
}

} // namespace

class TestContentView : public QObject {
    Q_OBJECT
    // The Mac wording; the Linux wording has its own tests.
    const ScopedProfile m_mac{Profile::System::macOS};

private Q_SLOTS:
    void headerFollowsTheReadings()
    {
        FakeToolDir fake;
        fake.setOutputFromFixture("assertions", "assertions-typical.txt");
        fake.setSleep("assertions", 0.5);
        std::unique_ptr<ContentView> view(contentOver(fake));
        const Header h = headerOf(*view);
        QCOMPARE(h.status->text(), "Click Refresh to read pmset.");

        view->show();           // the first showing starts the first reading
        view->activateWindow(); // shortcuts belong to the active window
        QCOMPARE(h.status->text(), "Reading pmset…");
        QVERIFY(h.spinner->isVisible());
        QVERIFY(!h.copy->isEnabled());
        QVERIFY(!h.refresh->isEnabled());
        QTest::keyClick(view->windowHandle(), Qt::Key_R, Qt::ControlModifier); // inert while reading
        h.refresh->click();

        QTRY_VERIFY_WITH_TIMEOUT(!view->model()->isFetching(), 10'000);
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
        QCOMPARE(fake.pmsetCalls().size(), 2); // one assertions and one settings read, no more
        const QString lastChecked =
            "Last checked " + DateFormat::standardTime(view->model()->snapshot()->capturedAt);
        QCOMPARE(h.status->text(), lastChecked);
        QVERIFY(!h.spinner->isVisible());
        QVERIFY(h.copy->isEnabled() && h.refresh->isEnabled());

        // A failed reading leaves the time of the last success in place.
        fake.setSleep("assertions", 0);
        fake.setExitStatus("assertions", 1);
        QSignalSpy fetching(view->model(), &AssertionsModel::isFetchingChanged);
        QTest::keyClick(view->windowHandle(), Qt::Key_R, Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(fetching.count(), 2, 10'000); // started and ended
        QVERIFY(view->model()->lastError());
        QCOMPARE(h.status->text(), lastChecked);
        QVERIFY(h.copy->isEnabled());
    }

    void failedFirstReadingInvitesARefresh()
    {
        FakeToolDir fake;
        fake.setExitStatus("assertions", 1);
        std::unique_ptr<ContentView> view(contentOver(fake));
        view->show();
        QTRY_VERIFY_WITH_TIMEOUT(!view->model()->isFetching(), 10'000);
        const Header h = headerOf(*view);
        QCOMPARE(h.status->text(), "Click Refresh to read pmset.");
        for (int tab = 0; tab < 3; ++tab) {
            view->setSelectedTab(ContentView::Tab(tab));
            QVERIFY(!h.copy->isEnabled());
        }
        QVERIFY(h.refresh->isEnabled());
    }

    void copyPutsTheVisibleTabsText_data()
    {
        QTest::addColumn<ContentView::Tab>("tab");
        QTest::addRow("summary") << ContentView::Tab::summary;
        QTest::addRow("restart, before any analysis") << ContentView::Tab::restart;
        QTest::addRow("details") << ContentView::Tab::details;
    }
    // Also: the tab's and the header's buttons are named by their labels, and the window is pictured.
    void copyPutsTheVisibleTabsText()
    {
        QFETCH(ContentView::Tab, tab);
        FakeToolDir fake;
        fake.setOutputFromFixture("assertions", "assertions-typical.txt");
        fake.setOutputFromFixture("settings", "settings-typical.txt");
        std::unique_ptr<ContentView> view(contentOver(fake));
        view->show();
        QTRY_VERIFY_WITH_TIMEOUT(!view->model()->isFetching(), 10'000);
        view->setSelectedTab(tab);
        QGuiApplication::clipboard()->setText("what was there before");
        headerOf(*view).copy->click();

        const AssertionsModel &m = *view->model();
        const QString expected =
            tab == ContentView::Tab::summary   ? SummaryClipboard::text(m.snapshot(), m.resolvedNames())
            : tab == ContentView::Tab::restart ? RestartClipboard::text(view->restartModel()->analysis())
                                               : DetailsClipboard::text(m.snapshot(), m.settingsRaw());
        QCOMPARE(QGuiApplication::clipboard()->text(), expected);

        const QList<QAbstractButton *> buttons = view->findChildren<QAbstractButton *>();
        QVERIFY(buttons.size() > 3);
        for (QAbstractButton *button : buttons) {
            if (!button->text().isEmpty())
                QCOMPARE(button->accessibleName(), button->text().remove(u'&'));
        }
        const QString shots = QStringLiteral(LULLWICK_SCREENSHOT_DIR);
        const QString name = QMetaEnum::fromType<ContentView::Tab>().valueToKey(int(tab));
        view->resize(760, 600);
        QVERIFY(QDir().mkpath(shots) && view->grab().save(shots + "/content-" + name + ".png"));
    }

    void windowKeepsItsSizesAndMenu()
    {
        FakeToolDir fake;
        LullwickApp app(contentOver(fake), std::make_unique<FeedUpdater>(QUrl(), "0.1.0"));
        QCOMPARE(app.window().windowTitle(), "Lullwick");
        QCOMPARE(app.window().size(), QSize(760, 600));
        app.window().resize(300, 200);
        QCOMPARE(app.window().size(), QSize(640, 480));
        QStringList items;
        for (QAction *menu : app.window().menuBar()->actions())
            for (QAction *item : menu->menu()->actions())
                items << item->text();
        QCOMPARE(items, (QStringList{"About Lullwick", "Check for Updates…"}));
    }

    void closingWhileAToolHangsEndsIt()
    {
        FakeToolDir fake;
        // An hour: a close that waited for the tool would hang here until QtTest's watchdog fails it.
        fake.setSleep("assertions", 3600);
        auto app =
            std::make_unique<LullwickApp>(contentOver(fake), std::make_unique<FeedUpdater>(QUrl(), "0.1.0"));
        app->window().show();
        QVERIFY(fake.waitForStart("assertions"));
        app->window().close();
        app.reset();
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QCOMPARE(calls.size(), 1); // the queued settings read never started
        QTRY_VERIFY_WITH_TIMEOUT(!FakeToolDir::processGroupAlive(calls[0].pid), 1000);
    }

    void signalEndsTheProgramAndItsTool_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addRow("terminated: closes as the window would") << SIGTERM;
        QTest::addRow("killed outright: the tool dies with it") << SIGKILL;
    }
    void signalEndsTheProgramAndItsTool()
    {
        QFETCH(int, signal);
        FakeToolDir fake;
        const QString program = fake.placeProgram(QStringLiteral(LULLWICK_PROGRAM));
        QVERIFY(!program.isEmpty());
        QProcess lullwick; // offscreen, as this test is
        const qint64 tool = fake.signalDuringHeldCall(lullwick, program, {signal});
        QVERIFY(tool > 0);
        QCOMPARE(lullwick.exitStatus(), signal == SIGKILL ? QProcess::CrashExit : QProcess::NormalExit);
        if (signal != SIGKILL)
            QCOMPARE(lullwick.exitCode(), 128 + signal);
        QTRY_VERIFY_WITH_TIMEOUT(!FakeToolDir::processGroupAlive(tool), 10'000);
    }
};

QTEST_MAIN(TestContentView)
#include "tst_contentview.moc"
