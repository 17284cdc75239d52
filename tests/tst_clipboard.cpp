#include "FakeToolDir.h"
#include "Fixtures.h"
#include "details/DetailsClipboard.h"
#include "pmset/PMSetService.h"
#include "profile/Profile.h"
#include "restart/RestartBlockerService.h"
#include "restart/RestartClipboard.h"
#include "summary/AssertionRowText.h"
#include "summary/SummaryClipboard.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

const QDateTime instant = QDateTime(QDate(2024, 3, 4), QTime(15, 4, 5), Qt::UTC);
const DateFormat::Setting usInUtc{"en_US", "UTC"};

AssertionsSnapshot parsed(const QString &perProcessLines)
{
    return PMSetService::parse(u"Listed by owning process:\n"_s + perProcessLines, instant);
}

} // namespace

class TestClipboard : public QObject {
    Q_OBJECT
    // The Mac wording; the Linux wording has its own tests.
    const ScopedProfile m_mac{Profile::System::macOS};

private slots:
    // Each sleep kind with what blocks it, as (held) rows, or "(not blocked)"; the date in full.
    void summary_data()
    {
        QTest::addColumn<QString>("lines"); // per-process listing lines
        QTest::addColumn<QString>("idle");  // the idle-sleep block's rows; empty: not blocked
        QTest::addColumn<QString>("display");
        const QString audio = u"   pid 312(coreaudiod): [0x1] 00:12:31 PreventUserIdleSystemSleep "
                              u"named: \"com.apple.audio.context\"\n\tCreated for PID: %1.\n"_s;
        // The daemon's own call to action, whether or not its creator is named.
        const QString audioRow =
            u"  • %1  (held 00:12:31)\n    coreaudiod (pid 312)—Keeping the Mac awake while otherwise idle.\n"
            u"    Created for %2\n    Check the “Created for” process. If it’s an audio routing tool you "
            u"intentionally have running, this is expected; otherwise quit or pause the responsible app.\n"_s;
        const QString render =
            u"  • Keeping the display from sleeping when otherwise idle.  (held 01:00:00)\n"
            u"    render (pid 10)—Keeping the display from sleeping when otherwise idle.\n"_s;
        QTest::addRow("nothing held") << QString() << QString() << QString();
        QTest::addRow("audio held for a named app")
            << audio.arg(4711)
            << audioRow.arg(u"Spotify is playing or holding a session"_s, u"Spotify (pid 4711)"_s)
            << QString();
        QTest::addRow("audio held for an unnamed pid: the daemon's headline")
            << audio.arg(4712)
            << audioRow.arg(u"An audio device or routing session is active"_s, u"pid 4712"_s) << QString();
        QTest::addRow("non-blocking left out; an unknown process has no action line")
            << u"   pid 9(WindowServer): [0x1] 00:00:02 UserIsActive\n"
               u"   pid 10(render): [0x2] 01:00:00 PreventUserIdleDisplaySleep\n"_s
            << render << render;
    }
    void summary()
    {
        QFETCH(QString, lines);
        QFETCH(QString, idle);
        QFETCH(QString, display);
        const QString none = u"  (not blocked)\n"_s;
        QCOMPARE(
            SummaryClipboard::text(parsed(lines), {{4711, u"Spotify"_s}}, usInUtc),
            u"Lullwick—Summary\nCaptured Monday, March 4, 2024 at 3:04:05\u202FPM\n\nIdle system sleep\n"_s +
                (idle.isEmpty() ? none : idle) + u"\nAll system sleep\n"_s + none + u"\nDisplay sleep\n"_s +
                (display.isEmpty() ? none : display));
    }

    // On Linux each lock is copied with its holder's own words, under the title they gave or the
    // catalog's; a time logind cannot give is left out.
    void linuxSummaryQuotesHolders_data()
    {
        QTest::addColumn<QString>("row"); // consecutive lines of the copy
        const QString inhibit =
            u"    Let the command finish, or stop it (Ctrl+C in the terminal that runs it).\n"_s;
        QTest::addRow("systemd-inhibit around an unknown command, titled by its reason")
            << u"  • Backing up home  (held 00:03:12)\n    “Backing up home” — Backup\n"
               u"    systemd-inhibit (pid 7301)—Refusing every suspend, automatic or asked for, until the "
               u"lock is "
               u"let go.\n    Created for tar (pid 7302)\n"_s +
                   inhibit;
        QTest::addRow("a second one, told apart by its own words")
            << u"  • Playing “Le Café” full screen  (held 00:41:07)\n"
               u"    “Playing “Le Café” full screen” — Video Player\n    systemd-inhibit (pid 7311)—Keeping "
               u"the "
               u"screen on, and the computer awake, while otherwise idle.\n    Created for ffplay (pid 7312)\n"_s +
                   inhibit;
        QTest::addRow("session inhibitor of an unknown app, no held time")
            << u"  • Recording a podcast episode\n    “Recording a podcast episode” — org.example.Recorder\n"
               u"    gnome-session-binary (pid 2188)—Keeping the screen on, and the computer awake, while "
               u"otherwise idle.\n    Created for recorder (pid 6801)\n    Pause, finish or quit what the "
               u"application is doing; the session lets go of the lock by itself.\n"_s;
        QTest::addRow("session inhibitor of a known player, titled by the catalog")
            << u"  • Videos (Totem) is playing media\n    “Playing video” — org.gnome.Totem\n"
               u"    gnome-session-binary (pid 2188)—"_s;
    }
    void linuxSummaryQuotesHolders()
    {
        QFETCH(QString, row);
        const ScopedProfile linux(Profile::System::Linux);
        const AssertionsSnapshot snapshot =
            PMSetService::parse(Fixtures::readText(u"inhibitors-linux-desktop.txt"_s), instant);
        const QString copy = SummaryClipboard::text(
            snapshot, {{7302, u"tar"_s}, {7312, u"ffplay"_s}, {6801, u"recorder"_s}, {6650, u"totem"_s}},
            usInUtc);
        QVERIFY2(copy.contains(row), qPrintable(copy));
    }

