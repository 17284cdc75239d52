#include "FakeToolDir.h"
#include "Fixtures.h"
#include "pmset/PMSetService.h"

#include <QElapsedTimer>
#include <QSet>
#include <QtTest>

using namespace lullwick;

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
    }
    void failedRunDescribesItself()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, standardError);
        FakeToolDir fake;
        // Standard output must be dropped, whichever call fails.
        for (const QString &call : {QStringLiteral("assertions"), QStringLiteral("settings")}) {
            fake.setExitStatus(call, status);
            fake.setErrorOutput(call, standardError);
            fake.setOutputFromFixture(call, QStringLiteral("assertions-typical.txt"));
        }
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const PMSetService::Result<AssertionsSnapshot> assertions = service.fetchAssertions().result();
        const PMSetService::Result<QString> settings = service.fetchSettings().result();
        for (const PMSetError *error :
             {std::get_if<PMSetError>(&assertions), std::get_if<PMSetError>(&settings)}) {
            QVERIFY(error);
            QCOMPARE(error->errorCase(), PMSetError::nonZeroExit);
            QCOMPARE(error->exitStatus(), status);
            QTEST(error->errorDescription(), "description");
        }
    }

    void missingToolsAreReported()
    {
        FakeToolDir fake;
        PMSetService service(fake.path() + "/missing/pmset", fake.path() + "/missing/ps");
        const PMSetService::Result<QString> result = service.fetchSettings().result();
        const PMSetError *error = std::get_if<PMSetError>(&result);
        QVERIFY(error);
        QCOMPARE(error->errorCase(), PMSetError::launchFailed);
        const QString prefix = QStringLiteral("Couldn't run pmset: ");
        QVERIFY2(error->errorDescription().startsWith(prefix), qPrintable(error->errorDescription()));
        QVERIFY(error->errorDescription().size() > prefix.size());
        QVERIFY(!service.resolveProcessName(402).result().has_value());
    }

    void settingsComeBackUnchanged()
    {
        // Surrounding blanks included: the text is handed over as pmset wrote it.
        const QByteArray output = "\n" + Fixtures::read("settings-typical.txt") + "  \n\n";
        FakeToolDir fake;
        fake.setOutput(QStringLiteral("settings"), output);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const PMSetService::Result<QString> result = service.fetchSettings().result();
        QVERIFY(std::holds_alternative<QString>(result));
        QCOMPARE(std::get<QString>(result), QString::fromUtf8(output));
        QCOMPARE(fake.pmsetCalls().value(0).call, "settings"); // the fake saw exactly "-g"
    }

    void undecodableOutputReadsAsEmpty()
    {
        FakeToolDir fake;
        const QByteArray notUtf8 = "Listed by owning process:\n   pid 1(\xff): [b] t W\n";
        fake.setOutput(QStringLiteral("settings"), notUtf8);
        fake.setOutput(QStringLiteral("assertions"), notUtf8);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const PMSetService::Result<QString> settings = service.fetchSettings().result();
        const PMSetService::Result<AssertionsSnapshot> assertions = service.fetchAssertions().result();
        const AssertionsSnapshot *snapshot = std::get_if<AssertionsSnapshot>(&assertions);
        QVERIFY(std::holds_alternative<QString>(settings) && snapshot);
        QCOMPARE(std::get<QString>(settings), QString());
        QCOMPARE(snapshot->rawOutput, QString());
        QVERIFY(snapshot->assertions.isEmpty());
    }

    // A reader that drains one pipe at a time deadlocks once the other pipe's buffer fills.
    void drainsFourMiBOnBothStreamsAtOnce()
    {
        constexpr qsizetype fourMiB = 4 * 1024 * 1024;
        const QByteArray output = Fixtures::generatedAssertions(40000);
        QVERIFY(output.size() >= fourMiB);
        FakeToolDir fake;
        fake.setOutput(QStringLiteral("assertions"), output);
        fake.setErrorOutput(QStringLiteral("assertions"), QByteArray(fourMiB, '!'));
        PMSetService service(fake.pmsetPath(), fake.psPath());

        const QDateTime before = QDateTime::currentDateTimeUtc();
        const PMSetService::Result<AssertionsSnapshot> result = service.fetchAssertions().result();
        const QDateTime after = QDateTime::currentDateTimeUtc();
        const AssertionsSnapshot *snapshot = std::get_if<AssertionsSnapshot>(&result);
        QVERIFY(snapshot);
        QVERIFY(before <= snapshot->capturedAt && snapshot->capturedAt <= after);
        QVERIFY(snapshot->rawOutput == QString::fromLatin1(output)); // QCOMPARE would print 4 MiB
        QCOMPARE(snapshot->assertions.size(), 40000);
        QCOMPARE(fake.pmsetCalls().value(0).call, "assertions");
    }

    void resolvesProcessName_data()
    {
        QTest::addColumn<QByteArray>("psOutput");
        QTest::addColumn<QString>("name"); // null: nothing found
        QTest::addRow("full path gives the executable")
            << QByteArray("/usr/sbin/coreaudiod\n") << "coreaudiod";
        QTest::addRow("bare name is whole, trimmed")
            << QByteArray(" Google Chrome Helper\t\n") << "Google Chrome Helper";
        QTest::addRow("trailing slash ignored") << QByteArray("/usr/bin/x/\n") << "x";
        QTest::addRow("blanks and line breaks only") << QByteArray("  \n\t\n") << QString();
        QTest::addRow("no output") << QByteArray() << QString();
        QTest::addRow("not UTF-8") << QByteArray("/usr/bin/\xff\n") << QString();
    }
    void resolvesProcessName()
    {
        QFETCH(QByteArray, psOutput);
        QFETCH(QString, name);
        FakeToolDir fake;
        fake.setPsOutput(psOutput);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const std::optional<QString> resolved = service.resolveProcessName(402).result();
        QCOMPARE(resolved.has_value(), !name.isNull());
        if (resolved)
            QCOMPARE(*resolved, name);
        QCOMPARE(fake.psQueries(), QList<qint64>{402});
    }

    void oneInstanceRunsFetchesInTurn()
    {
        FakeToolDir fake;
        fake.setOutputFromFixture(QStringLiteral("assertions"), QStringLiteral("assertions-typical.txt"));
        fake.setSleep(QStringLiteral("assertions"), 0.1);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        QFuture<PMSetService::Result<AssertionsSnapshot>> first = service.fetchAssertions();
        QFuture<PMSetService::Result<AssertionsSnapshot>> second = service.fetchAssertions();
        const PMSetService::Result<AssertionsSnapshot> resultA = first.result(), resultB = second.result();
        const auto *a = std::get_if<AssertionsSnapshot>(&resultA),
                   *b = std::get_if<AssertionsSnapshot>(&resultB);
        QVERIFY(a && b);
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QCOMPARE(calls.size(), 2);
        QVERIFY(calls[0].endNs > 0 && calls[1].startNs >= calls[0].endNs);
        QVERIFY(a->capturedAt < b->capturedAt);
        QSet<QUuid> ids;
        for (const AssertionsSnapshot *snapshot : {a, b})
            for (const Assertion &assertion : snapshot->assertions)
                ids.insert(assertion.id);
        QCOMPARE(ids.size(), 10); // five in each listing
        QVERIFY(!ids.contains(QUuid()));
    }

    void twoInstancesRunSideBySide()
    {
        FakeToolDir fakeA, fakeB;
        fakeA.setSleep(QStringLiteral("settings"), 0.3);
        fakeB.setSleep(QStringLiteral("settings"), 0.3);
        PMSetService a(fakeA.pmsetPath(), fakeA.psPath());
        PMSetService b(fakeB.pmsetPath(), fakeB.psPath());
        QElapsedTimer timer;
        timer.start();
        QFuture<PMSetService::Result<QString>> first = a.fetchSettings();
        QFuture<PMSetService::Result<QString>> second = b.fetchSettings();
        first.waitForFinished();
        second.waitForFinished();
        const qint64 elapsed = timer.elapsed();
        const QList<FakeToolDir::Call> calls = fakeA.pmsetCalls() + fakeB.pmsetCalls();
        QCOMPARE(calls.size(), 2);
        QVERIFY(calls[0].startNs < calls[1].endNs && calls[1].startNs < calls[0].endNs);
        QVERIFY2(elapsed < 550, qPrintable(QString::number(elapsed) + " ms for two 0.3 s runs"));
    }
};

QTEST_GUILESS_MAIN(TestPMSetService)
#include "tst_pmsetservice.moc"
