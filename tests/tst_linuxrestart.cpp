#include "FakeToolDir.h"
#include "Fixtures.h"
#include "PrivateMounts.h"
#include "restart/InhibitorEvidence.h"
#include "restart/LastShutdownFinding.h"
#include "restart/RestartBlockerService.h"
#include "restart/ShutdownLockFinding.h"
#include "restart/SoftwareUpdateFinding.h"
#include "restart/UnsavedWorkFinding.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace lullwick;
using namespace Qt::StringLiterals;
using Lock = InhibitorEvidence::ShutdownLock;
using Inhibitor = InhibitorEvidence::LogoutInhibitor;
using Fixtures::writeFile;

Q_DECLARE_METATYPE(InhibitorEvidence)
Q_DECLARE_METATYPE(Inhibitor)

namespace {

const std::atomic<bool> keepGoing{false};

/// The lines a finding's detail lists after its lead paragraph.
QStringList listedLines(const RestartFinding &finding)
{
    return finding.detail.sliced(finding.detail.indexOf(u"\n\n") + 2).split(u'\n');
}

/// Neither a title nor a listed line may hold anything that starts a line or a second finding.
bool isClean(const RestartFinding &finding)
{
    const QString shown =
        listedLines(finding).join(u' ') + finding.title + finding.source + finding.advice.value_or(QString());
    return std::none_of(shown.cbegin(), shown.cend(),
                        [](QChar c) { return c.category() == QChar::Other_Control; });
}

/// A process that holds a POSIX write lock on `path` (taken with fcntl) and calls itself `name`,
/// until it is killed.
class LockHolder {
public:
    LockHolder(const QString &path, const char *name)
    {
        int ready[2];
        if (::pipe(ready) != 0)
            return;
        const QByteArray nativePath = QFile::encodeName(path);
        m_pid = ::fork();
        if (m_pid == 0) {
            // Only async-signal-safe calls between fork and _exit.
            ::prctl(PR_SET_NAME, name);
            const int fd = ::open(nativePath.constData(), O_RDWR | O_CREAT, 0640);
            struct flock lock = {};
            lock.l_type = F_WRLCK;
            lock.l_whence = SEEK_SET;
            const char ok = fd >= 0 && ::fcntl(fd, F_SETLK, &lock) == 0 ? '1' : '0';
            [[maybe_unused]] const ssize_t written = ::write(ready[1], &ok, 1);
            for (;;)
                ::pause();
        }
        ::close(ready[1]);
        char ok = '0';
        m_locked = m_pid > 0 && ::read(ready[0], &ok, 1) == 1 && ok == '1';
        ::close(ready[0]);
    }
    ~LockHolder()
    {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
        }
    }
    Q_DISABLE_COPY_MOVE(LockHolder)

    [[nodiscard]] bool locked() const { return m_locked; }
    [[nodiscard]] qint64 pid() const { return m_pid; }

private:
    pid_t m_pid = -1;
    bool m_locked = false;
};

