#include "platform/ChildProcess.h"

#include <QtTest>

using namespace lullwick;

class TestChildProcess : public QObject {
    Q_OBJECT

private Q_SLOTS:
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

    // "sh" is on PATH, so only a refusal keeps the marker from being written.
    void relativePathIsRefused()
    {
        QTemporaryDir dir;
        const QString marker = dir.filePath(QStringLiteral("ran"));
        const ChildProcessResult result =
            ChildProcess::run(QStringLiteral("sh"), {"-c", "touch '" + marker + "'"});
        QVERIFY(!result.started);
        QVERIFY(!result.launchError.isEmpty());
        QVERIFY(!QFile::exists(marker));
    }
};

QTEST_GUILESS_MAIN(TestChildProcess)
#include "tst_childprocess.moc"
