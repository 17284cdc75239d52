#include "platform/ChildProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace lullwick;

class TestChildProcess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reportsWhatTheChildDid_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("exitStatus");
        QTest::addColumn<QByteArray>("standardOutput");
        QTest::addColumn<QByteArray>("standardError");

        QTest::addRow("success with both streams kept apart")
            << "printf out; printf err >&2" << 0 << QByteArray("out") << QByteArray("err");
        QTest::addRow("failure status is the child's own")
            << "printf partial; exit 3" << 3 << QByteArray("partial") << QByteArray();
        QTest::addRow("high status survives")
            << "printf oops >&2; exit 255" << 255 << QByteArray() << QByteArray("oops");
        // The header promises the signal number when a signal ends the child.
        QTest::addRow("killed by a signal") << "kill -TERM $$" << 15 << QByteArray() << QByteArray();
    }
    void reportsWhatTheChildDid()
    {
        QFETCH(QString, script);
        const ChildProcessResult result = ChildProcess::run(QStringLiteral("/bin/sh"), {"-c", script});
        QVERIFY(result.started);
        QVERIFY(result.launchError.isEmpty());
        QTEST(result.exitStatus, "exitStatus");
        QTEST(result.standardOutput, "standardOutput");
        QTEST(result.standardError, "standardError");
    }

    void argumentsArriveVerbatim()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString echo = dir.filePath(QStringLiteral("echo-args"));
        QFile file(echo);
        QVERIFY(file.open(QIODevice::WriteOnly));
        // NUL after each argument, so arguments holding line feeds stay distinguishable.
        file.write("#!/bin/sh\nfor a in \"$@\"; do printf '%s\\0' \"$a\"; done\n");
        file.close();
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));

        const QStringList arguments{
            QStringLiteral("$(echo hi); *"), QString(),
            QStringLiteral("two words"),     QStringLiteral("'single' \"double\" `tick`"),
            QStringLiteral("a\nb"),          QStringLiteral("$HOME > out.txt | cat &"),
            QStringLiteral("Zoë ☕")};
        const ChildProcessResult result = ChildProcess::run(echo, arguments);
        QVERIFY2(result.started, qPrintable(result.launchError));
        QCOMPARE(result.exitStatus, 0);
        QByteArray expected;
        for (const QString &argument : arguments)
            expected += argument.toUtf8() + '\0';
        QCOMPARE(result.standardOutput, expected);
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("out.txt"))));
    }

    void refusedOrMissingProgramIsNotStarted_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addRow("missing program") << QStringLiteral("/nonexistent/lullwick-tool");
        // "sh" is on PATH, so only a refusal keeps the marker from being written.
        QTest::addRow("relative path") << QStringLiteral("sh");
    }
    void refusedOrMissingProgramIsNotStarted()
    {
        QFETCH(QString, program);
        QTemporaryDir dir;
        const QString marker = dir.filePath(QStringLiteral("ran"));
        const ChildProcessResult result = ChildProcess::run(program, {"-c", "touch '" + marker + "'"});
        QVERIFY(!result.started);
        QVERIFY(!result.launchError.isEmpty());
        QVERIFY(!QFile::exists(marker));
    }
};

QTEST_GUILESS_MAIN(TestChildProcess)
#include "tst_childprocess.moc"
