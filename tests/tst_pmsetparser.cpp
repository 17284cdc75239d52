#include "Fixtures.h"
#include "pmset/PMSetService.h"

#include <QtTest>

using namespace lullwick;

namespace {

const QDateTime capturedAt = QDateTime(QDate(2026, 11, 23), QTime(9, 30), Qt::UTC);

AssertionsSnapshot parse(const QString &text)
{
    return PMSetService::parse(text, capturedAt);
}

QString perProcess(const QString &body)
{
    return QStringLiteral("Listed by owning process:\n") + body;
}

} // namespace

class TestPMSetParser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void workedExample()
    {
        const QString input =
            QStringLiteral("Assertion status system-wide:\n"
                           "   BackgroundTask                 0\n"
                           "   PreventUserIdleSystemSleep     1\n"
                           "Listed by owning process:\n"
                           "   pid 402(coreaudiod): [0x1f4a] 01:20:31 PreventUserIdleSystemSleep "
                           "named: \"audio out\"\n"
                           "\tCreated for PID: 1337. \n"
                           "   pid 81(caffeinate): [0x2b] 00:00:42 PreventSystemSleep\n"
                           "Kernel Assertions: 0x4=USB\n"
                           "   id=500  level=255 0x4=USB");
        const AssertionsSnapshot s = parse(input);

        QCOMPARE(s.capturedAt, capturedAt);
        QCOMPARE(s.rawOutput, input);
        QCOMPARE(s.systemWideCounts,
                 (QList<SystemWideCount>{{"BackgroundTask", 0}, {"PreventUserIdleSystemSleep", 1}}));
        QCOMPARE(s.assertions.size(), 2);

        const Assertion &audio = s.assertions[0];
        QCOMPARE(audio.pid, 402);
        QCOMPARE(audio.processName, "coreaudiod");
        QCOMPARE(audio.assertionID, "0x1f4a");
        QCOMPARE(audio.timeHeld, "01:20:31");
        QCOMPARE(audio.kind, AssertionKind::preventUserIdleSystemSleep);
        QCOMPARE(audio.namedReason, std::optional<QString>("audio out"));
        QCOMPARE(audio.extras, std::optional<QString>("Created for PID: 1337."));
        QCOMPARE(audio.createdForPID(), std::optional<qint64>(1337));

        const Assertion &caffeinate = s.assertions[1];
        QCOMPARE(caffeinate.pid, 81);
        QCOMPARE(caffeinate.processName, "caffeinate");
        QCOMPARE(caffeinate.assertionID, "0x2b");
        QCOMPARE(caffeinate.timeHeld, "00:00:42");
        QCOMPARE(caffeinate.kind, AssertionKind::preventSystemSleep);
        QCOMPARE(caffeinate.namedReason, std::nullopt);
        QCOMPARE(caffeinate.extras, std::nullopt);
        QCOMPARE(caffeinate.createdForPID(), std::nullopt);

        QVERIFY(!audio.id.isNull());
        QVERIFY(audio.id != caffeinate.id);
        QCOMPARE(s.blockers(SleepKind::idleSystem), (QList<Assertion>{audio, caffeinate}));
        QCOMPARE(s.blockers(SleepKind::system), QList<Assertion>{caffeinate});
        QCOMPARE(s.blockers(SleepKind::display), QList<Assertion>{caffeinate});
        QVERIFY(s.nonBlockingAssertions().isEmpty());
    }

    // One per-process line, parsed alone: the fields it gives, or "rejected".
    void perProcessLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("fields"); // pid, name, id, time, type word, reason ("<none>")
        const QStringList rejected{"rejected"};
        QTest::addRow("plain") << "   pid 81(caffeinate): [0x2b] 00:00:42 PreventSystemSleep"
                               << QStringList{"81",       "caffeinate",         "0x2b",
                                              "00:00:42", "PreventSystemSleep", "<none>"};
        QTest::addRow("name with spaces and brackets inside reason")
            << "   pid 7(QuickTime Player): [0x1] 10:00:00 PreventUserIdleDisplaySleep named: \"Video [HD]\" "
               "x"
            << QStringList{"7",         "QuickTime Player", "0x1", "10:00:00", "PreventUserIdleDisplaySleep",
                           "Video [HD]"};
        QTest::addRow("spaces around pid and extra spaces before type")
            << "   pid  12 (a): x [b]   1:00    BackgroundTask   named: \"r\""
            << QStringList{"12", "a", "b", "1:00", "BackgroundTask", "r"};
        QTest::addRow("empty reason")
            << "   pid 1(a): [b] t W named: \"\"" << QStringList{"1", "a", "b", "t", "W", ""};
        QTest::addRow("reason without closing quote")
            << "   pid 1(a): [b] t W named: \"open" << QStringList{"1", "a", "b", "t", "W", "<none>"};
        QTest::addRow("reason cut at inner quote")
            << "   pid 1(a): [b] t W named: \"say \"hi\"\"" << QStringList{"1", "a", "b", "t", "W", "say "};
        QTest::addRow("carriage return joins the type word")
            << "   pid 1(a): [b] t W\r" << QStringList{"1", "a", "b", "t", "W\r", "<none>"};
        QTest::addRow("pid not a number") << "   pid x(a): [b] t W" << rejected;
        QTest::addRow("no type word") << "   pid 1(a): [b] 00:00:42" << rejected;
        QTest::addRow("no colon") << "   pid 1(a) [b] t W" << rejected;
        QTest::addRow("colon inside name") << "   pid 1(a:b): [c] t W" << rejected;
        QTest::addRow("bracket reversed") << "   pid 1(a): ]b[ t W" << rejected;
    }
    void perProcessLine()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, fields);
        const AssertionsSnapshot s = parse(perProcess(line + u'\n'));
        if (fields == QStringList{"rejected"}) {
            QVERIFY(s.assertions.isEmpty());
            return;
        }
        QCOMPARE(s.assertions.size(), 1);
        const Assertion &a = s.assertions[0];
        QCOMPARE(QString::number(a.pid), fields[0]);
        QCOMPARE(a.processName, fields[1]);
        QCOMPARE(a.assertionID, fields[2]);
        QCOMPARE(a.timeHeld, fields[3]);
        QCOMPARE(a.kind.typeWord(), fields[4]);
        QCOMPARE(a.namedReason.value_or("<none>"), fields[5]);
    }

    // Whole listings, summarised as "pid:extras" per assertion and "name=count" per counter.
    void listing_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QStringList>("assertions");
        QTest::addColumn<QStringList>("counts");
        QTest::addRow("empty text") << "" << QStringList{} << QStringList{};
        QTest::addRow("no header at all") << "   pid 1(a): [b] t W\n   X 1\n"
                                          << QStringList{} << QStringList{};
        QTest::addRow("per-process header with nothing after")
            << "Listed by owning process:" << QStringList{} << QStringList{};
        QTest::addRow("two per-process lines, first without extras")
            << perProcess("   pid 1(a): [b] t W\n   pid 2(a): [b] t W\n\tx\n") << QStringList{"1:-", "2:x"}
            << QStringList{};
        QTest::addRow("blank continuation lines are not extras")
            << perProcess("   pid 1(a): [b] t W\n \t \n\n  one  \n\ttwo\n") << QStringList{"1:one|two"}
            << QStringList{};
        QTest::addRow("pid line indented by a tab or two spaces is a continuation")
            << perProcess("   pid 1(a): [b] t W\n\tpid 2(a): [b] t W\n  pid 3(a): [b] t W\n")
            << QStringList{"1:pid 2(a): [b] t W|pid 3(a): [b] t W"} << QStringList{};
        QTest::addRow("indented line with nothing pending is skipped")
            << perProcess("\tCreated for PID: 4\n   pid 1(a): [b] t W\n") << QStringList{"1:-"}
            << QStringList{};
        QTest::addRow("rejected line drops its continuations")
            << perProcess("   pid 1(a): [b] t W\n   pid x(a): [b] t W\n\tlost\n   pid 3(a): [b] t W\n")
            << QStringList{"1:-", "3:-"} << QStringList{};
        QTest::addRow("pending assertion survives a system-wide section")
            << perProcess("   pid 1(a): [b] t W\n\tbefore\n") +
                   "Assertion status system-wide:\n   Some Counter 2\n"
            << QStringList{"1:before"} << QStringList{"Some Counter=2"};
        QTest::addRow("second per-process section adds to the list")
            << perProcess("   pid 1(a): [b] t W\n") + "Kernel Assertions:\n   pid 9(a): [b] t W\n" +
                   perProcess("   pid 2(a): [b] t W\n")
            << QStringList{"1:-", "2:-"} << QStringList{};
        QTest::addRow("indented header is no header")
            << perProcess("   pid 1(a): [b] t W\n Kernel Assertions: 0x4\n")
            << QStringList{"1:Kernel Assertions: 0x4"} << QStringList{};
        QTest::addRow("counter words joined by single spaces")
            << "Assertion status system-wide:\n   Some    Counter  Name   7\n   A -2\n   B +3\n   C 3x\n   "
               "7\n\n  \t\n"
            << QStringList{} << QStringList{"Some Counter Name=7", "A=-2", "B=3"};
        QTest::addRow("real capture")
            << Fixtures::readText("assertions-typical.txt")
            << QStringList{"402:Created for PID: 1069.",
                           "143:Timeout will fire in 598 secs Action=TimeoutActionRelease", "96:-", "530:-",
                           "402:Created for PID: 1069."}
            << QStringList{"BackgroundTask=0",
                           "ApplePushServiceTask=0",
                           "UserIsActive=1",
                           "PreventUserIdleDisplaySleep=0",
                           "PreventSystemSleep=0",
                           "ExternalMedia=1",
                           "PreventUserIdleSystemSleep=1",
                           "NetworkClientActive=1"};
    }
    void listing()
    {
        QFETCH(QString, input);
        QFETCH(QStringList, assertions);
        QFETCH(QStringList, counts);
        const AssertionsSnapshot s = parse(input);
        QCOMPARE(s.rawOutput, input);
        QStringList gotAssertions;
        for (const Assertion &a : s.assertions) {
            QString extras = a.extras.value_or("-");
            gotAssertions << QString::number(a.pid) + u':' + extras.replace(u'\n', u'|');
        }
        QCOMPARE(gotAssertions, assertions);
        QStringList gotCounts;
        for (const SystemWideCount &c : s.systemWideCounts)
            gotCounts << c.name + u'=' + QString::number(c.count);
        QCOMPARE(gotCounts, counts);
    }

    void oneMegabyteSingleLine()
    {
        QString line = QStringLiteral("   pid 1(a): [b] t W named: \"");
        line += QString(1 << 20, u'x');
        const AssertionsSnapshot s = parse(perProcess(line));
        QCOMPARE(s.assertions.size(), 1);
        QCOMPARE(s.assertions[0].namedReason, std::nullopt);

        QString words = QStringLiteral("Assertion status system-wide:\n");
        for (int i = 0; i < (1 << 18); ++i)
            words += QStringLiteral("w  ");
        words += QStringLiteral("9");
        const AssertionsSnapshot counters = parse(words);
        QCOMPARE(counters.systemWideCounts.size(), 1);
        QCOMPARE(counters.systemWideCounts[0].name.size(), (1 << 18) * 2 - 1);
    }

    void twoHundredThousandLines()
    {
        const QByteArray listing = Fixtures::generatedAssertions(150'000);
        QVERIFY(listing.count('\n') >= 200'000);
        const AssertionsSnapshot s = parse(QString::fromUtf8(listing));
        QCOMPARE(s.assertions.size(), 150'000);
        QCOMPARE(s.assertions.last().pid, 100 + 150'000 - 1);
        QCOMPARE(s.systemWideCounts.size(), 3);

        // A single assertion with 200,000 continuation lines.
        QString longExtras = perProcess("   pid 1(a): [b] t W\n");
        for (int i = 0; i < 200'000; ++i)
            longExtras += QStringLiteral("\tline\n");
        const AssertionsSnapshot one = parse(longExtras);
        QCOMPARE(one.assertions.size(), 1);
        QCOMPARE(one.assertions[0].extras->size(), 200'000 * 5 - 1);
    }
};

QTEST_APPLESS_MAIN(TestPMSetParser)
#include "tst_pmsetparser.moc"
