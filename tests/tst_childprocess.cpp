#include "platform/ChildProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace lullwick;

class TestChildProcess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reportsStatusAndStreamsApart()
    {
        const ChildProcessResult result =
            ChildProcess::run(QStringLiteral("/bin/sh"), {"-c", "printf out; printf err >&2; exit 3"});
        QVERIFY2(result.started, qPrintable(result.launchError));
        QCOMPARE(result.exitStatus, 3);
        QCOMPARE(result.standardOutput, "out");
        QCOMPARE(result.standardError, "err");
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
