#include "pmset/PMSetService.h"

#include <QtTest>

using namespace lullwick;

namespace {

const QDateTime capturedAt = QDateTime(QDate(2026, 11, 23), QTime(9, 30), Qt::UTC);

QString perProcess(const QString &body)
{
    return QStringLiteral("Listed by owning process:\n") + body;
}

void row(const char *name, const QString &input, const QStringList &assertions,
         const QStringList &counts = {})
{
    QTest::newRow(name) << input << assertions << counts;
}

} // namespace

class TestPMSetParser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Each assertion as `pid(name)[id] time type "reason" extras`: an unknown type word is marked
    // "?", an absent reason or extras is "-", and continuation lines are joined by "|".
    void listing_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QStringList>("assertions");
        QTest::addColumn<QStringList>("counts");

        // One per-process line.
        row("spaces in pid, name and between words; text before the bracket; bracket in the reason",
            perProcess(
                "   pid  7 (QuickTime Player): x [0x1]   10:00    BackgroundTask   named: \"V [HD]\" x"),
            {"7(QuickTime Player)[0x1] 10:00 BackgroundTask \"V [HD]\" -"});
        row("empty reason", perProcess("   pid 1(a): [b] t W named: \"\""), {"1(a)[b] t ?W \"\" -"});
        row("reason without closing quote", perProcess("   pid 1(a): [b] t W named: \"open"),
            {"1(a)[b] t ?W - -"});
        row("reason cut at inner quote", perProcess("   pid 1(a): [b] t W named: \"say \"hi\"\""),
            {"1(a)[b] t ?W \"say \" -"});
        row("carriage return joins the type word", perProcess("   pid 1(a): [b] t W\r"),
            {"1(a)[b] t ?W\r - -"});
        row("a tab after the held time does not end it",
            perProcess("   pid 1(a): [b] 00:00:42\tPreventSystemSleep named: \"x\""),
            {"1(a)[b] 00:00:42\tPreventSystemSleep ?named: - -"});
        row("pid not a number", perProcess("   pid x(a): [b] t W"), {});
        row("no type word", perProcess("   pid 1(a): [b] 00:00:42"), {});
        row("no colon", perProcess("   pid 1(a) [b] t W"), {});
        row("colon inside name", perProcess("   pid 1(a:b): [c] t W"), {});
        row("bracket reversed", perProcess("   pid 1(a): ]b[ t W"), {});
        row("no closing bracket", perProcess("   pid 1(a): [b 00:00:42 PreventSystemSleep"), {});

        // Sections and continuation lines.
        row("no header at all", "   pid 1(a): [b] t W\n   X 1\n", {});
        row("two per-process lines, first without extras",
            perProcess("   pid 1(a): [b] t W\n   pid 2(a): [b] t W\n\tx\n"),
            {"1(a)[b] t ?W - -", "2(a)[b] t ?W - x"});
        row("blank continuation lines are not extras",
            perProcess("   pid 1(a): [b] t W\n \t \n\n  one  \n\ttwo\n"), {"1(a)[b] t ?W - one|two"});
        row("continuation keeps a carriage return", perProcess("   pid 1(a): [b] t W\n\tone \r\n"),
            {"1(a)[b] t ?W - one \r"});
        row("pid line indented by a tab or two spaces is a continuation",
            perProcess("   pid 1(a): [b] t W\n\tpid 2(a): [b] t W\n  pid 3(a): [b] t W\n"),
            {"1(a)[b] t ?W - pid 2(a): [b] t W|pid 3(a): [b] t W"});
        row("rejected line drops its continuations",
            perProcess("   pid 1(a): [b] t W\n   pid x(a): [b] t W\n\tlost\n   pid 3(a): [b] t W\n"),
            {"1(a)[b] t ?W - -", "3(a)[b] t ?W - -"});
        row("per-process header finishes the assertion left pending by a system-wide section",
            perProcess("   pid 1(a): [b] t W\n") +
                "Assertion status system-wide:\n   C 2\nListed by owning process:\n\tafter\n",
            {"1(a)[b] t ?W - -"}, {"C=2"});
        row("second per-process section adds to the list",
            perProcess("   pid 1(a): [b] t W\n") + "Kernel Assertions:\n   pid 9(a): [b] t W\n" +
                perProcess("   pid 2(a): [b] t W\n"),
            {"1(a)[b] t ?W - -", "2(a)[b] t ?W - -"});
        row("counter words joined by single spaces, a tab inside a word",
            "Assertion status system-wide:\n   Some    Counter\tName   7\n   Two  Spaces  5\n"
            "   C 3x\n   7\n   Zero 0\n\n  \t\n",
            {}, {"Some Counter\tName=7", "Two Spaces=5", "Zero=0"});
    }
    void listing()
    {
        QFETCH(QString, input);
        const AssertionsSnapshot s = PMSetService::parse(input, capturedAt);
        QCOMPARE(s.capturedAt, capturedAt);
        QCOMPARE(s.rawOutput, input);
        QStringList assertions;
        for (const Assertion &a : s.assertions) {
            QString extras = a.extras.value_or("-");
            assertions << QStringLiteral("%1(%2)[%3] %4 %5%6 %7 %8")
                              .arg(QString::number(a.pid), a.processName, a.assertionID, a.timeHeld,
                                   a.kind.isOther() ? "?" : "", a.kind.typeWord(),
                                   a.namedReason ? '"' + *a.namedReason + '"' : "-",
                                   extras.replace('\n', '|'));
        }
        QTEST(assertions, "assertions");
        QStringList counts;
        for (const SystemWideCount &c : s.systemWideCounts)
            counts << c.name + u'=' + QString::number(c.count);
        QTEST(counts, "counts");
    }
};

QTEST_APPLESS_MAIN(TestPMSetParser)
#include "tst_pmsetparser.moc"
