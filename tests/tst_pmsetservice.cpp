#include "FakeToolDir.h"
#include "Fixtures.h"
#include "platform/ChildProcess.h"
#include "pmset/PMSetService.h"

#include <QtTest>
#include <thread>

using namespace lullwick;

class TestPMSetService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Both calls go through one runner: each row plays both and expects the same from each, the
    // text as pmset wrote it or the error's description.
    void runEndsAsDescribed_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<int>("status"); // negative: pmset kills itself with that signal
        QTest::addColumn<QString>("result");
        const QByteArray listing = Fixtures::read("assertions-typical.txt");
        QTest::addRow("output comes back unchanged")
            << "\n" + listing + "  \n\n"
            << QByteArray("warning\n") << 0 << QString::fromUtf8("\n" + listing + "  \n\n");
        QTest::addRow("output cut off inside a character reads as empty")
            << listing + "\xc3" << QByteArray() << 0 << QString();
        QTest::addRow("one error line is appended unchanged")
            << listing << QByteArray("boom\n") << 1
            << QStringLiteral("pmset exited with status 1.\n\nboom\n");
        QTest::addRow("silent error stream ends after the status")
            << listing << QByteArray() << 2 << QStringLiteral("pmset exited with status 2.");
        QTest::addRow("undecodable error text counts as none")
            << listing << QByteArray("bad \xfe\n") << 1 << QStringLiteral("pmset exited with status 1.");
        QTest::addRow("killed by a signal after writing its output")
            << listing << QByteArray() << -9 << QStringLiteral("pmset exited with status 9.");
        // A reader that drains one pipe at a time deadlocks once the other pipe's buffer fills.
        const QByteArray fourMiB = Fixtures::generatedAssertions(40'000);
        QTest::addRow("four MiB on both streams at once")
            << fourMiB << QByteArray(fourMiB.size(), '!') << 0 << QString::fromLatin1(fourMiB);
    }
    void runEndsAsDescribed()
    {
        QFETCH(QByteArray, output);
        QFETCH(QByteArray, standardError);
        QFETCH(int, status);
        FakeToolDir fake;
        for (const QString &call : {QStringLiteral("assertions"), QStringLiteral("settings")}) {
            fake.setOutput(call, output);
            fake.setErrorOutput(call, standardError);
            if (status < 0)
                fake.setKilledBy(call, -status);
            else
                fake.setExitStatus(call, status);
        }
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const PMSetService::Result<AssertionsSnapshot> assertions = service.fetchAssertions().result();
        const PMSetService::Result<QString> settings = service.fetchSettings().result();
        const auto *snapshot = std::get_if<AssertionsSnapshot>(&assertions);
        QTEST(snapshot ? snapshot->rawOutput : std::get<PMSetError>(assertions).errorDescription(), "result");
        const auto *text = std::get_if<QString>(&settings);
        QTEST(text ? *text : std::get<PMSetError>(settings).errorDescription(), "result");
    }

    void missingToolsAreReported()
    {
        FakeToolDir fake;
        PMSetService service(fake.path() + "/missing/pmset", fake.path() + "/missing/ps");
        // The fixed words, then the platform's reason.
        const QString description = std::get<PMSetError>(service.fetchSettings().result()).errorDescription();
        QVERIFY2(description.startsWith("Couldn't run pmset: ") && description.size() > 20,
                 qPrintable(description));
        QVERIFY(!service.resolveProcessName(402).result());
    }

    void resolvesProcessName_data()
    {
        QTest::addColumn<QByteArray>("psOutput");
        QTest::addColumn<QString>("name");
        QTest::addRow("bare name is whole, trimmed")
            << QByteArray(" Google Chrome Helper\t\n") << "Google Chrome Helper";
        QTest::addRow("trailing slash ignored") << QByteArray("/usr/bin/x/\n") << "x";
        QTest::addRow("blanks and line breaks only") << QByteArray("  \n\t\n") << "<none>";
        QTest::addRow("not UTF-8") << QByteArray("/usr/bin/\xff\n") << "<none>";
    }
    void resolvesProcessName()
    {
        QFETCH(QByteArray, psOutput);
        FakeToolDir fake;
        fake.setPsOutput(psOutput);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        QTEST(service.resolveProcessName(402).result().value_or("<none>"), "name");
    }

    // Also: each reading is stamped after its own pmset run has ended, and has ids of its own.
    void oneInstanceRunsFetchesInTurn()
    {
        FakeToolDir fake;
        fake.setOutputFromFixture("assertions", "assertions-typical.txt");
        fake.setSleep("assertions", 0.1);
        PMSetService service(fake.pmsetPath(), fake.psPath());
        const QList<QFuture<PMSetService::Result<AssertionsSnapshot>>> runs{service.fetchAssertions(),
                                                                            service.fetchAssertions()};
        const AssertionsSnapshot snapshots[]{std::get<AssertionsSnapshot>(runs[0].result()),
                                             std::get<AssertionsSnapshot>(runs[1].result())};
        const QList<FakeToolDir::Call> calls = fake.pmsetCalls();
        QVERIFY(calls.size() == 2 && calls[0].endNs > 0 && calls[1].startNs >= calls[0].endNs);
        QSet<QUuid> ids;
        for (qsizetype i = 0; i < 2; ++i) {
            QVERIFY(snapshots[i].capturedAt.toMSecsSinceEpoch() >= calls[i].endNs / 1'000'000);
            for (const Assertion &a : snapshots[i].assertions)
                ids.insert(a.id);
        }
        QCOMPARE(ids.size(), 10); // five in each listing
    }

    void twoInstancesRunSideBySide()
    {
        FakeToolDir fakeA, fakeB;
        fakeA.hold("settings");
        fakeB.hold("settings");
        PMSetService a(fakeA.pmsetPath(), fakeA.psPath());
        PMSetService b(fakeB.pmsetPath(), fakeB.psPath());
        QList<QFuture<PMSetService::Result<QString>>> runs{a.fetchSettings(), b.fetchSettings()};
        // Each run is held until both have started, which only works if neither waits for the other.
        QVERIFY(fakeA.waitForStart("settings") && fakeB.waitForStart("settings"));
        fakeA.release("settings");
        fakeB.release("settings");
        for (auto &run : runs)
            run.waitForFinished();
        const QList<FakeToolDir::Call> calls = fakeA.pmsetCalls() + fakeB.pmsetCalls();
        QCOMPARE(calls.size(), 2);
        QVERIFY(calls[0].startNs < calls[1].endNs && calls[1].startNs < calls[0].endNs);
    }

    // A shell would expand, split or redirect these; a NUL after each printed one keeps line feeds visible.
    void argumentsArriveVerbatim()
    {
        const QStringList arguments{
            "$(echo hi); *",           QString(), "two words", "'single' \"double\" `tick`", "a\nb",
            "$HOME > out.txt | cat &", "Zoë ☕"};
        const QStringList script{"-c", "for a in \"$@\"; do printf '%s\\0' \"$a\"; done", "sh"};
        const ChildProcessResult result = ChildProcess::run(QStringLiteral("/bin/sh"), script + arguments);
        QVERIFY2(result.started, qPrintable(result.launchError));
        QCOMPARE(result.standardOutput, (arguments.join(QChar(0)) + QChar(0)).toUtf8());
    }

    // The signal that makes a child die with us follows the thread that started it, not the
    // process. A service's worker may be a thread that ends soon after its call, or a fresh pool
    // thread after the last one expired: the child must still run to its end there.
    void childOutlivesNothingButItsCall_data()
    {
        QTest::addColumn<bool>("pooled");
        QTest::addRow("on a thread that ends when the call returns") << false;
        QTest::addRow("on a pool thread that replaced an expired one") << true;
    }
    void childOutlivesNothingButItsCall()
    {
        QFETCH(bool, pooled);
        const auto call = [] {
            return ChildProcess::run(QStringLiteral("/bin/sh"), {"-c", "sleep 0.3; echo done"});
        };
        ChildProcessResult result;
        if (pooled) {
            QThreadPool pool;
            pool.setMaxThreadCount(1);
            pool.setExpiryTimeout(0); // each thread ends as soon as it has nothing to do
            QtConcurrent::run(&pool, call).waitForFinished();
            result = QtConcurrent::run(&pool, call).result();
        } else {
            std::thread([&] { result = call(); }).join();
        }
        QVERIFY2(result.started, qPrintable(result.launchError));
        QCOMPARE(result.exitStatus, 0);
        QCOMPARE(result.standardOutput, "done\n");
    }

    // "sh" is on PATH, so only a refusal keeps the marker from being written.
    void relativePathIsRefused()
    {
        QTemporaryDir dir;
        const QString marker = dir.filePath(QStringLiteral("ran"));
        const ChildProcessResult result =
            ChildProcess::run(QStringLiteral("sh"), {"-c", "touch '" + marker + "'"});
        QVERIFY(!result.started && !result.launchError.isEmpty());
        QVERIFY(!QFile::exists(marker));
    }
};

QTEST_GUILESS_MAIN(TestPMSetService)
#include "tst_pmsetservice.moc"
