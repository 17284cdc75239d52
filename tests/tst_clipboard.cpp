#include "FakeToolDir.h"
#include "Fixtures.h"
#include "catalog/ProcessCatalog.h"
#include "details/DetailsClipboard.h"
#include "platform/Profile.h"
#include "pmset/PMSetService.h"
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

// Written out from the description of the texts, not from the program's output.
const char allFourFindings[] = R"(Lullwick — Restart analysis
Checked %1

Found a likely cause that's holding up restart.

[Likely] A macOS update is installing or staging right now
  Source: Software update
  The system is holding a SoftwareUpdateTask power assertion (softwareupdated, mobileassetd). macOS won't restart cleanly while an update is mid-install — it wants to finish writing the update first, which can look like a stuck or refused restart.
  → Open System Settings → General → Software Update and let any in-progress update finish, then restart again. If it's stuck downloading, pausing and resuming the update often unsticks it.

[Possible] loginwindow logged an interrupted quit or restart
  Source: loginwindow log (last 10 min)
  While orchestrating a recent restart or logout, loginwindow recorded the following. An app named here is a strong candidate for what blocked the restart:
  
  10:31:09 Application "TextEdit" cancelled quit
  10:31:10 Did not quit: Preview.app
  → If you recognize an app above, switch to it and look for an unsaved-document dialog or an open sheet, then save or close it and try restarting again.

[Possible] Your Mac stalled during a shutdown on November 19, 2026
  Source: Shutdown stall report
  macOS writes a “shutdown stall” report when a process hangs the shutdown sequence for roughly half a minute or more (loginwindow_2026-11-19-220531_Mac.shutdownStall). If your restarts are slow or look frozen, this is the forensic record of the last time it happened — and it names the process that hung, once decoded.
  → Use “Decode latest stall report” below to see which process was responsible (it runs Apple's spindump tool and may ask for your password).
  Hung process: backupd [1180]

[For reference] 3 apps are open and will be asked to quit
  Source: Running apps
  When you restart, macOS asks each open app to quit. Any one of these can silently stop the restart by putting up a “Do you want to save?” dialog that you may not see if it's behind another window:
  
  Alpha, beta, zed
  → If restart hangs with nothing flagged above, click through these apps (especially editors and anything with an open document) looking for an unsaved-changes prompt, then quit them and retry.
)";

const char noFindings[] = R"(Lullwick — Restart analysis
Checked %1

No obvious restart blocker found. If restart still hangs, it's most likely an app with an unsaved document.
)";

} // namespace

class TestClipboard : public QObject {
    Q_OBJECT
    // The described Mac wording; the Linux wording has its own tests.
    const ScopedProfile m_mac{Profile::System::macOS};

private slots:
    void completeDateTimeForUsEnglishInUtc()
    {
        // The full date, " at ", and the medium time with ICU's narrow no-break space before PM.
        QCOMPARE(DateFormat::completeDateTime(instant, usInUtc),
                 u"Monday, March 4, 2024 at 3:04:05\u202FPM"_s);
    }