/// A stand-in for lullwick-pmset that answers the restart-evidence question with `lines`.
QString writeStandin(const QString &dir, const QByteArray &lines, int exitStatus = 0)
{
    const QString path = dir + QStringLiteral("/lullwick-pmset");
    writeFile(path, "#!/bin/sh\n[ \"$*\" = --restart-evidence ] || exit 64\ncat <<'END'\n" + lines +
                        "END\nexit " + QByteArray::number(exitStatus) + "\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

class TestLinuxRestart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void evidenceLines_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<InhibitorEvidence>("expected");
        const QByteArray lock = "shutdown-lock\tblock\tBackup\tCopying files\t812\tborg\n";
        const Lock backup{"block", "Backup", "Copying files", 812, "borg"};
        QTest::addRow("every kind of record")
            << lock +
                   "inhibit-delay-max\t30\nlogout-inhibitor\torg.gnome.TextEditor\tUnsaved documents\t0\t\n"
            << InhibitorEvidence{{backup}, 30, {{"org.gnome.TextEditor", "Unsaved documents", 0, ""}}, {}};
        QTest::addRow("wrong field counts and unknown kinds are skipped")
            << "shutdown-lock\tblock\tBackup\n" + lock +
                   "shutdown-lock\tblock\tA\tB\t1\tc\textra\nsleep-lock\tx\n"
            << InhibitorEvidence{{backup}, {}, {}, {}};
        QTest::addRow("a PID that is not a positive number is unknown")
            << QByteArray("shutdown-lock\tdelay\tA\tB\t-4\ta\nshutdown-lock\tdelay\tC\tD\t12x\tc\n")
            << InhibitorEvidence{{{"delay", "A", "B", 0, "a"}, {"delay", "C", "D", 0, "c"}}, {}, {}, {}};
        QTest::addRow("control characters and direction overrides become spaces")
            << QByteArray("shutdown-lock\tblock\tevil\x1b[31m\r\xe2\x80\xae\tsay\x0bhi\t5\tx\n")
            << InhibitorEvidence{{{"block", "evil [31m", "say hi", 5, "x"}}, {}, {}, {}};
        QTest::addRow("invalid UTF-8 keeps the rest of the record")
            << QByteArray("logout-inhibitor\tcaf\xe9\tUnsaved\t7\tgedit\n")
            << InhibitorEvidence{{}, {}, {{"caf\uFFFD", "Unsaved", 7, "gedit"}}, {}};
        QTest::addRow("a huge field is cut short")
            << "logout-inhibitor\tapp\t" + QByteArray(100000, 'x') + "\t0\t\n"
            << InhibitorEvidence{{}, {}, {{"app", QString(200, u'x') + u'…', 0, ""}}, {}};
        QTest::addRow("PackageKit transactions")
            << QByteArray("package-transaction\tupdate-packages\npackage-transaction\n")
            << InhibitorEvidence{{}, {}, {}, {"update-packages"}};
        QTest::addRow("a line written with line breaks and tabs in its fields reads back")
            << InhibitorEvidence::line(
                   {"shutdown-lock", "block", "two\nlines\tand a tab", "why\r\n", "42", "name"})
                   .toUtf8()
            << InhibitorEvidence{{{"block", "two lines and a tab", "why", 42, "name"}}, {}, {}, {}};
        QTest::addRow("a delay limit that is not a count is ignored")
            << QByteArray("inhibit-delay-max\t-5\ninhibit-delay-max\t5s\n") << InhibitorEvidence();
    }
    void evidenceLines()
    {
        QFETCH(QByteArray, output);
        QFETCH(InhibitorEvidence, expected);
        const InhibitorEvidence read = InhibitorEvidence::parse(output);
        QCOMPARE(read.shutdownLocks, expected.shutdownLocks);
        QCOMPARE(read.inhibitDelayMaxSeconds, expected.inhibitDelayMaxSeconds);
        QCOMPARE(read.logoutInhibitors, expected.logoutInhibitors);
        QCOMPARE(read.packageTransactions, expected.packageTransactions);
    }

    void shutdownLocks_data()
    {
        QTest::addColumn<InhibitorEvidence>("evidence");
        QTest::addColumn<int>("severity"); // 0: no finding
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("listed");
        QTest::addColumn<QString>("firstLine"); // null: not checked
        QTest::addColumn<QString>("advice");    // how it ends; null: not checked
        const auto row = [](const char *name, const InhibitorEvidence &evidence, int severity,
                            const QString &title, int listed, const QString &firstLine = {},
                            const QString &advice = {}) {
            QTest::addRow("%s", name) << evidence << severity << title << listed << firstLine << advice;
        };
        const Lock backup{"block", "Backup Tool", "Copying files", 812, "copyjobd"};
        // The kernel keeps 15 characters of unattended-upgrade-shutdown's name.
        const Lock upgrades{"delay", "Unattended Upgrades Shutdown", "Stop ongoing upgrades", 640,
                            "unattended-upgr"};
        row("a block lock is likely, names its holder and how to quit it", {{backup}, 5, {}, {}}, 3,
            "Backup Tool is blocking restart and shutdown: Copying files", 1,
            "Backup Tool — Copying files (block, copyjobd, PID 812)",
            "quit copyjobd from your system monitor, or with “kill 812” in a terminal.");
        row("block-weak holds off a desktop restart too",
            {{{"block-weak", "Sync", "", 9, "syncd"}}, {}, {}, {}}, 3,
            "Sync is blocking restart and shutdown", 1);
        row("several block locks: the first named, the delay lock listed too",
            {{upgrades, backup, {"block", "", "Burning a disc", 77, "brasero"}}, 5, {}, {}}, 3,
            "Backup Tool and 1 more are blocking restart and shutdown: Copying files", 3);
        row("delay locks only are context, with logind's limit and the catalog's words",
            {{upgrades}, 30, {}, {}}, 1, "Unattended Upgrades Shutdown will delay a restart by up to 30 s", 1,
            "Unattended upgrades will finish before shutdown — Stop ongoing upgrades (delay, "
            "unattended-upgr, PID 640)");
        row("delay without a known limit", {{upgrades, upgrades}, {}, {}, {}}, 1,
            "Unattended Upgrades Shutdown and 1 more will delay a restart by a few seconds", 2);
        row("a name that looks like a placeholder stays as it is",
            {{{"block", "Job %2 of %1", "", 1, "j"}, backup}, {}, {}, {}}, 3,
            "Job %2 of %1 and 1 more are blocking restart and shutdown", 2);
        row("a holder without a name is called by its process",
            {{{"block", "", "", 31, "weird-daemon"}}, {}, {}, {}}, 3,
            "weird-daemon is blocking restart and shutdown", 1);
        row("a lock whose process logind cannot tell (PID 0) names no process to quit",
            {{{"block", "", "", 0, ""}}, {}, {}, {}}, 3, "A program is blocking restart and shutdown", 1,
            "A program (block)", "Let it finish, then restart again.");
        const QList<Lock> eight(8, backup);
        row("as many locks as are listed: no “and 0 more” line", {eight, {}, {}, {}}, 3,
            "Backup Tool and 7 more are blocking restart and shutdown: Copying files", 8);
        row("one more than are listed", {eight + QList<Lock>{backup}, {}, {}, {}}, 3,
            "Backup Tool and 8 more are blocking restart and shutdown: Copying files", 9,
            "Backup Tool — Copying files (block, copyjobd, PID 812)");
        row("a mode logind does not have is no lock", {{{"sometimes", "X", "", 1, "x"}}, 5, {}, {}}, 0, {},
            0);
        row("no locks", {{}, 5, {}, {}}, 0, {}, 0);
    }
    void shutdownLocks()
    {
        QFETCH(InhibitorEvidence, evidence);
        QFETCH(int, severity);
        QFETCH(int, listed);
        QFETCH(QString, firstLine);
        QFETCH(QString, advice);
        const std::optional<RestartFinding> finding = ShutdownLockFinding::from(evidence);
        QCOMPARE(finding.has_value(), severity != 0);
        if (!finding)
            return;
        QCOMPARE(rawValue(finding->severity), severity);
        QTEST(finding->title, "title");
        QCOMPARE(finding->source, "Shutdown locks");
        QCOMPARE(listedLines(*finding).size(), listed);
        if (!firstLine.isNull())
            QCOMPARE(listedLines(*finding).first(), firstLine);
        QVERIFY(finding->advice);
        QVERIFY2(advice.isNull() || finding->advice->endsWith(advice), qPrintable(*finding->advice));
    }

    void unsavedWork_data()
    {
        QTest::addColumn<QList<Inhibitor>>("inhibitors");
        QTest::addColumn<QString>("title"); // null: no finding
        const Inhibitor editor{"org.gnome.TextEditor", "Unsaved documents", 0, ""};
        QTest::addRow("named by the running app with its id")
            << QList<Inhibitor>{editor} << u"Text Editor has unsaved work"_s;
        QTest::addRow("named by the running app with its process")
            << QList<Inhibitor>{{"", "", 4200, "libreoffice"}} << u"LibreOffice Writer has unsaved work"_s;
        QTest::addRow("an app that is not running keeps its id, or its process name")
            << QList<Inhibitor>{{"org.example.Notes", "", 0, ""}, {"", "Busy", 99, "blender"}}
            << u"org.example.Notes and blender have unsaved work"_s;
        QTest::addRow("one app with two inhibitors is named once")
            << QList<Inhibitor>{editor, editor, {"a", "", 0, ""}, {"b", "", 0, ""}, {"c", "", 0, ""}}
            << u"Text Editor, a and 2 more have unsaved work"_s;
        QList<Inhibitor> eight;
        for (const char *id : {"a", "b", "c", "d", "e", "f", "g", "h"})
            eight.append({id, "", 0, ""});
        QTest::addRow("as many apps as are listed: no “and 0 more” line")
            << eight << u"a, b and 6 more have unsaved work"_s;
        QTest::addRow("one more than are listed")
            << eight + QList<Inhibitor>{{"i", "", 0, ""}} << u"a, b and 7 more have unsaved work"_s;
        QTest::addRow("none") << QList<Inhibitor>{} << QString();
    }
    void unsavedWork()
    {
        QFETCH(QList<Inhibitor>, inhibitors);
        QFETCH(QString, title);
        const QList<RunningAppInfo> running{{"LibreOffice Writer", u"libreoffice-writer"_s, 4200},
                                            {"Text Editor", u"org.gnome.TextEditor"_s, 5100}};
        const std::optional<RestartFinding> finding =
            UnsavedWorkFinding::from(InhibitorEvidence{{}, {}, inhibitors, {}}, running);
        QCOMPARE(finding ? finding->title : QString(), title);
        if (!finding)
            return;
        QCOMPARE(finding->severity, RestartSeverity::likely);
        QCOMPARE(listedLines(*finding).size(), inhibitors.size());
    }

    void softwareUpdates_data()
    {
        // Below the root; "->" makes a link to nowhere; "packagekit" is a transaction updating packages.
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("lockHeld");
        QTest::addColumn<int>("severity"); // 0: no finding
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("listed"); // the detail's list, if any
        QTest::addRow("nothing pending")
            << QStringList{"var/lib/dpkg/lock-frontend"} << false << 0 << QString() << QString();
        QTest::addRow("installed updates want a restart, packages once each")
            << QStringList{"run/reboot-required", "run/reboot-required.pkgs"} << false << 1
            << u"Installed updates are waiting for a restart"_s << u"linux-image-6.1.0-28-amd64, libc6 x"_s;
        QTest::addRow("an offline update is staged, even behind a dangling link")
            << QStringList{"system-update->", "run/reboot-required"} << false << 2
            << u"An update will be installed during the next restart"_s << QString();
        QTest::addRow("the package manager's lock is held by a running apt")
            << QStringList{"system-update->", "run/reboot-required"} << true << 3
            << u"apt is installing or removing software right now"_s << QString();
        // The row the PackageKit transaction takes: it stands in for the lock's holder.
        QTest::addRow("a PackageKit transaction outranks a staged update")
            << QStringList{"system-update->", "packagekit"} << false << 3
            << u"PackageKit is installing or removing software right now"_s << QString();
    }
    void softwareUpdates()
    {
        QFETCH(QStringList, files);
        QFETCH(bool, lockHeld);
        QFETCH(int, severity);
        QFETCH(QString, listed);
        QTemporaryDir root;
        QVERIFY(QDir(root.path()).mkpath("var/lib/dpkg") && QDir(root.path()).mkpath("run"));
        InhibitorEvidence evidence;
        for (const QString &file : files) {
            if (file == u"packagekit")
                evidence.packageTransactions = {u"update-packages"_s};
            else if (file.endsWith("->"))
                QVERIFY(QFile::link(root.filePath("nowhere"), root.filePath(file.chopped(2))));
            else
                writeFile(root.filePath(file),
                          "linux-image-6.1.0-28-amd64\n\nlibc6\x07x\nlinux-image-6.1.0-28-amd64\n");
        }
        std::optional<LockHolder> apt;
        if (lockHeld) {
            apt.emplace(root.filePath("var/lib/dpkg/lock-frontend"), "apt");
            QVERIFY(apt->locked());
        }
        const std::optional<RestartFinding> finding = SoftwareUpdateFinding::from(root.path(), evidence);
        QCOMPARE(finding.has_value(), severity != 0);
        if (!finding)
            return;
        QCOMPARE(rawValue(finding->severity), severity);
        QTEST(finding->title, "title");
        QCOMPARE(finding->source, "Software updates");
        if (!listed.isEmpty())
            QCOMPARE(listedLines(*finding), QStringList{listed});
        if (lockHeld)
            QVERIFY2(finding->detail.contains(u"(PID %1)"_s.arg(apt->pid())), qPrintable(finding->detail));
    }

    void lockTable_data()
    {
        QTest::addColumn<QByteArray>("table");
        QTest::addColumn<qint64>("holder");
        QTest::addRow("a POSIX write lock on the file")
            << QByteArray("1: FLOCK  ADVISORY  WRITE 88 00:1a:99 0 EOF\n"
                          "2: POSIX  ADVISORY  WRITE 1234 fd:01:5678 0 EOF\n")
            << qint64(1234);
        QTest::addRow("a waiter holds nothing")
            << QByteArray("2: -> POSIX  ADVISORY  WRITE 77 fd:01:5678 0 EOF\n") << qint64(0);
        QTest::addRow("an open-file lock names no process")
            << QByteArray("3: OFDLCK ADVISORY  WRITE -1 fd:01:5678 0 EOF\n") << qint64(0);
        QTest::addRow("another file on the same device")
            << QByteArray("2: POSIX  ADVISORY  WRITE 1234 fd:01:56789 0 EOF\n") << qint64(0);
        QTest::addRow("garbage") << QByteArray("\xff\n: :\n1:\n") << qint64(0);
    }
    void lockTable()
    {
        QFETCH(QByteArray, table);
        QTEST(SoftwareUpdateFinding::holderInLockTable(table, 0xfd, 0x01, 5678), "holder");
    }

    void lockTableNamesARealHolder()
    {
        // What a user who may not open the lock file sees: the kernel's table of every lock.
        QTemporaryDir dir;
        const QString path = dir.filePath("lock-frontend");
        const LockHolder holder(path, "unattended-upgr");
        QVERIFY(holder.locked());
        struct stat info = {};
        QVERIFY(::stat(QFile::encodeName(path).constData(), &info) == 0);
        QFile table("/proc/locks");
        QVERIFY(table.open(QIODevice::ReadOnly));
        QCOMPARE(SoftwareUpdateFinding::holderInLockTable(table.readAll(), major(info.st_dev),
                                                          minor(info.st_dev), info.st_ino),
                 holder.pid());
        QCOMPARE(SoftwareUpdateFinding::lockHolder(path), holder.pid());
    }

    void lastShutdown_data()
    {
        QTest::addColumn<QByteArray>("journal");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("title");      // null: no finding
        QTest::addColumn<QStringList>("listed"); // empty: not checked
        const QByteArray hungSession = Fixtures::read("journal-hung-session.jsonl");
        QTest::addRow("a hung session names the program, not the session")
            << hungSession << 0 << u"Last shutdown waited for x11vnc (session-2.scope)"_s
            << QStringList{"session-2.scope: sshd (PID 1401), x11vnc (PID 1523)"};
        QTest::addRow("a user manager killed with its children names a child")
            << Fixtures::read("journal-user-manager.jsonl") << 0
            << u"Last shutdown waited for gvfsd-fuse (user@1000.service)"_s
            << QStringList{
                   "user@1000.service: systemd (PID 1100), (sd-pam) (PID 1101), gvfsd-fuse (PID 1350), "
                   "pipewire (PID 1362)"};
        QTest::addRow("a container runtime")
            << Fixtures::read("journal-container-runtime.jsonl") << 0
            << u"Last shutdown waited for dockerd (docker.service)"_s
            << QStringList{
                   "docker.service: dockerd (PID 812), containerd-shim (PID 1410), postgres (PID 1433)"};
        QTest::addRow("a clean shutdown")
            << Fixtures::read("journal-clean-shutdown.jsonl") << 0 << QString() << QStringList();
        QTest::addRow("no previous boot: journalctl fails") << hungSession << 1 << QString() << QStringList();
        // Outside the systemd-journal and adm groups journalctl shows the user's own entries only.
        QTest::addRow("not allowed to read the system journal")
            << QByteArray() << 0 << QString() << QStringList();
        // One journal entry as journalctl prints it; `message` may be text, bytes or anything else.
        const auto entry = [](const QJsonValue &unit, const QJsonValue &message) {
            QJsonObject object{{"MESSAGE", message}};
            if (!unit.isNull())
                object.insert("UNIT", unit);
            return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
        };
        // What a hostile or broken journal gives: no finding, or one whose lines stay clean and few.
        const auto hostile = [](const char *name, const QByteArray &journal, const QString &title) {
            QTest::addRow("%s", name) << journal << 0 << title << QStringList();
        };
        const QByteArray timeout = entry("x.service", "x.service: Stopping timed out. Killing.");
        hostile("a name that tries to start a second finding",
                timeout + entry("x.service",
                                "Killing process 9 (ev\nil\x1b[2J\n[Likely] Fake) with signal SIGKILL."),
                u"Last shutdown waited for ev il [2J [Likely] Fake (x.service)"_s);
        QJsonArray bytes;
        for (const char c : QByteArray("Killing process 7 (caf\xe9) with signal SIGKILL."))
            bytes.append(int(uchar(c)));
        hostile("a message in bytes that are not UTF-8", timeout + entry("x.service", bytes),
                u"Last shutdown waited for caf\uFFFD (x.service)"_s);
        hostile("a huge line is passed over",
                entry("x.service", "Stopping timed out. Killing." + QString(200000, u' ')), QString());
        hostile("entries without a unit, or with a message that is no text, say nothing",
                entry(QJsonValue(), "Stopping timed out. Killing.") + entry("y.service", 12) +
                    entry(QJsonArray{"y.service"}, "Stopping timed out. Killing."),
                QString());
        hostile("lines that are not JSON objects", "not json\n[1,2]\n\x01\x02\xff\n{\"UNIT\":", QString());
        hostile("a kill without a timeout before it names nobody",
                entry("x.service", "Killing process 9 (x) with signal SIGKILL.") + timeout,
                u"Last shutdown waited for x.service"_s);
        QByteArray six = timeout, seven;
        for (int pid = 1; pid <= 7; ++pid)
            (pid <= 6 ? six : seven) +=
                entry("x.service", u"Killing process %1 (p%1) with signal SIGKILL."_s.arg(pid));
        const QString sixListed = u"x.service: p1 (PID 1), p2 (PID 2), p3 (PID 3), p4 (PID 4), p5 (PID 5), "
                                  u"p6 (PID 6)"_s;
        QTest::addRow("as many killed processes as are listed: no “and 0 more”")
            << six << 0 << u"Last shutdown waited for p1 (x.service)"_s << QStringList{sixListed};
        QTest::addRow("one more than are listed")
            << six + seven << 0 << u"Last shutdown waited for p1 (x.service)"_s
            << QStringList{sixListed + u", and 1 more"_s};
        QByteArray many;
        for (int i = 0; i < 500; ++i)
            many += entry(u"u%1.service"_s.arg(i), "Stopping timed out.");
        hostile("hundreds of hung units", many, u"Last shutdown waited for u0.service"_s);
    }
    void lastShutdown()
    {
        QFETCH(QByteArray, journal);
        QFETCH(int, status);
        QFETCH(QString, title);
        QFETCH(QStringList, listed);
        FakeToolDir fake;
        QVERIFY(fake.isValid());
        fake.setOutput("journalctl", journal);
        fake.setExitStatus("journalctl", status);
        const std::optional<RestartFinding> finding =
            LastShutdownFinding::read(fake.journalctlPath(), keepGoing);
        QCOMPARE(finding ? finding->title : QString(), title);
        if (!finding)
            return;
        QCOMPARE(finding->severity, RestartSeverity::possible);
        if (!listed.isEmpty())
            QCOMPARE(listedLines(*finding), listed);
        QVERIFY2(isClean(*finding), qPrintable(finding->detail));
        QVERIFY2(listedLines(*finding).size() <= 7, qPrintable(finding->detail));
    }

    void realJournalOfAPreviousBoot()
    {
        // The real journalctl, with the program's own arguments, on journal files that the real
        // systemd-journal-remote wrote: the previous boot's service-manager messages only.
        if (const std::optional<QString> why = privateMountsUnavailable(
                {"/lib/systemd/systemd-journal-remote", "/usr/bin/journalctl", "/etc/machine-id"}))
            QSKIP(qPrintable(*why));
        QFile machineFile("/etc/machine-id"), bootFile("/proc/sys/kernel/random/boot_id");
        QVERIFY(machineFile.open(QIODevice::ReadOnly) && bootFile.open(QIODevice::ReadOnly));
        const QByteArray machine = machineFile.readAll().trimmed();
        const QByteArray thisBoot = bootFile.readAll().trimmed().replace('-', "");
        const QByteArray previousBoot = "8d1e0f2a6b9c4d3e8f7a6b5c4d3e2f1a";

        // The recorded entries as the previous boot's, one message of the hung program itself,
        // and this boot's first message.
        QByteArray exported;
        qint64 clock = 1763950000000000;
        const auto entry = [&](const QByteArray &boot, const QByteArray &pid, const QJsonObject &fields) {
            clock += 1000;
            exported += "__REALTIME_TIMESTAMP=" + QByteArray::number(clock) +
                        "\n__MONOTONIC_TIMESTAMP=" + QByteArray::number(clock % 100000000) +
                        "\n_BOOT_ID=" + boot + "\n_MACHINE_ID=" + machine + "\n_PID=" + pid +
                        "\nSYSLOG_IDENTIFIER=systemd\n";
            for (auto it = fields.begin(); it != fields.end(); ++it)
                exported += it.key().toUtf8() + '=' + it.value().toString().toUtf8() + '\n';
            exported += '\n';
        };
        for (const QByteArray &line : Fixtures::read("journal-user-manager.jsonl").split('\n')) {
            const QJsonObject fields = QJsonDocument::fromJson(line).object();
            if (!fields.isEmpty())
                entry(previousBoot, "1", {{"MESSAGE", fields["MESSAGE"]}, {"UNIT", fields["UNIT"]}});
        }
        entry(previousBoot, "1350", {{"MESSAGE", "Stopping timed out. Killing."}, {"UNIT", "fake.service"}});
        entry(thisBoot, "1", {{"MESSAGE", "Stopping timed out. Killing."}, {"UNIT", "today.service"}});
        QTemporaryDir dir;
        writeFile(dir.filePath("entries.export"), exported);

        QProcess journal;
        journal.start("/usr/bin/unshare", QStringList{"-m", "--propagation", "private", "/bin/sh",
                                                      LULLWICK_JOURNAL_RIG, dir.filePath("entries.export")} +
                                              LastShutdownFinding::journalctlArguments());
        QVERIFY(journal.waitForFinished(60000));
        QVERIFY2(journal.exitCode() == 0, journal.readAllStandardError().constData());
        const std::optional<RestartFinding> finding =
            LastShutdownFinding::fromJournal(journal.readAllStandardOutput());
        QVERIFY(finding);
        QCOMPARE(finding->title, "Last shutdown waited for gvfsd-fuse (user@1000.service)");
        QCOMPARE(listedLines(*finding).size(), 1); // neither the program's own message nor this boot's
    }

    void linuxAnalysisRanksEverySource()
    {
        FakeToolDir fake;
        QTemporaryDir root;
        QVERIFY(fake.isValid() && root.isValid());
        fake.setOutputFromFixture("journalctl", "journal-hung-session.jsonl");
        QVERIFY(QDir(root.path()).mkpath("run"));
        QVERIFY(QFile::link("/var/lib/system-update", root.filePath("system-update")));
        const QString standin = writeStandin(
            fake.path(), "shutdown-lock\tdelay\tUnattended Upgrades\tStop upgrades\t640\tunattended-upgr\n"
                         "inhibit-delay-max\t30\n"
                         "logout-inhibitor\torg.gnome.TextEditor\tUnsaved documents\t0\t\n");
        RestartBlockerService service(LinuxRestartSources{standin, fake.journalctlPath(), root.path()});
        const RestartAnalysis analysis =
            service.analyze(std::nullopt, {{"Text Editor", u"org.gnome.TextEditor"_s, 5100}}).result();

        QStringList sources;
        for (const RestartFinding &f : analysis.findings)
            sources.append(f.source);
        // Unsaved work outranks the delay lock; the two possible ones keep the order they were read in.
        QCOMPARE(sources, (QStringList{"Apps with unsaved work", "Software updates",
                                       "Last shutdown (system journal)", "Shutdown locks", "Running apps"}));
        QCOMPARE(analysis.findings.first().title, "Text Editor has unsaved work"); // named by the running app
        QVERIFY(!analysis.stallReportPath);
        QVERIFY2(!analysis.findings.last().detail.contains("macOS"),
                 qPrintable(analysis.findings.last().detail));
    }

    void linuxAnalysisWithoutItsSources_data()
    {
        QTest::addColumn<bool>("standinFails");
        QTest::addRow("no stand-in") << false;
        QTest::addRow("a stand-in that prints locks and then fails is not believed") << true;
    }
    void linuxAnalysisWithoutItsSources()
    {
        // No journal tool, a root with nothing in it: only the running apps are left.
        QFETCH(bool, standinFails);
        QTemporaryDir root, dir;
        const QString standin =
            standinFails ? writeStandin(dir.path(), "shutdown-lock\tblock\tBackup\tCopying\t640\trsync\n", 1)
                         : u"/nonexistent/lullwick-pmset"_s;
        RestartBlockerService service(LinuxRestartSources{standin, "/nonexistent/journalctl", root.path()});
        const RestartAnalysis analysis = service.analyze(std::nullopt, {{"Files", {}, 1}}).result();
        QCOMPARE(analysis.findings.size(), 1);
        QCOMPARE(analysis.findings[0].source, "Running apps");
    }
};

QTEST_GUILESS_MAIN(TestLinuxRestart)
#include "tst_linuxrestart.moc"
