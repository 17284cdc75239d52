#include "AssertionsModelFeeder.h"
#include "DarkPalette.h"
#include "FakeToolDir.h"
#include "Fixtures.h"
#include "app/ContentView.h"
#include "catalog/ProcessCatalog.h"
#include "model/AssertionKind.h"
#include "profile/Profile.h"
#include "restart/RestartModel.h"
#include "restart/RestartView.h"
#include "sleep/LastSuspends.h"
#include "summary/AssertionRow.h"
#include "summary/AssertionsModel.h"
#include "summary/SummaryClipboard.h"
#include "summary/SummaryView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QScrollArea>
#include <QTabWidget>
#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

// What names the Mac, its tools or its settings, which a Linux user has none of.
const QRegularExpression
    macNames(uR"(\bMac\b|macOS|Apple|Activity Monitor|System Settings|Finder|Spotlight)"_s);

/// The lines the entries' programs noted when started.
QStringList launched(const QString &folder)
{
    QFile log(folder + u"/launched.log"_s);
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts)
                                         : QStringList();
}

/// Points the XDG applications folders at `dataDir` and names the running desktop.
void useDesktop(const QString &dataDir, const QByteArray &desktop)
{
    qputenv("XDG_DATA_HOME", (dataDir + u"/home"_s).toUtf8());
    qputenv("XDG_DATA_DIRS", dataDir.toUtf8());
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    Profile::current().reloadDesktop();
}

/// The titles of the rows in the block `block`, top to bottom, each with its quoted line.
QStringList rowTitles(const QWidget *view, const QString &block)
{
    QList<AssertionRow *> rows = view->findChild<QWidget *>(block)->findChildren<AssertionRow *>();
    std::sort(rows.begin(), rows.end(), [](QWidget *a, QWidget *b) { return a->y() < b->y(); });
    QStringList titles;
    for (const AssertionRow *row : rows) {
        titles << row->findChild<QLabel *>(u"rowTitle"_s)->text();
        if (const QLabel *quote = row->findChild<QLabel *>(u"rowQuote"_s); quote && !quote->isHidden())
            titles.last() += u" | "_s + quote->text();
    }
    return titles;
}

/// The titles of the finding cards on `page`, from top to bottom.
QStringList findingTitles(const QWidget &page)
{
    QList<QLabel *> titles = page.findChildren<QLabel *>(u"findingTitle"_s);
    std::sort(titles.begin(), titles.end(), [&](QLabel *a, QLabel *b) {
        return a->mapTo(&page, QPoint()).y() < b->mapTo(&page, QPoint()).y();
    });
    QStringList shown;
    for (const QLabel *title : titles)
        shown << title->text();
    return shown;
}

} // namespace

class TestLinuxViews : public QObject {
    Q_OBJECT
    const ScopedProfile m_linux{Profile::System::Linux};
    const QString m_shots = QStringLiteral(LULLWICK_SCREENSHOT_DIR);
    QTemporaryDir m_desktop;
    FakeToolDir m_fake;
    ContentView *m_view = nullptr;
    AssertionsModel *m_model = nullptr;
    RestartModel *m_restart = nullptr;

    void screenshot(ContentView::Tab tab, const QString &name)
    {
        m_view->setSelectedTab(tab);
        QCoreApplication::processEvents();
        auto *page = qobject_cast<QScrollArea *>(m_view->findChild<QTabWidget *>()->currentWidget());
        QVERIFY(page);
        QVERIFY(page->widget()->grab().save(m_shots + u'/' + name + u".png"_s));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(m_shots));
        // A GNOME desktop with GNOME's settings panels and system monitor.
        const QString applications = m_desktop.path() + u"/applications"_s;
        QVERIFY(QDir().mkpath(applications));
        // Each program notes in "launched.log" how it was started.
        for (const auto &[id, name] : {std::pair{"gnome-power-panel", "Power"},
                                       {"gnome-lock-panel", "Screen Lock"},
                                       {"gnome-bluetooth-panel", "Bluetooth"},
                                       {"gnome-sharing-panel", "Sharing"},
                                       {"gnome-system-monitor", "System Monitor"}})
            Fixtures::writeDesktopEntry(applications, QString::fromLatin1(id), QString::fromLatin1(name),
                                        "NoDisplay=true\n",
                                        "echo \"${0##*/} $*\" >>\"${0%/*}/launched.log\"\n");
        useDesktop(m_desktop.path(), "ubuntu:GNOME");

