#include "FakeToolDir.h"
#include "Fixtures.h"
#include "pmset/PMSetService.h"
#include "restart/RestartBlockerService.h"
#include "restart/RestartClipboard.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

const DateFormat::Setting usEnglishUtc{"en_US", "UTC"};

// Written out from the description of the texts, not from the program's output.
const char allFourFindings[] = R"(Lullwick — Restart analysis
Checked Monday, March 4, 2024 at 3:04:05 PM

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
Checked Monday, March 4, 2024 at 3:04:05 PM

No obvious restart blocker found. If restart still hangs, it's most likely an app with an unsaved document.
)";

} // namespace

class TestRestartClipboard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noAnalysis() { QCOMPARE(RestartClipboard::text(std::nullopt), "(no analysis yet — click Analyze)"); }

    void analysisText_data()
    {
        QTest::addColumn<bool>("everySource");
        QTest::addColumn<QString>("expected");
        QTest::addRow("no findings") << false << QString::fromUtf8(noFindings);
        QTest::addRow("all four findings and a decoded process")
            << true << QString::fromUtf8(allFourFindings);
    }
    void analysisText()
    {
        QFETCH(bool, everySource);
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
        analysis.ranAt = QDateTime(QDate(2024, 3, 4), QTime(15, 4, 5), Qt::UTC);
        if (everySource)
            analysis.decodedStallProcess = "backupd [1180]";

        // ICU puts a narrow no-break space before PM in recent data, a plain space in older.
        QTEST(RestartClipboard::text(analysis, usEnglishUtc).replace(u"05\u202fPM"_s, u"05 PM"_s),
              "expected");
    }
};

QTEST_GUILESS_MAIN(TestRestartClipboard)
#include "tst_restartclipboard.moc"