    void prettyDuration_data()
    {
        QTest::addColumn<QString>("held");
        QTest::addColumn<QString>("shown");
        QTest::addRow("hours drop the seconds") << u"01:05:00"_s << u"1h 5m"_s;
        QTest::addRow("zero minutes kept after hours") << u"12:00:07"_s << u"12h 0m"_s;
        QTest::addRow("just under an hour") << u"00:59:59"_s << u"59m 59s"_s;
        QTest::addRow("seconds alone") << u"00:00:42"_s << u"42s"_s;
        QTest::addRow("nothing held yet") << u"00:00:00"_s << u"0s"_s;
        QTest::addRow("empty pieces dropped") << u"::01:02:03"_s << u"1h 2m"_s;
        QTest::addRow("two parts unchanged") << u"1:05"_s << u"1:05"_s;
        QTest::addRow("words unchanged") << u"ab:cd"_s << u"ab:cd"_s;
        QTest::addRow("unreadable piece dropped") << u"00:x:05:03"_s << u"5m 3s"_s;
    }
    void prettyDuration()
    {
        QFETCH(QString, held);
        QTEST(AssertionRowText::prettyDuration(held), "shown");
    }

    void details_data()
    {
        QTest::addColumn<std::optional<AssertionsSnapshot>>("snapshot");
        QTest::addColumn<QString>("settings");
        QTest::addColumn<QString>("text");
        const auto listing = [](const QString &raw) {
            return std::optional(AssertionsSnapshot{instant, raw, {}, {}});
        };
        QTest::addRow("nothing at all")
            << std::optional<AssertionsSnapshot>() << QString()
            << u"=== pmset -g assertions ===\n(no output)\n\n=== pmset -g ===\n(no output)\n"_s;
        QTest::addRow("empty listing writes nothing")
            << listing({}) << u"AC Power:"_s
            << u"=== pmset -g assertions ===\n\n=== pmset -g ===\nAC Power:"_s;
        QTest::addRow("listing without final line feed gets one")
            << listing(u"a\nb"_s) << u"s\n"_s
            << u"=== pmset -g assertions ===\na\nb\n\n=== pmset -g ===\ns\n"_s;
        QTest::addRow("listing with final line feed gets none")
            << listing(u"a\n"_s) << QString()
            << u"=== pmset -g assertions ===\na\n\n=== pmset -g ===\n(no output)\n"_s;
    }
    void details()
    {
        QFETCH(std::optional<AssertionsSnapshot>, snapshot);
        QFETCH(QString, settings);
        QTEST(DetailsClipboard::text(snapshot, settings), "text");
    }

    void nothingToCopyYet()
    {
        QCOMPARE(SummaryClipboard::text(std::nullopt, {}), u"(no snapshot)"_s);
        QCOMPARE(RestartClipboard::text(std::nullopt), "(no analysis yet — click Analyze)");
    }

    void restartAnalysis_data()
    {
        // The expected copies are written by hand, never taken from the program's output.
        QTest::addColumn<bool>("everySource");
        QTest::addColumn<QString>("expected");
        QTest::addRow("no findings") << false << u"restart-copy-no-finding.txt"_s;
        QTest::addRow("all four findings and a decoded process")
            << true << u"restart-copy-every-finding.txt"_s;
    }
    void restartAnalysis()
    {
        QFETCH(bool, everySource);
        QFETCH(QString, expected);
        FakeToolDir fake; // its folder holds the stall report too
        QVERIFY(fake.isValid());
        std::optional<AssertionsSnapshot> snapshot;
        QList<RunningAppInfo> apps;
        if (everySource) {
            fake.setOutput("log", "10:31:09 Application \"TextEdit\" cancelled quit\n"
                                  "10:31:10 Did not quit: Preview.app\n");
            Fixtures::writeFile(fake.path() + "/loginwindow_2026-11-19-220531_Mac.shutdownStall");
            snapshot = PMSetService::parse(Fixtures::readText("assertions-software-update.txt"), {});
            apps = {{"zed", std::nullopt, 3}, {"Alpha", std::nullopt, 1}, {"beta", std::nullopt, 2}};
        }
        RestartBlockerService service(fake.logPath(), fake.spindumpPath(), fake.path());
        RestartAnalysis analysis = service.analyze(snapshot, apps).result();
        analysis.ranAt = instant;
        if (everySource)
            analysis.decodedStallProcess = "backupd [1180]";

        QCOMPARE(RestartClipboard::text(analysis, usInUtc),
                 Fixtures::readText(expected).replace(u"<date>"_s,
                                                      DateFormat::completeDateTime(instant, usInUtc)));
    }
};

QTEST_GUILESS_MAIN(TestClipboard)
#include "tst_clipboard.moc"
