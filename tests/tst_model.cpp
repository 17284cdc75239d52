#include "model/AssertionsSnapshot.h"
#include "model/RestartAnalysis.h"
#include "model/TextRules.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

class TestModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // One row per rule of the strict integer reader.
    void integersAreStrict_data()
    {
        using N = std::optional<qint64>;
        QTest::addColumn<QString>("text");
        QTest::addColumn<N>("value");
        QTest::addRow("leading plus") << "+3" << N(3);
        QTest::addRow("leading minus") << "-2" << N(-2);
        QTest::addRow("smallest is reachable")
            << "-9223372036854775808" << N(std::numeric_limits<qint64>::min());
        QTest::addRow("one past largest") << "9223372036854775808" << N();
        QTest::addRow("sign alone") << "-" << N();
        QTest::addRow("trailing letter") << "3x" << N();
        QTest::addRow("surrounding space") << " 12" << N();
        QTest::addRow("arabic-indic digits") << QString::fromUtf8("\u0661\u0662") << N();
    }
    void integersAreStrict()
    {
        QFETCH(QString, text);
        QTEST(text::toInt64(text), "value");
    }

    // Tabs and every Unicode space separator are blanks; line breaks are not.
    void blanks()
    {
        QCOMPARE(text::trimmed(u" \t\u00a0a b\u3000"), u"a b");
        QCOMPARE(text::trimmed(u"\nx\r"), u"\nx\r");
    }

    void controlCharactersEscaped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("kept");
        QTest::addColumn<QString>("escaped");
        QTest::addRow("C0 and DEL escaped; tab and line feed kept when asked")
            << u"\x1b[2Ja\tb\nc\x01\x1f d\x7f~"_s << u"\t\n"_s << u"\\x1b[2Ja\tb\nc\\x01\\x1f d\\x7f~"_s;
        QTest::addRow("tab and line feed escaped too when not kept")
            << u"a\tb\n"_s << QString() << u"a\\x09b\\x0a"_s;
        QTest::addRow("C1 escaped; the letters beside it kept")
            << u"\u0080\u0085\u009b\u009f\u00a0é東"_s << QString() << u"\\x80\\x85\\x9b\\x9f\u00a0é東"_s;
    }
    void controlCharactersEscaped()
    {
        QFETCH(QString, text);
        QFETCH(QString, kept);
        QTEST(text::escapedControls(text, kept), "escaped");
    }

    // Every pmset word: the kinds of sleep it holds off, and the name scripts see in the JSON
    // report (the word with a small first letter unless given).
    void everyTypeWord_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("blocks");
        QTest::addColumn<QString>("name");
        const auto rows = [](const char *blocks, std::initializer_list<const char *> words,
                             const char *name = {}) {
            for (const char *word : words) {
                const QString w = QString::fromLatin1(word);
                QTest::addRow("%s", *word ? word : "(empty)")
                    << w << QString::fromLatin1(blocks)
                    << (name ? QString::fromLatin1(name) : w.first(1).toLower() + w.sliced(1));
            }
        };
        rows("idle",
             {"PreventUserIdleSystemSleep", "SystemIsActive", "BackgroundTask", "ApplePushServiceTask",
              "InteractivePushServiceTask", "SoftwareUpdateTask", "MaintenanceWake", "NetworkClientActive"});
        rows("idle display", {"PreventUserIdleDisplaySleep"});
        rows("idle system display", {"PreventSystemSleep"});
        rows("", {"PreventDiskIdle", "UserIsActive", "ExternalMedia", "DisplayWake", "RequiresDisplayAudio",
                  "AwakeOnReservePower", "InternalPreventSleep", "InternalPreventDisplaySleep"});
        rows("idle", {"NoIdleSleepAssertion"}, "noIdleSleepLegacy");
        rows("idle display", {"NoDisplaySleepAssertion"}, "noDisplaySleepLegacy");
        rows("idle system display", {"DenySystemSleep"}, "denySystemSleepLegacy");
        rows("", {"preventuseridlesystemsleep", ""}, "other"); // the letter case counts
    }
    void everyTypeWord()
    {
        QFETCH(QString, word);
        const AssertionKind kind = AssertionKind::fromRawType(word);
        QCOMPARE(kind.typeWord(), word);
        QStringList blocks;
        for (SleepKind sleep : allSleepKinds) {
            if (kind.blockedSleepKinds().contains(sleep))
                blocks << QStringList{u"idle"_s, u"system"_s, u"display"_s}[int(sleep)];
        }
        QTEST(blocks.join(u' '), "blocks");
        QTEST(kind.name(), "name");
    }

    void otherKindsCompareByTheirWord()
    {
        const auto other = [](const QString &word) { return AssertionKind::makeOther(word); };
        QCOMPARE(other("Foo"), other("Foo"));
        QVERIFY(other("Foo") != other("Bar"));
        QVERIFY(other("PreventSystemSleep") != AssertionKind::preventSystemSleep);
        const QSet<AssertionKind> set{other("Foo"), other("Foo"), other("Bar"), other("PreventSystemSleep"),
                                      AssertionKind::preventSystemSleep};
        QCOMPARE(set.size(), 4);
    }

    void createdForPID_data()
    {
        using N = std::optional<qint64>;
        QTest::addColumn<QString>("extras"); // null: absent
        QTest::addColumn<N>("pid");
        QTest::addRow("absent extras") << QString() << N();
        QTest::addRow("final full stop") << "Created for PID: 1069." << N(1069);
        QTest::addRow("first line not a number") << "Created for PID: abc\nCreated for PID: 77," << N(77);
        QTest::addRow("marker mid-line") << "Timeout x\nproxy Created for PID: \t42 ., " << N(42);
        QTest::addRow("number then words") << "Created for PID: 12 and more" << N();
    }
    void createdForPID()
    {
        QFETCH(QString, extras);
        Assertion a;
        if (!extras.isNull())
            a.extras = extras;
        QTEST(a.createdForPID(), "pid");
    }

    // Assertions as "pid TypeWord" items; results as "idle | system | display | non-blocking" PIDs.
    void blockers_data()
    {
        QTest::addColumn<QString>("assertions");
        QTest::addColumn<QString>("lists");
        QTest::newRow("system and idle of one pid: idle left out")
            << u"88 PreventSystemSleep, 88 PreventUserIdleSystemSleep"_s << u"88 | 88 | 88 | "_s;
        QTest::newRow("system and idle of two pids: both idle blockers")
            << u"88 PreventSystemSleep, 89 PreventUserIdleSystemSleep"_s << u"88,89 | 88 | 88 | "_s;
        QTest::newRow("legacy pair behaves like modern pair")
            << u"5 NoIdleSleepAssertion, 5 DenySystemSleep"_s << u"5 | 5 | 5 | "_s;
        QTest::newRow("display assertion kept beside system of same pid")
            << u"7 PreventUserIdleDisplaySleep, 7 PreventSystemSleep"_s << u"7,7 | 7 | 7,7 | "_s;
        QTest::newRow("two idle assertions of one pid both listed")
            << u"3 PreventUserIdleSystemSleep, 3 BackgroundTask"_s << u"3,3 |  |  | "_s;
        QTest::newRow("non-blocking kinds only in their own list")
            << u"1 UserIsActive, 2 PreventDiskIdle, 3 ExternalMedia, 4 Odd"_s << u" |  |  | 1,2,3,4"_s;
    }
    void blockers()
    {
        QFETCH(QString, assertions);
        AssertionsSnapshot snapshot;
        for (const QString &item : assertions.split(QStringLiteral(", "))) {
            Assertion a;
            a.pid = item.section(u' ', 0, 0).toLongLong();
            a.kind = AssertionKind::fromRawType(item.section(u' ', 1));
            snapshot.assertions.append(a);
        }
        QStringList lists;
        for (const QList<Assertion> &list :
             {snapshot.blockers(SleepKind::idleSystem), snapshot.blockers(SleepKind::system),
              snapshot.blockers(SleepKind::display), snapshot.nonBlockingAssertions()}) {
            QStringList pidTexts;
            for (const Assertion &a : list)
                pidTexts << QString::number(a.pid);
            lists << pidTexts.join(u',');
        }
        QTEST(lists.join(" | "), "lists");
    }
};

QTEST_APPLESS_MAIN(TestModel)
#include "tst_model.moc"
