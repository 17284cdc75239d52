#include "FakeToolDir.h"
#include "Fixtures.h"
#include "pmset/PMSetService.h"
#include "restart/RestartBlockerService.h"
#include "restart/StallReports.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

const QString stallReportName = QStringLiteral("loginwindow_2026-11-19-220531_Mac-Studio.shutdownStall");

/// The lines a finding's detail lists after its lead paragraph.
QStringList listedLines(const RestartFinding &finding)
{
    return finding.detail.sliced(finding.detail.indexOf(u"\n\n") + 2).split(u'\n');
}

} // namespace

class TestRestartService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void softwareUpdateEvidence_data()
    {
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QString>("names"); // null: no finding
        const QByteArray header = "Listed by owning process:\n";
        QTest::addRow("update daemon in any letter case, any kind, named once")
            << header + "   pid 1(SoftwareUpdateD): [a] 1 BackgroundTask\n"
                        "   pid 1(SoftwareUpdateD): [b] 1 PreventUserIdleSystemSleep\n"
            << u"SoftwareUpdateD"_s;
        QTest::addRow("the update kind held by any process")
            << header + "   pid 7(installd): [a] 1 SoftwareUpdateTask\n"
                        "   pid 8(MobileAssetD): [b] 1 UserIsActive\n"
            << u"installd, MobileAssetD"_s;
        QTest::addRow("unrelated assertions") << header + "   pid 7(coreaudiod): [a] 1 PreventSystemSleep\n"
                                              << QString();
    }
    void softwareUpdateEvidence()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QString, names);
        RestartBlockerService service(QStringLiteral("/nonexistent/log"), QString(), QString());
        const RestartAnalysis analysis =
            service.analyze(PMSetService::parse(QString::fromUtf8(listing), {}), {}).result();
        QCOMPARE(analysis.findings.size(), names.isNull() ? 0 : 1);
        if (!names.isNull())
            QVERIFY2(analysis.findings[0].detail.contains(u'(' + names + u')'),
                     qPrintable(analysis.findings[0].detail));
    }

    void loginwindowLines_data()
    {
        QTest::addColumn<QByteArray>("log");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("listed"); // empty: no finding
        QTest::addRow("capitalised keyword and .app")
            << QByteArray("x Refused by Pages.app\n") << 0 << QStringList{"x Refused by Pages.app"};
        QTest::addRow("quote and bundle id are markers too")
            << QByteArray("\t a \"Notes\" timed out \nb Abort com.acme\n") << 0
            << QStringList{"a \"Notes\" timed out", "b Abort com.acme"};
        QTest::addRow("keyword without marker") << QByteArray("quit was cancelled\n") << 0 << QStringList();
        QTest::addRow("marker without keyword") << QByteArray("Mail.app quit\n") << 0 << QStringList();
        QTest::addRow("six lines keep the last four in log order")
            << QByteArray("1 cancel .app\n2 cancel .app\n3 cancel .app\n\n4 cancel .app\n5 cancel .app\n"
                          "6 cancel .app")
            << 0 << QStringList{"3 cancel .app", "4 cancel .app", "5 cancel .app", "6 cancel .app"};
        QTest::addRow("log exits non-zero") << QByteArray("x Refused by Pages.app\n") << 1 << QStringList();
        QTest::addRow("output not UTF-8") << QByteArray("x Refused by P\xe4ges.app\n") << 0 << QStringList();
    }
    void loginwindowLines()
    {
        QFETCH(QByteArray, log);
        QFETCH(int, status);
        QFETCH(QStringList, listed);
        FakeToolDir fake;
        fake.setOutput("log", log);
        fake.setExitStatus("log", status);
        RestartBlockerService service(fake.logPath(), fake.spindumpPath(), fake.path());
        const RestartAnalysis analysis = service.analyze(std::nullopt, {}).result();
        QCOMPARE(analysis.findings.size(), listed.isEmpty() ? 0 : 1);
        if (!listed.isEmpty())
            QCOMPARE(listedLines(analysis.findings[0]), listed);
    }

    void runningAppsInCollationOrder_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addRow("English") << QLocale(QLocale::English, QLocale::UnitedStates);
        // What LANG=C.UTF-8 gives: a collator there would compare code points, É after z.
        QTest::addRow("C falls back to real collation") << QLocale::c();
    }
    void runningAppsInCollationOrder()
    {
        QFETCH(QLocale, locale);
        const QLocale previous;
        QLocale::setDefault(locale);
        const auto restore = qScopeGuard([&] { QLocale::setDefault(previous); });
        RestartBlockerService service(QStringLiteral("/nonexistent/log"), QString(), QString());
        const QList<RunningAppInfo> apps{
            {"zed", {}, 1}, {"Éclair", {}, 2}, {"Alpha", {}, 3}, {"beta", {}, 4}, {"alpha", {}, 5}};
        const RestartAnalysis analysis = service.analyze(std::nullopt, apps).result();
        QCOMPARE(analysis.findings.size(), 1);
        QCOMPARE(analysis.findings[0].title, "5 apps are open and will be asked to quit");
        QCOMPARE(listedLines(analysis.findings[0]), QStringList{"Alpha, alpha, beta, Éclair, zed"});
    }

    void newestStallReport_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("chosen"); // null: none
        QTest::addRow("other diagnostic reports only")
            << QStringList{"Safari_2026-11-19-101500_Mac.crash", "x_2026-11-19.shutdownstall.txt"}
            << QString();
        QTest::addRow("upper-case suffix")
            << QStringList{"Mail_2026-11-19.hang", "loginwindow_2026-01-02.SHUTDOWNSTALL"}
            << "loginwindow_2026-01-02.SHUTDOWNSTALL";
        QTest::addRow("the name that sorts last, whatever the file dates")
            << QStringList{"loginwindow_2026-11-19-220531_Mac.shutdownStall",
                           "loginwindow_2025-02-01-080000_Mac.shutdownStall",
                           "loginwindow_2026-11-20-090000_Mac.shutdownStall"}
            << "loginwindow_2026-11-20-090000_Mac.shutdownStall";
    }
    void newestStallReport()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, chosen);
        QTemporaryDir reports;
        QVERIFY(reports.isValid());
        for (const QString &name : files)
            Fixtures::writeFile(reports.filePath(name));
        QVERIFY(QDir(reports.path()).mkdir("zz_2026-12-31.shutdownstall")); // folders are not reports
        // The file written last is not the newest by name.
        QFile(reports.filePath(files.first()))
            .setFileTime(QDateTime::currentDateTime().addDays(1), QFileDevice::FileModificationTime);
        RestartBlockerService service(QString(), QString(), reports.path());
        const std::optional<QString> report = service.mostRecentStallReport();
        QCOMPARE(report, chosen.isNull() ? std::nullopt : std::optional(reports.filePath(chosen)));
    }

    void stallReportFinding_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("when");  // the title's end
        QTest::addColumn<QString>("shown"); // null: the file name as it is
        const auto row = [](const char *name, const QString &fileName, const QString &when,
                            const QString &shown = {}) {
            QTest::addRow("%s", name) << fileName << when << shown;
        };
        row("full date", u"loginwindow_2024-03-07-101500_Mac.shutdownStall"_s, u"on March 7, 2024"_s);
        row("short month and day", u"x_2024-3-7_y.shutdownStall"_s, u"on March 7, 2024"_s);
        row("first qualifying part wins", u"_x_12-1-1_2023-12-31_2024-01-01"_s, u"on December 31, 2023"_s);
        row("month 0", u"x_2024-00-01_y.shutdownStall"_s, u"recently"_s);
        row("month 13", u"x_2024-13-01_y.shutdownStall"_s, u"recently"_s);
        row("extension glued to the day", u"x_2024-03-07.shutdownStall"_s, u"recently"_s);
        row("only two pieces", u"x_2024-03_y.shutdownStall"_s, u"recently"_s);
        row("no date part", u"loginwindow.shutdownStall"_s, u"recently"_s);
        row("line feed shown", u"a\nb_2024-03-07-1.shutdownStall"_s, u"on March 7, 2024"_s,
            u"a\\x0ab_2024-03-07-1.shutdownStall"_s);
        row("escape sequence shown", u"\x1b[31mred.shutdownStall"_s, u"recently"_s,
            u"\\x1b[31mred.shutdownStall"_s);
        row("next line from C1 shown", u"a\u0085b.shutdownStall"_s, u"recently"_s,
            u"a\\x85b.shutdownStall"_s);
        row("year holding a carriage return shown", u"x_2\r024-03-07_y.shutdownStall"_s,
            u"on March 7, 2\\x0d024"_s, u"x_2\\x0d024-03-07_y.shutdownStall"_s);
    }
    void stallReportFinding()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, when);
        QFETCH(QString, shown);
        const RestartFinding finding = StallReports::finding("/reports/" + fileName);
        QCOMPARE(finding.title, "Your Mac stalled during a shutdown " + when);
        const QString name = shown.isNull() ? fileName : shown;
        QVERIFY2(finding.detail.contains("or more (" + name + "). If"), qPrintable(finding.detail));
        QVERIFY(!finding.detail.contains(u'\n'));
    }

    void decodeCleansUpAfterItself_data()
    {
        QTest::addColumn<QByteArray>("decoded"); // null: spindump writes nothing
        QTest::addColumn<QString>("trouble");    // what else spindump does
        QTest::addColumn<QString>("culprit");    // null: none
        const QByteArray decoded = Fixtures::read("spindump-decoded.txt");
        QTest::addRow("decoded report") << decoded << QString() << "backupd [1180]";
        QTest::addRow("no output") << QByteArray() << QString() << QString();
        QTest::addRow("output without a process line")
            << QByteArray("Duration: 36s\n") << QString() << QString();
        QTest::addRow("an extra file beside the output") << decoded << "extra file"
                                                         << "backupd [1180]";
        QTest::addRow("a folder where the output should be") << QByteArray() << "folder" << QString();
        QTest::addRow("hangs until the service goes") << decoded << "hang" << QString();
    }
    void decodeCleansUpAfterItself()
    {
        QFETCH(QByteArray, decoded);
        QFETCH(QString, trouble);
        QFETCH(QString, culprit);
        FakeToolDir fake;
        if (!decoded.isNull())
            fake.setOutput("spindump", decoded);
        if (trouble == "extra file")
            fake.setSpindumpExtraFile("Binary Images: none\n");
        else if (trouble == "folder")
            fake.setSpindumpMakesFolder();
        else if (trouble == "hang")
            fake.setSleep("spindump", 60);
        const QString report = "/reports/" + stallReportName;
        // A link planted where a predictable name in the shared folder would be must not be followed.
        QTemporaryDir elsewhere;
        const QString target = elsewhere.filePath("precious.txt");
        Fixtures::writeFile(target, "keep me\n");
        const QString planted = QDir::temp().filePath(StallReports::decodeFileName(report));
        QFile::remove(planted);
        QVERIFY(QFile::link(target, planted));
        const auto removePlanted = qScopeGuard([&] { QFile::remove(planted); });

        auto service =
            std::make_unique<RestartBlockerService>(fake.logPath(), fake.spindumpPath(), QString());
        const QFuture<std::optional<QString>> decoding = service->decodeStallReport(report);
        if (trouble == "hang") {
            QTRY_VERIFY_WITH_TIMEOUT(!fake.spindumpOutputPaths().isEmpty(), 10'000);
            service.reset(); // as when the window closes
            QVERIFY(decoding.isFinished());
        }
        QCOMPARE(decoding.result(), culprit.isNull() ? std::nullopt : std::optional(culprit));

        QFile kept(target);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), "keep me\n");
        QVERIFY(QFileInfo(planted).isSymLink());
        const QStringList outputs = fake.spindumpOutputPaths();
        QCOMPARE(outputs.size(), 1);
        const QFileInfo output(outputs[0]);
        QCOMPARE(output.fileName(), StallReports::decodeFileName(report));
        QVERIFY2(!output.exists() && !QFileInfo::exists(output.absolutePath()), "left behind");
    }
};

QTEST_GUILESS_MAIN(TestRestartService)
#include "tst_restartservice.moc"
