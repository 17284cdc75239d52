#include "Fixtures.h"
#include "platform/RunningApps.h"

#include <QtTest>

using namespace lullwick;

class TestRunningApps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listsTheUsersApplicationProcesses()
    {
        // The desktop entries come from these two folders only; the first has precedence.
        QTemporaryDir home, system;
        qputenv("XDG_DATA_HOME", home.path().toUtf8());
        qputenv("XDG_DATA_DIRS", system.path().toUtf8());
        const auto writeEntry = [](const QString &path, const QByteArray &body) {
            QDir().mkpath(QFileInfo(path).absolutePath());
            Fixtures::writeFile(path, "[Desktop Entry]\nType=Application\n" + body);
        };
        const QByteArray self = QCoreApplication::applicationFilePath().section(u'/', -1).toUtf8();
        const QString sleep = QStandardPaths::findExecutable("sleep");
        writeEntry(home.filePath("applications/io.example.Probe.desktop"),
                   "Name=Probe\nName[de]=Sonde\nExec=" + self +
                       " --open %U\n[Desktop Action New]\nName=Other\n");
        writeEntry(system.filePath("applications/io.example.Probe.desktop"), "Name=Shadowed\nExec=" + self);
        writeEntry(system.filePath("applications/tools/menu-less.desktop"),
                   "Name=Helper\nNoDisplay=true\nExec=sleep");
        writeEntry(system.filePath("applications/tools/sleeper.desktop"),
                   "Name=Sleeper\nExec=env LANG=C \"" + sleep.toUtf8() + "\" 5\n");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));

        QProcess first, second;
        QList<RunningAppInfo> expected{{"Sonde", "io.example.Probe", QCoreApplication::applicationPid()}};
        for (QProcess *p : {&first, &second}) {
            p->start(sleep, {"5"});
            QVERIFY(p->waitForStarted());
            expected.append({"Sleeper", "tools-sleeper", p->processId()});
        }
        QList<RunningAppInfo> apps = RunningApps::current();
        for (QProcess *p : {&first, &second})
            p->kill();

        // In PID order; other processes of this user may run sleep too, only ours are known.
        std::sort(expected.begin(), expected.end(), [](auto &a, auto &b) { return a.pid < b.pid; });
        apps.removeIf([&](const RunningAppInfo &app) {
            return std::none_of(expected.cbegin(), expected.cend(),
                                [&](auto &e) { return e.pid == app.pid; });
        });
        QCOMPARE(apps, expected);
    }
};

QTEST_GUILESS_MAIN(TestRunningApps)
#include "tst_runningapps.moc"
