#include "Fixtures.h"
#include "PrivateMounts.h"
#include "platform/ProcessNames.h"
#include "pmset/PMSetService.h"
#include "profile/Profile.h"
#include "restart/InhibitorEvidence.h"
#include "standin/AssertionListing.h"
#include "standin/InhibitorReferences.h"
#include "standin/TypeWords.h"
#include "summary/SummaryClipboard.h"

#include <QLocalServer>
#include <QtTest>
#include <unistd.h>

using namespace lullwick;
using namespace Qt::StringLiterals;
using Fixtures::writeFile;
using Lock = InhibitorEvidence::ShutdownLock;
using Inhibitor = InhibitorEvidence::LogoutInhibitor;

Q_DECLARE_METATYPE(Lock)

namespace {

// Taken from beside the program, where the program itself looks for it.
const QString standin = QStringLiteral(LULLWICK_PMSET_STANDIN);
const QString fakeName = QStringLiteral("fake-power-services"); // longer than the kernel keeps

/// The sleep kinds blocked, as letters: I(dle system), S(ystem), D(isplay).
QString blocks(const AssertionKind &kind)
{
    QString letters;
    for (SleepKind sleep : allSleepKinds) {
        if (kind.blockedSleepKinds().contains(sleep))
            letters += "ISD"[int(sleep)];
    }
    return letters;
}

/// Whether there is a counter for every type word, each counting the lines of its type.
bool countersMatch(const AssertionsSnapshot &snapshot)
{
    const auto &counters = snapshot.systemWideCounts;
    return counters.size() == TypeWords::all().size() &&
           std::all_of(counters.cbegin(), counters.cend(), [&](const SystemWideCount &counter) {
               return counter.count ==
                      std::count_if(snapshot.assertions.cbegin(), snapshot.assertions.cend(),
                                    [&](const Assertion &a) { return a.kind.typeWord() == counter.name; });
           });
}

void useBuses(const QString &system, const QString &session)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", system.toUtf8());
    qputenv("DBUS_SESSION_BUS_ADDRESS", session.toUtf8());
}

} // namespace

