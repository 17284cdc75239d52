#include "platform/RunningApps.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace lullwick;

namespace {

void writeEntry(const QString &path, const QByteArray &body)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("[Desktop Entry]\nType=Application\n" + body) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

class TestRunningApps : public QObject {
    Q_OBJECT

    QTemporaryDir m_home, m_system;

private Q_SLOTS:
    void initTestCase()
    {
        // The desktop entries come from these folders only; the first has precedence.
        qputenv("XDG_DATA_HOME", m_home.path().toUtf8());
        qputenv("XDG_DATA_DIRS", m_system.path().toUtf8());
        const QByteArray self = QCoreApplication::applicationFilePath().section(u'/', -1).toUtf8();
        writeEntry(m_home.filePath("applications/io.example.Probe.desktop"),
                   "Name=Probe\nName[de]=Sonde\nExec=" + self +
                       " --open %U\n[Desktop Action New]\nName=Other\n");
        writeEntry(m_system.filePath("applications/io.example.Probe.desktop"),
                   "Name=Shadowed\nExec=" + self + "\n");
        writeEntry(m_system.filePath("applications/tools/menu-less.desktop"),
                   "Name=Helper\nNoDisplay=true\nExec=sleep\n");
        writeEntry(m_system.filePath("applications/tools/sleeper.desktop"),
                   "Name=Sleeper\nExec=env LANG=C \"" + QStandardPaths::findExecutable("sleep").toUtf8() +
                       "\" 5\n");
    }

    void listsTheUsersApplicationProcesses()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QProcess first, second;
        for (QProcess *p : {&first, &second}) {
            p->start(QStandardPaths::findExecutable("sleep"), {"5"});
            QVERIFY(p->waitForStarted());
        }
        QList<RunningAppInfo> apps = RunningApps::current();
        const RunningAppInfo sleeper1{"Sleeper", "tools-sleeper", first.processId()};
        const RunningAppInfo sleeper2{"Sleeper", "tools-sleeper", second.processId()};
        for (QProcess *p : {&first, &second}) {
            p->kill();
            p->waitForFinished();
        }

        const RunningAppInfo self{"Sonde", "io.example.Probe", QCoreApplication::applicationPid()};
        QList<RunningAppInfo> expected{self, sleeper1, sleeper2};
        std::sort(expected.begin(), expected.end(), [](auto &a, auto &b) { return a.pid < b.pid; });
        // Other sleeps of this user may be running too; only ours are known.
        apps.removeIf([&](const RunningAppInfo &app) {
            return std::none_of(expected.cbegin(), expected.cend(),
                                [&](auto &e) { return e.pid == app.pid; });
        });
        QCOMPARE(apps, expected);
    }
};

QTEST_GUILESS_MAIN(TestRunningApps)
#include "tst_runningapps.moc"
