#include "FakeToolDir.h"
#include "Fixtures.h"
#include "pmset/PMSetService.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QSet>
#include <QtTest>
#include <limits>

using namespace lullwick;

namespace {

constexpr qsizetype fourMiB = 4 * 1024 * 1024;
const QByteArray notUtf8 = "Listed by owning process:\n   pid 1(\xff): [b] t W\n";

template <typename T> const T *valueOf(const PMSetService::Result<T> &result)
{
    return std::get_if<T>(&result);
}
template <typename T> const PMSetError *errorOf(const PMSetService::Result<T> &result)
{
    return std::get_if<PMSetError>(&result);
}

} // namespace

class TestPMSetService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failedRunDescribesItself_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<QString>("description");

        QTest::addRow("one error line is appended unchanged")
            << 1 << QByteArray("boom\n") << QStringLiteral("pmset exited with status 1.\n\nboom\n");
        QTest::addRow("silent error stream ends after the status")
            << 2 << QByteArray() << QStringLiteral("pmset exited with status 2.");
        QTest::addRow("undecodable error text counts as none")
            << 1 << QByteArray("bad \xfe\n") << QStringLiteral("pmset exited with status 1.");
        QTest::addRow("4 MiB of error text arrives whole")
            << 1 << QByteArray(fourMiB, 'e') << "pmset exited with status 1.\n\n" + QString(fourMiB, u'e');
    }
    void failedRunDescribesItself()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, standardError);
        QFETCH(QString, description);
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        PMSetService service(fake.pmsetPath(), fake.psPath());
        // Standard output must be dropped, however large, whichever call fails.
        for (const QString &call : {QStringLiteral("assertions"), QStringLiteral("settings")}) {
            fake.setExitStatus(call, status);
            fake.setErrorOutput(call, standardError);
            fake.setOutput(call, Fixtures::generatedAssertions(40000));
        }
        const PMSetService::Result<AssertionsSnapshot> assertions = service.fetchAssertions().result();
        const PMSetService::Result<QString> settings = service.fetchSettings().result();
        for (const PMSetError *error : {errorOf(assertions), errorOf(settings)}) {
            QVERIFY(error);
            QCOMPARE(error->errorCase(), PMSetError::nonZeroExit);
            QCOMPARE(error->exitStatus(), status);
            QVERIFY(error->errorDescription() == description); // QCOMPARE would print 4 MiB
        }
    }

    void missingToolsAreHandled()
    {
        FakeToolDir fake;
        PMSetService service(fake.path() + "/missing/pmset", fake.path() + "/missing/ps");
        const PMSetService::Result<QString> result = service.fetchSettings().result();
        const PMSetError *error = errorOf(result);
        QVERIFY(error);
        QCOMPARE(error->errorCase(), PMSetError::launchFailed);
        const QString prefix = QStringLiteral("Couldn't run pmset: ");
        QVERIFY2(error->errorDescription().startsWith(prefix), qPrintable(error->errorDescription()));
        QVERIFY(error->errorDescription().size() > prefix.size());
        QVERIFY(!service.resolveProcessName(402).result().has_value());
    }

    void settingsComeBackUnchanged_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("expected");
        QTest::addRow("captured settings")
            << Fixtures::read("settings-typical.txt") << Fixtures::readText("settings-typical.txt");
        QTest::addRow("surrounding blanks kept")
            << QByteArray("\n  standby 1  \n\n") << "\n  standby 1  \n\n";
        QTest::addRow("not UTF-8 becomes empty") << notUtf8 << QString();
    }
    void settingsComeBackUnchanged()
    {
        QFETCH(QByteArray, output);
        FakeToolDir fake;
        fake.setOutput(QStringLiteral("settings"), output);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const PMSetService::Result<QString> result = service.fetchSettings().result();
        QVERIFY(valueOf(result));
        QTEST(*valueOf(result), "expected");
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QCOMPARE(calls.size(), 1);
        QCOMPARE(calls[0].call, "settings"); // the fake saw exactly "-g"
    }

    void assertionsAreParsedAndStamped_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<QString>("rawOutput");
        QTest::addColumn<int>("count");

        const QByteArray generated = Fixtures::generatedAssertions(40000);
        QVERIFY(generated.size() >= fourMiB);
        QTest::addRow("captured listing") << Fixtures::read("assertions-typical.txt") << QByteArray()
                                          << Fixtures::readText("assertions-typical.txt") << 5;
        QTest::addRow("4 MiB on each stream at once")
            << generated << QByteArray(fourMiB, '!') << QString::fromLatin1(generated) << 40000;
        QTest::addRow("not UTF-8 becomes an empty reading") << notUtf8 << QByteArray() << QString() << 0;
    }
    void assertionsAreParsedAndStamped()
    {
        QFETCH(QByteArray, output);
        QFETCH(QByteArray, standardError);
        FakeToolDir fake;
        fake.setOutput(QStringLiteral("assertions"), output);
        fake.setErrorOutput(QStringLiteral("assertions"), standardError);
        PMSetService service(fake.pmsetPath(), fake.psPath());

        const QDateTime before = QDateTime::currentDateTimeUtc();
        const PMSetService::Result<AssertionsSnapshot> result = service.fetchAssertions().result();
        const QDateTime after = QDateTime::currentDateTimeUtc();
        const AssertionsSnapshot *snapshot = valueOf(result);
        QVERIFY(snapshot);
        QVERIFY(before <= snapshot->capturedAt && snapshot->capturedAt <= after);
        QFETCH(QString, rawOutput);
        QVERIFY(snapshot->rawOutput == rawOutput);
        QTEST(int(snapshot->assertions.size()), "count");
        QCOMPARE(fake.pmsetCalls().value(0).call, "assertions");
    }

    void resolvesProcessName_data()
    {
        QTest::addColumn<QByteArray>("psOutput");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QString>("name");

        QTest::addRow("full path gives the executable")
            << QByteArray("/usr/sbin/coreaudiod\n") << true << "coreaudiod";
        QTest::addRow("name without slash is whole, trimmed")
            << QByteArray(" coreaudiod\t\n") << true << "coreaudiod";
        QTest::addRow("inner spaces kept")
            << QByteArray("  Google Chrome Helper \n") << true << "Google Chrome Helper";
        QTest::addRow("dot in bundle executable kept")
            << QByteArray("/Applications/Zoom.app/Contents/MacOS/zoom.us\n") << true << "zoom.us";
        QTest::addRow("trailing slash ignored") << QByteArray("/usr/bin/x/\n") << true << "x";
        QTest::addRow("UTF-8 name decoded")
            << QString("/Applications/Café.app/Café\n").toUtf8() << true << "Café";
        QTest::addRow("blanks and line breaks only") << QByteArray("  \n\t\n") << false << QString();
        QTest::addRow("no output") << QByteArray() << false << QString();
        QTest::addRow("not UTF-8") << QByteArray("/usr/bin/\xff\n") << false << QString();
    }
    void resolvesProcessName()
    {
        QFETCH(QByteArray, psOutput);
        QFETCH(bool, found);
        FakeToolDir fake;
        fake.setPsOutput(psOutput);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const std::optional<QString> name = service.resolveProcessName(402).result();
        QCOMPARE(name.has_value(), found);
        if (found)
            QTEST(*name, "name");
        QCOMPARE(fake.psQueries(), QList<qint64>{402});
    }

    void asksPsForThePidInDecimal_data()
    {
        QTest::addColumn<qint64>("pid");
        QTest::addColumn<bool>("found");
        QTest::addRow("known pid") << qint64(402) << true;
        QTest::addRow("unknown pid") << qint64(77) << false;
        QTest::addRow("negative pid") << qint64(-1) << false;
        QTest::addRow("largest 64-bit pid") << std::numeric_limits<qint64>::max() << false;
    }
    void asksPsForThePidInDecimal()
    {
        QFETCH(qint64, pid);
        FakeToolDir fake;
        fake.setProcessTable({{402, QStringLiteral("/usr/sbin/coreaudiod")}});
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const std::optional<QString> name = service.resolveProcessName(pid).result();
        QTEST(name.has_value(), "found");
        if (name)
            QCOMPARE(*name, "coreaudiod");
        QCOMPARE(fake.psQueries(), QList<qint64>{pid});
    }

    void oneInstanceRunsFetchesInTurn()
    {
        FakeToolDir fake;
        fake.setOutputFromFixture(QStringLiteral("assertions"), QStringLiteral("assertions-typical.txt"));
        fake.setSleep(QStringLiteral("assertions"), 0.1);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        QFuture<PMSetService::Result<AssertionsSnapshot>> first = service.fetchAssertions();
        QFuture<PMSetService::Result<AssertionsSnapshot>> second = service.fetchAssertions();
        const PMSetService::Result<AssertionsSnapshot> a = first.result(), b = second.result();
        QVERIFY(valueOf(a) && valueOf(b));

        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QCOMPARE(calls.size(), 2);
        QVERIFY(calls[0].endNs > 0 && calls[1].startNs >= calls[0].endNs);
        QVERIFY(valueOf(a)->capturedAt < valueOf(b)->capturedAt);
        QSet<QUuid> ids;
        for (const AssertionsSnapshot *snapshot : {valueOf(a), valueOf(b)})
            for (const Assertion &assertion : snapshot->assertions)
                ids.insert(assertion.id);
        QCOMPARE(ids.size(), 10);
        QVERIFY(!ids.contains(QUuid()));
    }

    void instancesRunIndependently_data()
    {
        QTest::addColumn<bool>("sameInstance");
        QTest::addRow("two instances overlap") << false;
        QTest::addRow("one instance queues") << true;
    }
    void instancesRunIndependently()
    {
        QFETCH(bool, sameInstance);
        FakeToolDir fakeA, fakeB;
        for (const FakeToolDir *fake : {&fakeA, &fakeB})
            fake->setSleep(QStringLiteral("settings"), 0.3);
        PMSetService a(fakeA.pmsetPath(), fakeA.psPath());
        PMSetService b(fakeB.pmsetPath(), fakeB.psPath());
        PMSetService &other = sameInstance ? a : b;

        QElapsedTimer timer;
        timer.start();
        QFuture<PMSetService::Result<QString>> first = a.fetchSettings();
        QFuture<PMSetService::Result<QString>> second = other.fetchSettings();
        first.waitForFinished();
        second.waitForFinished();
        const qint64 elapsed = timer.elapsed();
        qInfo("two 0.3 s runs took %lld ms", elapsed);

        const QList<FakeToolDir::Call> calls = fakeA.pmsetCalls() + fakeB.pmsetCalls();
        QCOMPARE(calls.size(), 2);
        const bool overlap = calls[0].startNs < calls[1].endNs && calls[1].startNs < calls[0].endNs;
        QCOMPARE(overlap, !sameInstance);
        if (sameInstance)
            QVERIFY(elapsed >= 600);
        else
            QVERIFY(elapsed < 550);
    }

    void callsCompleteInRequestOrder()
    {
        FakeToolDir fake;
        fake.setSleep(QStringLiteral("assertions"), 0.2);
        fake.setProcessTable({{7, QStringLiteral("/sbin/launchd")}});
        PMSetService service(fake.pmsetPath(), fake.psPath());

        // Continuations run on the thread that finishes each call, so no event loop is needed.
        QMutex mutex;
        QStringList finished;
        const auto note = [&](const QString &what) {
            const QMutexLocker lock(&mutex);
            finished.append(what);
        };
        QFuture<void> assertions = service.fetchAssertions().then(
            [&](const PMSetService::Result<AssertionsSnapshot> &) { note(QStringLiteral("assertions")); });
        QFuture<void> settings = service.fetchSettings().then(
            [&](const PMSetService::Result<QString> &) { note(QStringLiteral("settings")); });
        QFuture<void> name = service.resolveProcessName(7).then(
            [&](const std::optional<QString> &) { note(QStringLiteral("ps")); });
        assertions.waitForFinished();
        settings.waitForFinished();
        name.waitForFinished();

        QCOMPARE(finished, (QStringList{"assertions", "settings", "ps"}));
    }
};

QTEST_GUILESS_MAIN(TestPMSetService)
#include "tst_pmsetservice.moc"