class TestStandin : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QProcess m_buses[3]; // system, session, and one that nobody serves
    QString m_system, m_session, m_empty;
    QLocalServer m_mute; // takes connections and never says a word
    QProcess m_fake;
    qint64 m_exitedPid = 0;
    AssertionsSnapshot m_snapshot;

    QString startBus(QProcess &daemon, const QString &name)
    {
        const QString socket = m_dir.filePath(name);
        writeFile(socket + ".conf",
                  QStringLiteral("<busconfig><type>session</type><listen>unix:path=%1</listen>"
                                 "<auth>EXTERNAL</auth><policy context=\"default\">"
                                 "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                                 "<allow own=\"*\"/></policy></busconfig>")
                      .arg(socket)
                      .toUtf8());
        const QString program = QStandardPaths::findExecutable("dbus-daemon");
        daemon.start(program, {"--nofork", "--print-address", "--config-file=" + socket + ".conf"});
        return daemon.waitForReadyRead(10000) ? QString::fromUtf8(daemon.readLine()).trimmed() : QString();
    }

    /// Starts the fake services; the PID of a process that has exited, or 0.
    static qint64 startFake(QProcess &fake, const QStringList &flags)
    {
        fake.start(QStringLiteral(LULLWICK_FAKE_POWER_SERVICES), flags);
        if (!fake.waitForReadyRead(10000))
            return 0;
        const QByteArray ready = fake.readLine().trimmed();
        return ready.startsWith("ready ") ? ready.sliced(6).toLongLong() : 0;
    }

    /// Runs the stand-in with `arguments` against the real systemd-logind holding the rig's locks,
    /// on a private system bus in a mount namespace of the test's own; `output` stays null when
    /// that cannot run here (the test is then skipped).
    void runLogindRig(const QStringList &arguments, QByteArray &output)
    {
        if (const std::optional<QString> why = privateMountsUnavailable(
                {"/lib/systemd/systemd-logind", "/usr/bin/systemd-inhibit", "/usr/bin/busctl"}))
            QSKIP(qPrintable(*why));
        QTemporaryDir work;
        qputenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + m_dir.filePath("nowhere")).toUtf8());
        QProcess rig;
        rig.start("/usr/bin/unshare", QStringList{"-m", "--propagation", "private", "/bin/sh",
                                                  LULLWICK_LOGIND_RIG, work.path(), standin} +
                                          arguments);
        QVERIFY(rig.waitForFinished(120000));
        QVERIFY2(rig.exitCode() == 0, rig.readAllStandardError().constData());
        output = rig.readAllStandardOutput();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(!QStandardPaths::findExecutable("dbus-daemon").isEmpty(),
                 "scripts/install-deps.sh installs it");
        m_system = startBus(m_buses[0], "system");
        m_session = startBus(m_buses[1], "session");
        m_empty = startBus(m_buses[2], "empty");
        QVERIFY(m_mute.listen(m_dir.filePath("mute")));
        QVERIFY(!m_system.isEmpty() && !m_session.isEmpty() && !m_empty.isEmpty());
        useBuses(m_system, m_session);
        m_exitedPid = startFake(m_fake, {});
        QVERIFY(m_exitedPid > 0);

        const PMSetService::Result<AssertionsSnapshot> result =
            PMSetService(standin).fetchAssertions().result();
        const PMSetError *error = std::get_if<PMSetError>(&result);
        QVERIFY2(!error, qPrintable(error ? error->errorDescription() : QString()));
        m_snapshot = std::get<AssertionsSnapshot>(result);
        // Twelve: the fourth GNOME inhibitor is listed but gone when asked about.
        QCOMPARE(m_snapshot.assertions.size(), 12);
        QVERIFY2(countersMatch(m_snapshot), qPrintable(m_snapshot.rawOutput));
    }

    void cleanupTestCase()
    {
        for (QProcess *process : {&m_fake, &m_buses[0], &m_buses[1], &m_buses[2]}) {
            process->kill();
            process->waitForFinished();
        }
    }

    void readsEveryInhibitor_data()
    {
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("blocked");
        QTest::addColumn<QString>("name");        // the exited process is named by its lock's taker
        QTest::addColumn<bool>("createdForTest"); // the fake names this test as its client
        QTest::addColumn<QString>("extra");
        const auto row = [](const char *title, const QString &reason, const QString &word,
                            const char *blocked, const QString &name, bool createdForTest,
                            const QString &extra) {
            QTest::addRow("%s", title)
                << reason << word << QString(blocked) << name << createdForTest << extra;
        };
        row("logind idle lock keeps idle and display sleep off", "Playing video",
            "PreventUserIdleDisplaySleep", "ID", fakeName, false, "Who: GNOME Shell (uid 1000)");
        row("logind sleep lock; quotes turn typographic, non-ASCII stays",
            "Copying ”photos” to Bücher – 東京", "PreventSystemSleep", "ISD", fakeName, false, "Mode: block");
        row("logind sleep delay blocks nothing", "NetworkManager needs to turn off networks", "DelaySleep",
            "", fakeName, false, "Mode: delay");
        row("logind shutdown lock blocks no sleep", "Upgrading packages", "PreventShutdown", "", fakeName,
            false, "What: shutdown");
        row("logind weak sleep lock still blocks; a carriage return in its reason turns into a space",
            "Weak hold", "PreventSystemSleep", "ISD", fakeName, false, "Mode: block-weak");
        row("lock of an exited process is named by its taker", "Left behind", "PreventSystemSleep", "ISD",
            "old-job", false, "What: idle:sleep");
        row("GNOME idle inhibitor, created for its client's process", "Playing a video",
            "PreventUserIdleDisplaySleep", "ID", fakeName, true, "Application: org.gnome.Totem");
        row("GNOME suspend inhibitor without a client", "Downloading files", "PreventSystemSleep", "ISD",
            fakeName, false, "Inhibits: suspend");
        row("GNOME suspend-and-idle inhibitor blocks all sleep; its client's unknown process is left out",
            "Watching a film", "PreventSystemSleep", "ISD", fakeName, false, "Inhibits: suspend, idle");
        row("GNOME logout-only inhibitor blocks nothing", "Unsaved documents", "PreventLogout", "", fakeName,
            false, "Inhibits: logout");
        row("KDE inhibition names its application", "Playing media", "PreventUserIdleDisplaySleep", "ID",
            fakeName, false, "Application: vlc");
    }
    void readsEveryInhibitor()
    {
        QFETCH(QString, reason);
        QFETCH(QString, name);
        QFETCH(bool, createdForTest);
        QFETCH(QString, extra);
        const auto it = std::find_if(m_snapshot.assertions.cbegin(), m_snapshot.assertions.cend(),
                                     [&](const Assertion &a) { return a.namedReason == reason; });
        QVERIFY2(it != m_snapshot.assertions.cend(), qPrintable(m_snapshot.rawOutput));
        QTEST(it->kind.typeWord(), "word");
        QTEST(blocks(it->kind), "blocked");
        QCOMPARE(it->pid, name == fakeName ? m_fake.processId() : m_exitedPid);
        QCOMPARE(it->processName, name);
        QCOMPARE(it->createdForPID(),
                 createdForTest ? std::optional(QCoreApplication::applicationPid()) : std::nullopt);
        QVERIFY2(it->extras.value_or(QString()).split('\n').contains(extra), qPrintable(*it->extras));
        QCOMPARE(it->timeHeld, "unknown"); // no logind records here to date the locks by
    }

    void systemdInhibitLockIsCreatedForItsCommand()
    {
        const auto it = std::find_if(m_snapshot.assertions.cbegin(), m_snapshot.assertions.cend(),
                                     [](const Assertion &a) { return a.namedReason == u"Nightly backup"; });
        QVERIFY2(it != m_snapshot.assertions.cend(), qPrintable(m_snapshot.rawOutput));
        QCOMPARE(it->processName, u"systemd-inhibit");
        QVERIFY(it->createdForPID());
        QCOMPARE(ProcessNames().name(*it->createdForPID()), u"rsync");
    }

    void settingsUnderHeadings()
    {
        useBuses(m_system, m_session);
        const PMSetService::Result<QString> result = PMSetService(standin).fetchSettings().result();
        QVERIFY(std::holds_alternative<QString>(result));
        const QStringList lines = std::get<QString>(result).split('\n');
        QCOMPARE(lines.first(), "System-wide power settings:");
        const qsizetype inUse = lines.indexOf("Currently in use:");
        QVERIFY(inUse > 0);
        QCOMPARE(lines.mid(inUse + 1),
                 QStringList({" IdleAction           lock", " IdleActionSec        1800",
                              " HandleLidSwitch      suspend", " IdleHint             no", ""}));
    }

    void failingSources_data()
    {
        QTest::addColumn<QString>("system");
        QTest::addColumn<QString>("session");
        QTest::addColumn<QString>("flag"); // null: the fake services are not started
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("mentions"); // one per line of standard error, in order
        QTest::addColumn<int>("held");             // assertions listed by the sources that answered
        const QString nowhere = "unix:path=" + m_dir.filePath("nowhere");
        QTest::addRow("no buses: nothing held")
            << nowhere << nowhere << QString() << 0 << QStringList{"system bus", "session bus"} << 0;
        QTest::addRow("buses without the services: nothing held")
            << m_empty << m_empty << QString() << 0
            << QStringList{"org.freedesktop.login1", "org.gnome.SessionManager",
                           "org.kde.Solid.PowerManagement.PolicyAgent"}
            << 0;
        QTest::addRow("logind answers with the wrong type")
            << m_empty << m_empty << u"--malformed-logind"_s << 1 << QStringList{"malformed reply"} << 0;
        QTest::addRow("session manager refuses")
            << m_empty << m_empty << u"--deny-gnome"_s << 1 << QStringList{"AccessDenied"} << 0;
        // Seven logind locks and one KDE inhibition; the session manager's are missing.
        QTest::addRow("session manager never answers: listed without it")
            << m_empty << m_empty << u"--silent-gnome"_s << 0
            << QStringList{"org.gnome.SessionManager at /org/gnome/SessionManager: no answer in time"} << 8;
        QTest::addRow("a bus that never answers: the stand-in gives up")
            << "unix:path=" + m_mute.fullServerName() << m_empty << QString() << 1
            << QStringList{"no listing within 8 s"} << 0;
        QTest::addRow("session manager answers each call slowly: cut off at its deadline")
            << m_empty << m_empty << u"--slow-gnome"_s << 0
            << QStringList{"org.gnome.SessionManager at /org/gnome/SessionManager/"} << 8;
    }
    void failingSources()
    {
        QFETCH(QString, system);
        QFETCH(QString, session);
        QFETCH(QString, flag);
        QFETCH(int, status);
        QFETCH(QStringList, mentions);
        QFETCH(int, held);
        useBuses(system, session);
        QProcess fake, run;
        if (!flag.isNull())
            QVERIFY(startFake(fake, {flag}) > 0);
        run.start(standin, {"-g", "assertions"});
        // A hang guard below the bus library's own 25 s, which a silent service would otherwise cost.
        QVERIFY(run.waitForFinished(15000));
        fake.kill();
        fake.waitForFinished();
        QCOMPARE(run.exitCode(), status);
        const QStringList errors =
            QString::fromUtf8(run.readAllStandardError()).split('\n', Qt::SkipEmptyParts);
        QVERIFY2(errors.size() == mentions.size(), qPrintable(errors.join("\n")));
        for (qsizetype i = 0; i < errors.size(); ++i)
            QVERIFY2(errors[i].startsWith("lullwick-pmset: ") && errors[i].contains(mentions[i]),
                     qPrintable(errors[i]));
        if (status != 0)
            return;
        const AssertionsSnapshot snapshot =
            PMSetService::parse(QString::fromUtf8(run.readAllStandardOutput()), {});
        QVERIFY(snapshot.rawOutput.split('\n').contains("Listed by owning process:"));
        QCOMPARE(snapshot.assertions.size(), qsizetype(held));
        QVERIFY2(countersMatch(snapshot), qPrintable(snapshot.rawOutput));
    }

    void restartEvidence_data()
    {
        QTest::addColumn<QString>("flag"); // null: the services of initTestCase
        QTest::addColumn<QList<Lock>>("locks");
        QTest::addColumn<std::optional<qint64>>("delayLimit");
        QTest::addRow("a blocking shutdown lock and a logout inhibitor")
            << QString() << QList<Lock>{{"block", "apt", "Upgrading packages", 0, fakeName}}
            << std::optional<qint64>();
        QTest::addRow("a shutdown delay lock, with logind's limit")
            << u"--delay-shutdown"_s
            << QList<Lock>{{"delay", "Unattended Upgrades Shutdown", "Stop ongoing upgrades", 0, fakeName}}
            << std::optional<qint64>(30);
    }
    void restartEvidence()
    {
        QFETCH(QString, flag);
        QFETCH(QList<Lock>, locks);
        QProcess fake, run;
        if (flag.isNull()) {
            useBuses(m_system, m_session);
        } else {
            useBuses(m_empty, m_empty);
            QVERIFY(startFake(fake, {flag}) > 0);
        }
        const qint64 fakePid = flag.isNull() ? m_fake.processId() : fake.processId();
        run.start(standin, {"--restart-evidence"});
        QVERIFY(run.waitForFinished(30000));
        fake.kill();
        fake.waitForFinished();
        QCOMPARE(run.exitCode(), 0);
        const InhibitorEvidence evidence = InhibitorEvidence::parse(run.readAllStandardOutput());
        for (Lock &lock : locks)
            lock.pid = fakePid;
        QCOMPARE(evidence.shutdownLocks, locks);
        QTEST(evidence.inhibitDelayMaxSeconds, "delayLimit");
        // The package update counts; the cache refresh changes no software.
        QCOMPARE(evidence.packageTransactions, QStringList{"update-packages"});
        // Only the logout-only inhibitor of the three GNOME ones holds up a logout.
        QCOMPARE(evidence.logoutInhibitors,
                 (QList<Inhibitor>{{"org.gnome.TextEditor", "Unsaved documents", 0, QString()}}));
    }

    void realLogindLocks()
    {
        // systemd-logind itself, on a private system bus in a mount namespace of the test's own.
        QByteArray output;
        runLogindRig({}, output);
        if (QTest::currentTestFailed() || output.isNull())
            return;
        const InhibitorEvidence evidence = InhibitorEvidence::parse(output);
        // logind lists its locks in no particular order.
        QStringList locks;
        for (const Lock &lock : evidence.shutdownLocks)
            locks.append(lock.mode + ": " + lock.who + ": " + lock.why);
        locks.sort();
        QCOMPARE(locks, (QStringList{"block: Backup Tool: Copying files",
                                     "delay: Unattended Upgrades Shutdown: Stop ongoing upgrades"}));
        QCOMPARE(evidence.inhibitDelayMaxSeconds, 5); // logind's default
        // Each lock is held by a systemd-inhibit for the command it runs, which is the one named.
        for (const Lock &lock : evidence.shutdownLocks)
            QVERIFY2(lock.pid > 0 && lock.processName == "sleep", output.constData());
    }

    // The copy of locks that systemd-logind itself holds names both holders and both reasons.
    void realLogindLocksInTheCopy()
    {
        QByteArray output;
        runLogindRig({"-g", "assertions"}, output);
        if (QTest::currentTestFailed() || output.isNull())
            return;
        const ScopedProfile linux(Profile::System::Linux);
        const QString copy = SummaryClipboard::text(PMSetService::parse(output, {}), {});
        for (const char *line : {"  • Backing up home  (held 00:00:", "    “Backing up home” — Backup\n",
                                 "  • Playing “Le Café” full screen  (held 00:00:",
                                 "    “Playing “Le Café” full screen” — Video Player\n"})
            QVERIFY2(copy.contains(QString::fromUtf8(line)), qPrintable(copy));
    }

    void awkwardTextSurvivesTheReader()
    {
        const InhibitorLine line(4242, "bad: name) (x)", "login1:7", 90061, "PreventSystemSleep",
                                 "say \"hi\"\nagain", std::nullopt,
                                 QStringList{"Who: two\nlines Created for PID: 1"});
        const AssertionsSnapshot snapshot = PMSetService::parse(AssertionListing::text({line}), {});
        QCOMPARE(snapshot.assertions.size(), 1);
        const Assertion &a = snapshot.assertions.first();
        QCOMPARE(a.pid, 4242);
        QCOMPARE(a.processName, "bad： name） (x）");
        QCOMPARE(a.assertionID, "login1:7");
        QCOMPARE(a.timeHeld, "25:01:01");
        QCOMPARE(a.namedReason, "say ”hi” again");
        QCOMPARE(a.extras, "Who: two lines Created for PID： 1");
        QCOMPARE(a.createdForPID(), std::nullopt); // a name cannot claim another process
    }

    void referencesMatchLogindsRecords()
    {
        QTemporaryDir dir;
        const QByteArray player = "WHAT=idle\nWHO=Player\nWHY=Video\nMODE=block\nUID=1000\nPID=20\n";
        writeFile(dir.filePath("3"), "WHAT=sleep\nWHO=Backup\nWHY=Indexing\nMODE=block\nUID=0\nPID=10\n");
        writeFile(dir.filePath("4"), "WHAT=sleep\nWHO=Backup\nWHY=Copying \\\"photos\\\" to B\\xc3\\xbccher\n"
                                     "MODE=block\nUID=0\nPID=10\n");
        writeFile(dir.filePath("4.ref"), {}); // logind's pipe: only its age is read
        writeFile(dir.filePath("5"), player);
        writeFile(dir.filePath("8"), player);
        // An escape cut short at the very end of the record is kept as it is written.
        writeFile(dir.filePath("9"), "WHAT=sleep\nWHO=Cut\nMODE=delay\nUID=0\nPID=11\nWHY=ends in \\x4");
        InhibitorReferences references(dir.path());
        QCOMPARE(references.take({"sleep", "Cut", "ends in x4", "delay", 0, 11})->id, "9");

        const auto copying =
            references.take({"sleep", "Backup", "Copying \"photos\" to Bücher", "block", 0, 10});
        QVERIFY(copying);
        QCOMPARE(copying->id, "4"); // the escaped reason told it from record 3
        QVERIFY(copying->created.isValid());
        QVERIFY(qAbs(copying->created.secsTo(QDateTime::currentDateTimeUtc())) < 60);

        const LogindLock video{"idle", "Player", "Video", "block", 1000, 20};
        const auto first = references.take(video), second = references.take(video);
        QVERIFY(first && second);
        QCOMPARE(first->id + second->id, "58"); // identical locks get one record each
        QVERIFY(!first->created.isValid());     // no pipe, no age
        QVERIFY(!references.take(video));
    }
};

QTEST_GUILESS_MAIN(TestStandin)
#include "tst_standin.moc"