    void summaryOfTheAudioExample()
    {
        const AssertionsSnapshot snapshot =
            parsed(u"   pid 312(coreaudiod): [0x1] 00:12:31 PreventUserIdleSystemSleep "
                   u"named: \"com.apple.audio.context\"\n"
                   u"\tCreated for PID: 4711.\n"_s);
        const QString expected = uR"(Lullwick—Summary
Captured %1

Idle system sleep
  • Spotify is playing or holding a session  (held 00:12:31)
    coreaudiod (pid 312)—Keeping the Mac awake while otherwise idle.
    Created for Spotify (pid 4711)
    Check the “Created for” process. If it’s an audio routing tool you intentionally have running, this is expected; otherwise quit or pause the responsible app.

All system sleep
  (not blocked)

Display sleep
  (not blocked)
)"_s;
        QCOMPARE(SummaryClipboard::text(snapshot, {{4711, u"Spotify"_s}}, usInUtc),
                 expected.arg(DateFormat::completeDateTime(instant, usInUtc)));
        // Without the name: the pid alone, the daemon's own headline; its own call to action either way.
        const QString unnamed = SummaryClipboard::text(snapshot, {}, usInUtc);
        QVERIFY(unnamed.contains(u"\n  • An audio device or routing session is active  (held 00:12:31)\n"
                                 u"    coreaudiod (pid 312)—Keeping the Mac awake while otherwise idle.\n"
                                 u"    Created for pid 4711\n    Check the “Created for”"_s));
    }

    void summaryWithoutBlockers()
    {
        QCOMPARE(SummaryClipboard::text(std::nullopt, {}), u"(no snapshot)"_s);
        // Non-blocking assertions are no part of the report; an unknown process has no action line.
        const AssertionsSnapshot snapshot =
            parsed(u"   pid 9(WindowServer): [0x1] 00:00:02 UserIsActive\n"
                   u"   pid 10(render): [0x2] 01:00:00 PreventUserIdleDisplaySleep\n"_s);
        QCOMPARE(SummaryClipboard::text(AssertionsSnapshot{instant, {}, {}, {}}, {}, usInUtc),
                 u"Lullwick—Summary\nCaptured Monday, March 4, 2024 at 3:04:05\u202FPM\n\n"
                 u"Idle system sleep\n  (not blocked)\n\nAll system sleep\n  (not blocked)\n\n"
                 u"Display sleep\n  (not blocked)\n"_s);
        const QString render =
            u"  • Keeping the display from sleeping when otherwise idle.  (held 01:00:00)\n"
            u"    render (pid 10)—Keeping the display from sleeping when otherwise idle.\n\n"_s;
        QCOMPARE(SummaryClipboard::text(snapshot, {}, usInUtc).section(u"\n\n"_s, 1),
                 u"Idle system sleep\n"_s + render +
                     u"All system sleep\n  (not blocked)\n\nDisplay sleep\n"_s + render.chopped(1));
    }

    void catalogLookup_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("headline"); // null: no entry matches
        QTest::addRow("letter case ignored") << u"WindowServer"_s << u"Recent keyboard or mouse activity"_s;
        QTest::addRow("key with a space") << u"QuickTime Player"_s << u"QuickTime Player is playing media"_s;
        QTest::addRow("mixed-case key") << u"itunes"_s << u"iTunes is playing"_s;
        QTest::addRow("underscore continues") << u"mdworker_shared"_s << u"Spotlight is processing a file"_s;
        QTest::addRow("hyphen continues") << u"mdworker-x"_s << u"Spotlight is processing a file"_s;
        QTest::addRow("letter does not continue") << u"mdworkers"_s << QString();
        QTest::addRow("space does not continue") << u"Spotify Helper"_s << QString();
        QTest::addRow("first part of a hyphenated key") << u"channels"_s << QString();
        QTest::addRow("leading space is not trimmed") << u" smbd"_s << QString();
        QTest::addRow("key later in the name") << u"com.apple.mds"_s << QString();
        // "mds" comes first in the table and is also continued by these names.
        QTest::addRow("exact key beats a shorter key")
            << u"mds_stores"_s << u"Spotlight is writing its index"_s;
        QTest::addRow("longest continued key wins")
            << u"mds_stores_x"_s << u"Spotlight is writing its index"_s;
    }
    void catalogLookup()
    {
        QFETCH(QString, name);
        QFETCH(QString, headline);
        const auto info = ProcessCatalog::info(name);
        QCOMPARE(info.has_value(), !headline.isNull());
        if (info)
            QCOMPARE(info->headline, headline);
    }

    void rowTitle_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("title");
        const QString idle = u"Keeping the Mac awake while otherwise idle."_s;
        const QString head = u"   pid 5(renderd): [0x1] 00:00:01 PreventUserIdleSystemSleep"_s;
        QTest::addRow("catalog headline")
            << u"   pid 5(mds): [0x1] 00:00:01 PreventUserIdleSystemSleep"_s << u"Spotlight is indexing"_s;
        QTest::addRow("dotted name falls back") << head + u" named: \"com.example.render.job\""_s << idle;
        QTest::addRow("friendly name") << head + u" named: \"Rendering video\""_s << u"Rendering video"_s;
        QTest::addRow("localized value trimmed, before the name")
            << head + u" named: \"com.x.y.z\"\n\tLocalized=  Preparing backup \u00a0"_s
            << u"Preparing backup"_s;
        QTest::addRow("blank localized value gives way to the name")
            << head + u" named: \"Render\"\n\tLocalized=\n\tLocalized=Later"_s << u"Render"_s;
        QTest::addRow("dotted localized value wins over a nice name")
            << head + u" named: \"Nice reason\"\n\tLocalized=a.b.c"_s << idle;
        QTest::addRow("empty name") << head + u" named: \"\""_s << idle;
        QTest::addRow("created-for name in the catalog")
            << u"   pid 312(coreaudiod): [0x1] 00:00:01 PreventUserIdleSystemSleep\n\tCreated for PID: 8."_s
            << u"FaceTime call is active"_s;
        QTest::addRow("created-for name outside the catalog")
            << u"   pid 312(coreaudiod): [0x1] 00:00:01 PreventUserIdleSystemSleep\n\tCreated for PID: 9."_s
            << u"An audio device or routing session is active"_s;
    }
    void rowTitle()
    {
        QFETCH(QString, line);
        const ResolvedNames names{{8, u"FaceTime"_s}, {9, u"%2 Unknown"_s}};
        const AssertionRowText row = AssertionRowText::make(parsed(line + u'\n').assertions.value(0), names);
        QTEST(row.title, "title");
        if (row.createdForPID == 9) { // an unknown creator is named, but explains nothing
            QCOMPARE(*row.createdForLine, u"Created for %2 Unknown (pid 9)"_s);
            QCOMPARE(row.callToAction, row.ownCallToAction);
            QVERIFY(row.explanation->startsWith(u"Core Audio is macOS’s sound engine."_s));
        }
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

    void noAnalysis() { QCOMPARE(RestartClipboard::text(std::nullopt), "(no analysis yet — click Analyze)"); }

    void restartAnalysis_data()
    {
        QTest::addColumn<bool>("everySource");
        QTest::addColumn<QString>("expected");
        QTest::addRow("no findings") << false << QString::fromUtf8(noFindings);
        QTest::addRow("all four findings and a decoded process")
            << true << QString::fromUtf8(allFourFindings);
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
                 expected.arg(DateFormat::completeDateTime(instant, usInUtc)));
    }
};

QTEST_GUILESS_MAIN(TestClipboard)
#include "tst_clipboard.moc"