        m_fake.setOutputFromFixture(u"assertions"_s, u"inhibitors-linux-desktop.txt"_s);
        m_fake.setOutputFromFixture(u"settings"_s, u"settings-linux.txt"_s);
        // Two commands under systemd-inhibit and a recorder the catalog does not know.
        m_fake.setProcessTable({{5121, u"rsync"_s},
                                {6650, u"totem"_s},
                                {7302, u"tar"_s},
                                {7312, u"ffplay"_s},
                                {6801, u"recorder"_s}});
        QVERIFY(m_fake.isValid());
        m_model = new AssertionsModel(m_fake.pmsetPath(), m_fake.psPath());
        m_restart = new RestartModel(
            [] {
                return QList<RunningAppInfo>{{u"Text Editor"_s, u"org.gnome.TextEditor"_s, 4001},
                                             {u"Files"_s, u"org.gnome.Nautilus"_s, 4002}};
            },
            m_fake.pmsetPath(), m_fake.logPath(), m_fake.spindumpPath(), m_fake.path() + u"/reports"_s);
        m_view = new ContentView(m_model, m_restart);
        m_view->resize(760, 1400);
        m_view->show();
        QTRY_VERIFY_WITH_TIMEOUT(m_model->snapshot() && m_model->resolvedNames().size() == 5, 20'000);

        m_view->setSelectedTab(ContentView::Tab::restart);
        m_restart->analyze();
        QTRY_VERIFY_WITH_TIMEOUT(m_restart->analysis() && !m_restart->isAnalyzing(), 20'000);
        m_view->setSelectedTab(ContentView::Tab::details);
        m_view->setSelectedTab(ContentView::Tab::summary);
    }

    // Not a check: leaves the pages, light and dark, for people to look at.
    void cleanupTestCase()
    {
        screenshot(ContentView::Tab::summary, u"linux-summary"_s);
        // The whole window at a common size, as the README shows it.
        m_view->resize(760, 940);
        QCoreApplication::processEvents();
        QVERIFY(m_view->grab().save(m_shots + u"/linux-window.png"_s));
        screenshot(ContentView::Tab::details, u"linux-details"_s);
        screenshot(ContentView::Tab::restart, u"linux-restart"_s);
        QApplication::setPalette(darkPalette());
        screenshot(ContentView::Tab::summary, u"linux-summary-dark"_s);
        screenshot(ContentView::Tab::details, u"linux-details-dark"_s);
        delete m_view;
        QApplication::clipboard()->clear();
    }

    // The holders of a typical GNOME desktop, each titled by what it is, whom it holds for, or
    // the reason its holder gave; the holder's own words follow when the title doesn't say them.
    void rowsExplainLinuxHolders_data()
    {
        QTest::addColumn<QString>("block");
        QTest::addColumn<QStringList>("titles"); // each "title | quoted line"
        const QStringList awake{
            u"rsync is copying files | “Nightly backup” — rsync -a /home/ /srv/backup/"_s,
            u"An application asked the desktop session to stay awake | “user session inhibited” — user"_s,
            u"Videos (Totem) is playing media | “Playing video” — org.gnome.Totem"_s,
            u"Playing “Le Café” full screen | “Playing “Le Café” full screen” — Video Player"_s,
            u"Recording a podcast episode | “Recording a podcast episode” — org.example.Recorder"_s};
        const QString backup = u"Backing up home | “Backing up home” — Backup"_s;
        QTest::addRow("idle sleep: commands, the session's locks, the video player")
            << u"sleepBlock-idleSystem"_s
            << QStringList{awake[0], awake[1], awake[2], backup, awake[3], awake[4]};
        QTest::addRow("all sleep: the backup alone") << u"sleepBlock-system"_s << QStringList{backup};
        QTest::addRow("display sleep: the same as idle sleep")
            << u"sleepBlock-display"_s
            << QStringList{awake[0], awake[1], awake[2], backup, awake[3], awake[4]};
        QTest::addRow("delay, key and shutdown locks block nothing")
            << u"otherAssertionsBlock"_s
            << QStringList{
                   u"NetworkManager will disconnect before suspend | “NetworkManager needs to turn off networks”"_s,
                   u"UPower pauses battery polling before suspend | “Pause device polling” — UPower"_s,
                   u"GNOME Shell will lock the screen before suspend | “GNOME needs to lock the screen” — GNOME Shell"_s,
                   u"GNOME’s power daemon is handling the lid or suspend | “GNOME needs to lock the screen” — GNOME power management"_s,
                   u"KDE’s power management is handling the power keys | “KDE handles power events” — PowerDevil"_s,
                   u"Unattended upgrades will finish before shutdown | “Stop ongoing upgrades or perform upgrades before shutdown” — Unattended Upgrades Shutdown"_s,
                   u"Flushing the sync journal"_s};
    }
    void rowsExplainLinuxHolders()
    {
        QFETCH(QString, block);
        QTEST(rowTitles(m_view, block), "titles");
        // Without anything the sleep check says, its section takes no room.
        QVERIFY(!m_view->findChild<QWidget *>(u"sleepFindings"_s)->isVisible());
    }

    // A delay lock is explained by its kind when the catalog does not know its holder, and a held
    // time that logind cannot give leaves the badge empty.
    void unknownHolderAndUnknownTime()
    {
        const QList<AssertionRow *> rows = m_view->findChildren<AssertionRow *>();
        const auto row = [&rows](const QString &process, const QString &id) {
            return *std::find_if(rows.cbegin(), rows.cend(), [&](const AssertionRow *r) {
                return r->assertion().processName == process && r->assertion().assertionID.startsWith(id);
            });
        };
        const auto line = [](const AssertionRow *r, const QString &name) {
            const QLabel *label = r->findChild<QLabel *>(name);
            return label && !label->isHidden() ? label->text() : QString();
        };
        const AssertionRow *sync = row(u"fancy-syncd"_s, u"login1"_s);
        QCOMPARE(line(sync, u"rowExplanation"_s),
                 Profile::current().words().holders.kindTexts[u"DelaySleep"_s].explanation);
        QCOMPARE(line(sync, u"rowHeldText"_s), u"Held 2h 0m"_s);
        QCOMPARE(line(row(u"gnome-session-binary"_s, u"/org/gnome"_s), u"rowHeldText"_s), QString());
    }

    // The Restart tab with every Linux source speaking, light and dark; the stall report's decode
    // and reveal buttons belong to the Mac's stall finding only.
    void restartTabWithLinuxEvidence()
    {
        FakeToolDir fake;
        QTemporaryDir root;
        QVERIFY(fake.isValid() && root.isValid());
        fake.setOutputFromFixture(u"assertions"_s, u"inhibitors-linux-desktop.txt"_s);
        fake.setOutput(
            u"restart-evidence"_s,
            "shutdown-lock\tblock\trsync -a /home /media/backup\tNightly backup\t5121\trsync\n"
            "shutdown-lock\tdelay\tUnattended Upgrades Shutdown\tStop ongoing upgrades or perform "
            "upgrades before shutdown\t712\tunattended-upgr\n"
            "inhibit-delay-max\t30\n"
            "logout-inhibitor\torg.gnome.TextEditor\tThere are unsaved documents\t4001\tgnome-text-edit\n");
        fake.setOutputFromFixture(u"journalctl"_s, u"journal-hung-session.jsonl"_s);
        QVERIFY(QFile::link(u"/var/cache/PackageKit/offline-update"_s, root.filePath(u"system-update"_s)));
        RestartModel model(
            [] {
                return QList<RunningAppInfo>{{u"Text Editor"_s, u"org.gnome.TextEditor"_s, 4001},
                                             {u"Files"_s, u"org.gnome.Nautilus"_s, 4002},
                                             {u"Firefox"_s, u"firefox-esr"_s, 4003}};
            },
            fake.pmsetPath(), LinuxRestartSources{fake.pmsetPath(), fake.journalctlPath(), root.path()});
        RestartView view(&model);
        view.resize(760, 1600);
        view.show();
        model.analyze();
        QTRY_VERIFY_WITH_TIMEOUT(model.analysis() && !model.isAnalyzing(), 20'000);
        QCoreApplication::processEvents();

        const QStringList shown = findingTitles(view);
        QCOMPARE(
            shown,
            (QStringList{u"rsync -a /home /media/backup is blocking restart and shutdown: Nightly backup"_s,
                         u"Text Editor has unsaved work"_s,
                         u"An update will be installed during the next restart"_s,
                         u"Last shutdown waited for x11vnc (session-2.scope)"_s,
                         u"3 apps are open and will be asked to quit"_s}));
        QCOMPARE(view.findChild<QLabel *>(u"verdictLabel"_s)->text(),
                 Profile::current().restart().verdicts[0]);
        QVERIFY(!view.findChild<QWidget *>(u"stallControls"_s));
        QLabel *journalCaveat = view.findChild<QLabel *>(u"journalCaveat"_s);
        QVERIFY(journalCaveat && journalCaveat->isHidden()); // the journal was read

        const auto save = [&](const QString &name) {
            QCoreApplication::processEvents();
            QVERIFY(
                static_cast<QScrollArea &>(view).widget()->grab().save(m_shots + u'/' + name + u".png"_s));
        };
        save(u"linux-restart-evidence"_s);
        const QPalette light = QApplication::palette();
        QApplication::setPalette(darkPalette());
        save(u"linux-restart-evidence-dark"_s);
        QApplication::setPalette(light);

        // Outside the groups that may read it, journalctl says so; then the caveat does too.
        fake.setOutput(u"journalctl"_s, {});
        fake.setErrorOutput(u"journalctl"_s,
                            "Hint: You are currently not seeing messages from other users and "
                            "the system.\n      Users in groups 'adm', 'systemd-journal' can see "
                            "all messages.\n");
        model.analyze();
        QTRY_VERIFY_WITH_TIMEOUT(!model.isAnalyzing() && model.analysis()->journalDenied, 20'000);
        QVERIFY(!journalCaveat->isHidden());
    }

    // The Summary with the sleep check speaking: suspend masked, GNOME's automatic suspend off,
    // suspend-to-idle only and three devices that may wake the computer; light and dark.
    void summaryWithSleepFindings()
    {
        FakeToolDir fake;
        QTemporaryDir root;
        QVERIFY(fake.isValid() && root.isValid());
        // Nothing holds a lock: the sleep check is all there is to say.
        fake.setOutput(u"assertions"_s, "Assertion status system-wide:\n   PreventSystemSleep             0\n"
                                        "Listed by owning process:\n");
        fake.setOutput(u"sleep-evidence"_s, "can-suspend\tna\nlogind\tOnExternalPower\tyes\n");
        const QString r = root.path();
        QVERIFY(QDir().mkpath(r + u"/etc/systemd/system"_s));
        QVERIFY(QFile::link(u"/dev/null"_s, r + u"/etc/systemd/system/suspend.target"_s));
        for (const auto &[path, text] : {std::pair{"/sys/power/mem_sleep", "[s2idle]\n"},
                                         {"/proc/acpi/wakeup", "XHC0\t  S4\t*enabled   pci:0000:00:14.0\n"},
                                         {"/sys/bus/pci/devices/0000:00:14.0/class", "0x0c0330\n"},
                                         {"/sys/bus/pci/devices/0000:02:00.0/class", "0x020000\n"},
                                         {"/sys/bus/pci/devices/0000:02:00.0/power/wakeup", "enabled\n"},
                                         {"/sys/bus/usb/devices/1-2/product", "USB Receiver\n"},
                                         {"/sys/bus/usb/devices/1-2/manufacturer", "Logitech\n"},
                                         {"/sys/bus/usb/devices/1-2/power/wakeup", "enabled\n"},
                                         {"/gsettings.out", "org.gnome.settings-daemon.plugins.power "
                                                            "sleep-inactive-ac-type 'nothing'\n"
                                                            "org.gnome.settings-daemon.plugins.power "
                                                            "sleep-inactive-ac-timeout 1200\n"},
                                         {"/gsettings", "#!/bin/sh\ncat \"${0%/*}/gsettings.out\"\n"}}) {
            const QString at = r + QString::fromLatin1(path);
            QVERIFY(QDir().mkpath(QFileInfo(at).path()));
            Fixtures::writeFile(at, text);
        }
        QVERIFY(QFile::setPermissions(r + u"/gsettings"_s, QFile::ReadOwner | QFile::ExeOwner));
        SleepCheck check{fake.pmsetPath(),
                         r,
                         {r + u"/gsettings"_s, r + u"/config"_s, {u"GNOME"_s}, {}},
                         fake.journalctlPath()};
        AssertionsModel model(fake.pmsetPath(), fake.psPath(), check);
        SummaryView view(&model);
        view.resize(760, 2000);
        view.show();
        model.refresh();
        QTRY_VERIFY_WITH_TIMEOUT(model.sleepFindings() && !model.isFetching(), 20'000);
        QCoreApplication::processEvents();

        const QStringList shown = findingTitles(view);
        QCOMPARE(shown,
                 (QStringList{
                     u"This computer cannot suspend: suspend.target is masked"_s,
                     u"Your desktop never suspends on its own while plugged in"_s,
                     u"Suspend here is suspend-to-idle only"_s,
                     u"USB controller, Logitech USB Receiver and network card may wake this computer"_s}));
        // The verdict says both: no lock, and no suspend. The desktop's finding opens its power settings.
        QCOMPARE(
            view.findChild<QLabel *>(u"verdictLabel"_s)->text(),
            u"Nothing holds a sleep lock, but this computer cannot suspend: suspend.target is masked."_s);
        const auto *link = view.findChild<QAbstractButton *>(u"sleepFindingLink"_s);
        QVERIFY(link);
        QCOMPARE(link->accessibleName(), link->text());
        const QString copy =
            SummaryClipboard::text(model.snapshot(), model.resolvedNames(), {}, model.sleepFindings());
        QVERIFY(copy.contains(
            u"\n\nNothing holds a sleep lock, but this computer cannot suspend: suspend.target is "
            u"masked.\n\nWhy it may still not sleep\n[Likely] This computer cannot suspend: "
            u"suspend.target is masked\n  Source: Sleep turned off (systemd units)\n"_s));

        const auto save = [&](const QString &name) {
            QCoreApplication::processEvents();
            QVERIFY(
                static_cast<QScrollArea &>(view).widget()->grab().save(m_shots + u'/' + name + u".png"_s));
        };
        const auto saveLightAndDark = [&](const QString &name) {
            save(name);
            const QPalette light = QApplication::palette();
            QApplication::setPalette(darkPalette());
            save(name + u"-dark"_s);
            QApplication::setPalette(light);
        };
        saveLightAndDark(u"linux-summary-sleep-check"_s);

        // The journal adds the last attempts: a suspend that failed over a task that would not
        // stop, and one that woke three seconds after it went to sleep.
        const qint64 hourAgo = (QDateTime::currentMSecsSinceEpoch() - 3600'000) * 1000;
        QByteArray journal;
        for (const auto &[at, kernel, message] : std::initializer_list<std::tuple<int, bool, const char *>>{
                 {0, false, "Entering sleep state 'suspend'..."},
                 {0, true, "PM: suspend entry (deep)"},
                 {20, true,
                  "Freezing user space processes failed after 20.004 seconds (1 tasks refusing to "
                  "freeze, wq_busy=0):"},
                 {20, true,
                  "task:syncthing       state:D stack:0     pid:1301  ppid:1273   flags:0x00004006"},
                 {21, true, "PM: suspend exit"},
                 {21, false, "Failed to put system to sleep. System resumed again: Device or resource busy"},
                 {600, false, "Entering sleep state 'suspend'..."},
                 {600, true, "PM: suspend entry (deep)"},
                 {603, true, "PM: suspend exit"},
                 {603, false, "System returned from sleep state."}}) {
            QJsonObject entry{{"MESSAGE", message},
                              {"_BOOT_ID", QString::fromLatin1(LastSuspends::currentBoot())},
                              {"__REALTIME_TIMESTAMP", QString::number(hourAgo + at * 1'000'000LL)},
                              {"_TRANSPORT", kernel ? "kernel" : "journal"},
                              {"PRIORITY", QString::number(kernel && at == 20 ? 3 : 6)}};
            if (!kernel)
                entry.insert("_COMM", "systemd-sleep"), entry.insert("_UID", "0");
            journal.prepend(QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n'); // newest first
        }
        fake.setOutput(u"journalctl-suspends"_s, journal);
        model.refresh();
        QTRY_VERIFY_WITH_TIMEOUT(view.findChildren<QLabel *>(u"findingTitle"_s).size() == 6, 20'000);
        const QStringList journalTitles = findingTitles(view);
        QVERIFY2(journalTitles.contains(u"A suspend failed because syncthing could not be stopped"_s),
                 qPrintable(journalTitles.join(u'|')));
        QVERIFY2(journalTitles.contains(u"It woke up 3 seconds after it went to sleep"_s),
                 qPrintable(journalTitles.join(u'|')));
        saveLightAndDark(u"linux-summary-last-suspends"_s);
    }

    // The desktop's own settings panels and process viewer; rows open the viewer with the PID.
    void desktopLinksAndViewer()
    {
        QStringList links;
        for (const QAbstractButton *b : m_view->findChildren<QAbstractButton *>(u"settingsLink"_s))
            links << b->text();
        QCOMPARE(links, (QStringList{u"Power settings (automatic suspend and screen blanking)"_s,
                                     u"Screen lock settings (when the screen locks)"_s,
                                     u"Bluetooth (devices that can wake the computer)"_s,
                                     u"Sharing (file sharing, screen sharing, remote login)"_s}));
        QCOMPARE(m_view->findChild<QAbstractButton *>(u"activityMonitorButton"_s)->text(),
                 u"Open System Monitor"_s);
        const QList<QAbstractButton *> rowButtons =
            m_view->findChildren<QAbstractButton *>(u"rowActivityMonitor"_s);
        for (const QAbstractButton *b : rowButtons)
            QCOMPARE(b->text(), u"Open System Monitor"_s);

        // Started from the entries, with their own arguments and no field codes.
        const QString applications = m_desktop.path() + u"/applications"_s;
        m_view->findChildren<QAbstractButton *>(u"settingsLink"_s).constFirst()->click();
        QTRY_COMPARE(launched(applications), QStringList{u"bin-gnome-power-panel --from-entry"_s});
        AssertionRow *inhibit =
            m_view->findChild<QWidget *>(u"sleepBlock-idleSystem"_s)->findChild<AssertionRow *>();
        QCOMPARE(inhibit->assertion().processName, u"systemd-inhibit"_s);
        inhibit->findChild<QAbstractButton *>(u"rowActivityMonitor"_s)->click();
        QCOMPARE(QApplication::clipboard()->text(), u"5121"_s); // the command's PID, for the viewer's search
        QTRY_COMPARE(launched(applications).size(), 2);
        QCOMPARE(launched(applications).constLast(), u"bin-gnome-system-monitor --from-entry"_s);
    }

    // Without a process viewer the page has no button to open one, and rows copy the PID.
    void withoutViewerRowsCopyThePID()
    {
        QTemporaryDir empty;
        useDesktop(empty.path(), "GNOME");
        AssertionsModel model;
        AssertionsModelFeeder(model).setSnapshot(m_model->snapshot().value());
        SummaryView view(&model);
        QCOMPARE(view.findChildren<QAbstractButton *>(u"settingsLink"_s).size(), 0);
        QVERIFY(!view.findChild<QAbstractButton *>(u"activityMonitorButton"_s));
        QCOMPARE(view.findChild<QLabel *>(u"viewerTip"_s)->text(), Profile::current().summary().noViewerTip);
        AssertionRow *row = view.findChild<QWidget *>(u"otherAssertionsBlock"_s)->findChild<AssertionRow *>();
        auto *button = row->findChild<QAbstractButton *>(u"rowActivityMonitor"_s);
        QCOMPARE(button->text(), u"Copy PID"_s);
        QCOMPARE(button->accessibleName(), u"Copy PID"_s);
        button->click();
        QCOMPARE(QApplication::clipboard()->text(), QString::number(row->assertion().pid));
        useDesktop(m_desktop.path(), "ubuntu:GNOME");
    }

    // Nothing a Linux user reads names the Mac or its tools: the window's texts in every tab, the
    // copies of every tab, and every text of the profile and its catalog.
    void linuxTextsNameNoMacThing_data()
    {
        QTest::addColumn<QString>("text");
        int n = 0;
        const auto add = [&n](const QString &source, const QString &text) {
            if (!text.isEmpty())
                QTest::addRow("%s %d", qPrintable(source), ++n) << text;
        };
        for (const ContentView::Tab tab :
             {ContentView::Tab::summary, ContentView::Tab::restart, ContentView::Tab::details}) {
            m_view->setSelectedTab(tab);
            m_view->copyVisibleTabContents();
            add(u"copy"_s, QApplication::clipboard()->text());
        }
        for (const QLabel *label : m_view->findChildren<QLabel *>())
            add(u"label "_s + label->objectName(), label->text());
        for (const QWidget *w : m_view->findChildren<QWidget *>()) {
            add(u"tooltip "_s + w->objectName(), w->toolTip());
            if (const auto *button = qobject_cast<const QAbstractButton *>(w))
                add(u"button "_s + button->objectName(), button->text());
        }
        const Profile &profile = Profile::current();
        for (const QString &text : profile.allTexts())
            add(u"profile"_s, text);
        for (const CatalogEntry &entry : profile.catalog().entries()) {
            add(u"catalog "_s + entry.key, entry.info.headline);
            add(u"catalog "_s + entry.key, entry.info.explanation);
            add(u"catalog "_s + entry.key, entry.info.callToAction.value_or(QString()));
        }
        for (int kind = 0; kind < AssertionKind::knownCaseCount; ++kind)
            add(u"kind"_s, profile.describe(AssertionKind(AssertionKind::Case(kind))));
        m_view->setSelectedTab(ContentView::Tab::summary);
    }
    void linuxTextsNameNoMacThing()
    {
        QFETCH(QString, text);
        const QRegularExpressionMatch match = macNames.match(text);
        QVERIFY2(!match.hasMatch(), qPrintable(match.captured() + u" in: "_s + text));
    }
};

QTEST_MAIN(TestLinuxViews)
#include "tst_linuxviews.moc"
