#include "model/AssertionsSnapshot.h"
#include "model/RestartAnalysis.h"
#include "model/TextRules.h"

#include <QtTest>

using namespace lullwick;

namespace {

Assertion makeAssertion(qint64 pid, AssertionKind kind, std::optional<QString> extras = std::nullopt)
{
    Assertion a;
    a.id = QUuid::createUuid();
    a.pid = pid;
    a.processName = QStringLiteral("proc%1").arg(pid);
    a.kind = std::move(kind);
    a.extras = std::move(extras);
    return a;
}

QList<qint64> pidsOf(const QList<Assertion> &list)
{
    QList<qint64> pids;
    for (const Assertion &a : list)
        pids.append(a.pid);
    return pids;
}

} // namespace

class TestModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void integersAreStrict_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<qint64>("value");
        QTest::addRow("digits") << "1069" << true << qint64(1069);
        QTest::addRow("leading plus") << "+3" << true << qint64(3);
        QTest::addRow("leading minus") << "-2" << true << qint64(-2);
        QTest::addRow("largest") << "9223372036854775807" << true << std::numeric_limits<qint64>::max();
        QTest::addRow("smallest") << "-9223372036854775808" << true << std::numeric_limits<qint64>::min();
        QTest::addRow("one past largest") << "9223372036854775808" << false << qint64(0);
        QTest::addRow("one past smallest") << "-9223372036854775809" << false << qint64(0);
        QTest::addRow("empty") << "" << false << qint64(0);
        QTest::addRow("sign alone") << "-" << false << qint64(0);
        QTest::addRow("trailing letter") << "3x" << false << qint64(0);
        QTest::addRow("surrounding space") << " 12" << false << qint64(0);
        QTest::addRow("arabic-indic digits") << QString::fromUtf8("\u0661\u0662") << false << qint64(0);
    }
    void integersAreStrict()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(qint64, value);
        const auto parsed = text::toInt64(text);
        QCOMPARE(parsed.has_value(), valid);
        if (valid)
            QCOMPARE(*parsed, value);
    }

    void blanksAndDecoding()
    {
        // Tabs and every Unicode space separator are blanks; line breaks are not.
        QCOMPARE(text::trimmed(u" \t\u00a0a b\u3000"), u"a b");
        QCOMPARE(text::trimmed(u"\nx\r"), u"\nx\r");
        QCOMPARE(text::decodeUtf8("caf\xc3\xa9"), std::optional<QString>(QString::fromUtf8("café")));
        QVERIFY(!text::decodeUtf8("caf\xe9")); // a sequence cut off at the end
        QVERIFY(!text::decodeUtf8("a\xff"
                                  "b"));
    }

    void sleepKindLabels()
    {
        QCOMPARE(rawValue(allSleepKinds[0]), "Idle system sleep");
        QCOMPARE(rawValue(allSleepKinds[1]), "All system sleep");
        QCOMPARE(rawValue(allSleepKinds[2]), "Display sleep");
        QCOMPARE(sleepKindFromRawValue(u"Display sleep"), std::optional(SleepKind::display));
        QVERIFY(!sleepKindFromRawValue(u"display sleep"));
    }

    void kindsFromTypeWords_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("kindCase");
        QTest::addColumn<QString>("blocks"); // i = idle system, s = system, d = display
        QTest::addRow("idle system") << "PreventUserIdleSystemSleep"
                                     << int(AssertionKind::preventUserIdleSystemSleep) << "i";
        QTest::addRow("system blocks all three")
            << "PreventSystemSleep" << int(AssertionKind::preventSystemSleep) << "isd";
        QTest::addRow("display also blocks idle")
            << "PreventUserIdleDisplaySleep" << int(AssertionKind::preventUserIdleDisplaySleep) << "id";
        QTest::addRow("legacy idle") << "NoIdleSleepAssertion" << int(AssertionKind::noIdleSleepLegacy)
                                     << "i";
        QTest::addRow("legacy display")
            << "NoDisplaySleepAssertion" << int(AssertionKind::noDisplaySleepLegacy) << "id";
        QTest::addRow("legacy system")
            << "DenySystemSleep" << int(AssertionKind::denySystemSleepLegacy) << "isd";
        QTest::addRow("software update")
            << "SoftwareUpdateTask" << int(AssertionKind::softwareUpdateTask) << "i";
        QTest::addRow("user is active blocks nothing")
            << "UserIsActive" << int(AssertionKind::userIsActive) << "";
        QTest::addRow("lower case is other")
            << "preventuseridlesystemsleep" << int(AssertionKind::other) << "";
        QTest::addRow("empty is other") << "" << int(AssertionKind::other) << "";
    }
    void kindsFromTypeWords()
    {
        QFETCH(QString, word);
        QFETCH(int, kindCase);
        QFETCH(QString, blocks);
        const AssertionKind kind = AssertionKind::fromRawType(word);
        QCOMPARE(int(kind.kindCase()), kindCase);
        QCOMPARE(kind.typeWord(), word);
        const SleepKindSet blocked = kind.blockedSleepKinds();
        QCOMPARE(blocked.contains(SleepKind::idleSystem), blocks.contains(u'i'));
        QCOMPARE(blocked.contains(SleepKind::system), blocks.contains(u's'));
        QCOMPARE(blocked.contains(SleepKind::display), blocks.contains(u'd'));
        QCOMPARE(blocked.isEmpty(), blocks.isEmpty());
        if (kind.isOther())
            QCOMPARE(kind.otherText(), word);
    }

    void descriptions()
    {
        QCOMPARE(AssertionKind(AssertionKind::preventDiskIdle).humanDescription(),
                 QString::fromUtf8("Keeping a disk spun up; doesn\u2019t affect system or display sleep."));
        QCOMPARE(
            AssertionKind(AssertionKind::externalMedia).humanDescription(),
            QString::fromUtf8("External storage is mounted. Informational on modern macOS \u2014 does not "
                              "prevent sleep on its own."));
        QCOMPARE(AssertionKind(AssertionKind::denySystemSleepLegacy).humanDescription(),
                 AssertionKind(AssertionKind::preventSystemSleep).humanDescription());
        QCOMPARE(AssertionKind::fromRawType(u"FooBar").humanDescription(), "Assertion: FooBar.");
        QCOMPARE(AssertionKind::fromRawType(u"").humanDescription(), "Assertion: .");
    }

    void equalityAndHashing()
    {
        const AssertionKind a = AssertionKind::makeOther(QStringLiteral("Foo"));
        const AssertionKind sameText = AssertionKind::makeOther(QStringLiteral("Foo"));
        const AssertionKind otherText = AssertionKind::makeOther(QStringLiteral("Bar"));
        const AssertionKind spelledKnown = AssertionKind::makeOther(QStringLiteral("PreventSystemSleep"));
        const AssertionKind known = AssertionKind::preventSystemSleep;
        QCOMPARE(a, sameText);
        QCOMPARE(qHash(a, 7), qHash(sameText, 7));
        QVERIFY(a != otherText);
        QVERIFY(spelledKnown != known);
        QVERIFY(known == AssertionKind::fromRawType(u"PreventSystemSleep"));
        QVERIFY(AssertionKind(AssertionKind::noIdleSleepLegacy) != AssertionKind::preventUserIdleSystemSleep);

        QSet<AssertionKind> set{a, sameText, otherText, spelledKnown, known};
        QCOMPARE(set.size(), 4);
    }

    void createdForPID_data()
    {
        QTest::addColumn<std::optional<QString>>("extras");
        QTest::addColumn<std::optional<qint64>>("pid");
        const std::optional<qint64> none;
        QTest::addRow("absent extras") << std::optional<QString>() << none;
        QTest::addRow("final full stop")
            << std::optional<QString>("Created for PID: 1069.") << std::optional<qint64>(1069);
        QTest::addRow("first line not a number")
            << std::optional<QString>("Created for PID: abc\nCreated for PID: 77,")
            << std::optional<qint64>(77);
        QTest::addRow("marker mid-line")
            << std::optional<QString>("Timeout x\nproxy Created for PID: \t42 ., ")
            << std::optional<qint64>(42);
        QTest::addRow("nothing after marker") << std::optional<QString>("Created for PID:") << none;
        QTest::addRow("only dots commas spaces") << std::optional<QString>("Created for PID:  .,. ,") << none;
        QTest::addRow("number then words") << std::optional<QString>("Created for PID: 12 and more") << none;
        QTest::addRow("no marker") << std::optional<QString>("Timeout will fire in 3600 secs") << none;
    }
    void createdForPID()
    {
        QFETCH(std::optional<QString>, extras);
        QFETCH(std::optional<qint64>, pid);
        QCOMPARE(makeAssertion(1, AssertionKind::backgroundTask, extras).createdForPID(), pid);
    }

    void blockers_data()
    {
        using K = AssertionKind;
        QTest::addColumn<QList<qint64>>("pids");
        QTest::addColumn<QList<int>>("kinds");
        QTest::addColumn<QList<qint64>>("idle");
        QTest::addColumn<QList<qint64>>("system");
        QTest::addColumn<QList<qint64>>("display");
        QTest::addColumn<QList<qint64>>("nonBlocking");
        using L = QList<qint64>;
        using KL = QList<int>;
        QTest::addRow("empty") << L{} << KL{} << L{} << L{} << L{} << L{};
        QTest::addRow("system and idle of one pid: idle left out")
            << L{88, 88} << KL{K::preventSystemSleep, K::preventUserIdleSystemSleep} << L{88} << L{88}
            << L{88} << L{};
        QTest::addRow("system and idle of two pids: both idle blockers")
            << L{88, 89} << KL{K::preventSystemSleep, K::preventUserIdleSystemSleep} << L{88, 89} << L{88}
            << L{88} << L{};
        QTest::addRow("legacy pair behaves like modern pair")
            << L{5, 5} << KL{K::noIdleSleepLegacy, K::denySystemSleepLegacy} << L{5} << L{5} << L{5} << L{};
        QTest::addRow("display assertion blocks idle too")
            << L{7} << KL{K::preventUserIdleDisplaySleep} << L{7} << L{} << L{7} << L{};
        QTest::addRow("display assertion kept beside system of same pid")
            << L{7, 7} << KL{K::preventUserIdleDisplaySleep, K::preventSystemSleep} << L{7, 7} << L{7}
            << L{7, 7} << L{};
        QTest::addRow("two idle assertions of one pid both listed")
            << L{3, 3} << KL{K::preventUserIdleSystemSleep, K::backgroundTask} << L{3, 3} << L{} << L{}
            << L{};
        QTest::addRow("non-blocking kinds only in their own list")
            << L{1, 2, 3, 4} << KL{K::userIsActive, K::preventDiskIdle, K::externalMedia, K::other} << L{}
            << L{} << L{} << L{1, 2, 3, 4};
    }
    void blockers()
    {
        QFETCH(QList<qint64>, pids);
        QFETCH(QList<int>, kinds);
        QFETCH(QList<qint64>, idle);
        QFETCH(QList<qint64>, system);
        QFETCH(QList<qint64>, display);
        QFETCH(QList<qint64>, nonBlocking);
        AssertionsSnapshot snapshot;
        for (qsizetype i = 0; i < pids.size(); ++i) {
            const auto c = AssertionKind::Case(kinds[i]);
            snapshot.assertions.append(
                makeAssertion(pids[i], c == AssertionKind::other ? AssertionKind::makeOther("Odd") : c));
        }
        QCOMPARE(pidsOf(snapshot.blockers(SleepKind::idleSystem)), idle);
        QCOMPARE(pidsOf(snapshot.blockers(SleepKind::system)), system);
        QCOMPARE(pidsOf(snapshot.blockers(SleepKind::display)), display);
        QCOMPARE(pidsOf(snapshot.nonBlockingAssertions()), nonBlocking);
    }

    void restartSeverities()
    {
        QCOMPARE(restartSeverityFromRawValue(3), RestartSeverity::likely);
        QCOMPARE(restartSeverityFromRawValue(1), RestartSeverity::info);
        for (int outside : {-1, 0, 4})
            QCOMPARE(restartSeverityFromRawValue(outside), std::nullopt);
        QVERIFY(RestartSeverity::info < RestartSeverity::possible &&
                RestartSeverity::possible < RestartSeverity::likely);
        QVERIFY(RestartSeverity::likely >= RestartSeverity::info &&
                !(RestartSeverity::info > RestartSeverity::info));
    }

    void restartFilters()
    {
        const auto finding = [](RestartSeverity severity, const QString &title) {
            return RestartFinding{QUuid::createUuid(), severity, "s", title, "d", std::nullopt};
        };
        RestartAnalysis analysis;
        QVERIFY(analysis.likelyFindings().isEmpty() && analysis.possibleFindings().isEmpty());
        analysis.findings = {finding(RestartSeverity::info, "i")};
        QVERIFY(analysis.likelyFindings().isEmpty() && analysis.possibleFindings().isEmpty());
        analysis.findings = {finding(RestartSeverity::possible, "p1"), finding(RestartSeverity::likely, "l1"),
                             finding(RestartSeverity::info, "i"), finding(RestartSeverity::likely, "l2"),
                             finding(RestartSeverity::possible, "p2")};
        const auto titles = [](const QList<RestartFinding> &list) {
            QStringList t;
            for (const RestartFinding &f : list)
                t.append(f.title);
            return t;
        };
        QCOMPARE(titles(analysis.likelyFindings()), (QStringList{"l1", "l2"}));
        QCOMPARE(titles(analysis.possibleFindings()), (QStringList{"p1", "p2"}));
    }
};

QTEST_APPLESS_MAIN(TestModel)
#include "tst_model.moc"
