// The last suspends, from the system journal: pasted real outputs, hostile entries, and the real
// journalctl reading journal files that the real systemd-journal-remote wrote.

#include "Fixtures.h"
#include "PrivateMounts.h"
#include "platform/DateFormat.h"
#include "profile/Profile.h"
#include "sleep/LastSuspends.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace lullwick;
using namespace Qt::StringLiterals;
using Fixtures::writeFile;

namespace {

const QByteArray thisBoot = "0f1e2d3c4b5a69788796a5b4c3d2e1f0";
const QByteArray earlierBoot = "8d1e0f2a6b9c4d3e8f7a6b5c4d3e2f1a";

// Who writes a line: the kernel, systemd-sleep, logind, the service manager, or a user's program.
enum class By { kernel, sleep, logind, manager, user };

struct Line {
    By by;
    QString message;
    double at = 0; ///< seconds after the first line
    QByteArray boot = thisBoot;
    QString unit = {};
    int priority = 6; ///< the kernel's level: 3 for errors
};

QJsonObject fieldsOf(const Line &line, qint64 start)
{
    QJsonObject o{{"MESSAGE", line.message},
                  {"_BOOT_ID", QString::fromLatin1(line.boot)},
                  {"__REALTIME_TIMESTAMP", QString::number(start + qint64(line.at * 1e6))}};
    const char *comm[] = {"kernel", "systemd-sleep", "systemd-logind", "systemd", "logger"};
    o["_TRANSPORT"] = line.by == By::kernel ? "kernel" : line.by == By::user ? "syslog" : "journal";
    if (line.by != By::kernel) {
        o["_COMM"] = comm[int(line.by)];
        o["_UID"] = line.by == By::user ? "1000" : "0";
        o["SYSLOG_IDENTIFIER"] = line.by == By::user ? "systemd-logind" : comm[int(line.by)];
    }
    if (!line.unit.isEmpty())
        o["UNIT"] = line.unit;
    o["PRIORITY"] = QString::number(line.priority);
    return o;
}

QByteArray asJson(const QList<Line> &lines, qint64 start = 1750000000000000)
{
    QByteArray out; // newest first, as the reader asks journalctl for them
    for (const Line &line : lines)
        out.prepend(QJsonDocument(fieldsOf(line, start)).toJson(QJsonDocument::Compact) + '\n');
    return out;
}

// A pasted output as journal entries: syslog lines ("Jun 20 08:43:03 host kernel: …"), dmesg
// lines ("[ 9861.789184] …") or bare kernel lines. A unit's messages carry its name as UNIT.
QList<Line> fromPaste(const QString &paste)
{
    static const QRegularExpression syslog(
        u"^\\w{3} +\\d+ (\\d\\d):(\\d\\d):(\\d\\d) \\S+ ([^:\\[]+)(?:\\[\\d+\\])?: (.*)$"_s);
    static const QRegularExpression stamp(u"^\\[ *(\\d+\\.\\d+)\\] ?"_s);
    static const QRegularExpression unit(u"^([\\w@.-]+\\.(?:service|slice)): "_s);
    QList<Line> lines;
    for (const QString &text : paste.split(u'\n', Qt::SkipEmptyParts)) {
        Line line{By::kernel, text, double(lines.size())};
        if (const QRegularExpressionMatch m = syslog.match(text); m.hasMatch()) {
            line.at = m.captured(1).toInt() * 3600 + m.captured(2).toInt() * 60 + m.captured(3).toInt();
            const QString who = m.captured(4);
            line.by = who == u"kernel"           ? By::kernel
                      : who == u"systemd-sleep"  ? By::sleep
                      : who == u"systemd-logind" ? By::logind
                                                 : By::manager;
            line.message = m.captured(5);
        }
        if (line.by == By::kernel)
            line.message.remove(stamp);
        line.unit = unit.match(line.message).captured(1);
        lines.append(line);
    }
    return lines;
}

QStringList titles(const QList<Finding> &findings)
{
    QStringList out;
    for (const Finding &f : findings)
        out.append(f.title);
    return out;
}

QString date(double at, qint64 start)
{
    return DateFormat::completeDateTime(
        QDateTime::fromMSecsSinceEpoch((start + qint64(at * 1e6)) / 1000, Qt::UTC));
}

} // namespace

Q_DECLARE_METATYPE(Line)

class TestLastSuspends : public QObject {
    Q_OBJECT

    const qint64 m_start = (QDateTime::currentMSecsSinceEpoch() - 12 * 3600 * 1000) * 1000;
    const LastSuspends::Context context{thisBoot, {u"XHC0: USB controller (pci 0000:0d:00.3)"_s}, {}};

private slots:
    void initTestCase() { QVERIFY(Profile::current().kind() == Profile::System::Linux); }

    // What users pasted, in the kernel's and systemd's wordings of several years.
    void pastedOutputs_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *file, const QStringList &expected) {
            QTest::addRow("%s", file) << QString::fromLatin1(file) << expected;
        };
        row("01-freeze-zulip-dstate-60s-2025", {"A suspend failed because zulip could not be stopped"});
        row("03-freeze-syncthing-fuse-dmesg-manjaro-2018",
            {"A suspend failed because syncthing could not be stopped"});
        row("06-usb2-failed-suspend-ebusy-surface-2019",
            {"A suspend failed because usb2 refused to suspend"});
        row("07-nvidia-no-procfs-interface-dmesg-mint-2025",
            {u"NVIDIA’s suspend steps are missing or failing"_s});
        row("09-nvidia-suspend-service-203-exec-nixos-2025",
            {u"NVIDIA’s suspend steps are missing or failing"_s});
        row("13-logind-suspend-target-masked-authlog-debian11-2023",
            {"Suspend was refused earlier: suspend.target was masked"});
        row("21-wakeup-pending-wlan-timeout-gemian-2021",
            {"A suspend was called off because WLAN timeout asked to wake the computer"});
        // Neither says why a suspend failed: one shows the firmware's sleep state, the other a
        // unit the reporter broke on purpose to make logind fail.
        row("19-dmesg-acpi-s3-enter-wake-xps-nixos-2019", {});
        row("30-logind-lid-suspend-then-missing-unit-krowka-2022", {});
    }
    void pastedOutputs()
    {
        QFETCH(QString, file);
        const QList<Finding> found = LastSuspends::fromJournal(
            asJson(fromPaste(Fixtures::readText("linux-sleep/" + file + ".txt"))), context);
        QTEST(titles(found), "expected");
        if (file.startsWith(u"09"))
            QVERIFY2(found[0].detail.contains(u"nvidia-suspend.service: Failed to execute /nix/store/"),
                     qPrintable(found[0].detail));
        if (file.startsWith(u"03"))
            QVERIFY2(found[0].detail.contains(u"syncthing (PID 1301), waiting for a file or device"),
                     qPrintable(found[0].detail));
    }

    // Untrusted text: what a broken or hostile journal gives never crashes, hangs, injects a
    // finding or breaks a line.
    void hostileJournal_data()
    {
        QTest::addColumn<QByteArray>("journal");
        QTest::addColumn<QStringList>("expected");
        const QString failed =
            u"Freezing user space processes failed after 20.001 seconds (1 tasks refusing to freeze, wq_busy=0):"_s;
        QTest::addRow("a user who calls himself logind or writes kernel words")
            << asJson({{By::user, u"Unit suspend.target is masked, refusing operation."_s},
                       {By::user, u"PM: Device usb2 failed to suspend async: error -16"_s}})
            << QStringList();
        QTest::addRow("a task line without a freezer failure before it names nobody")
            << asJson({{By::kernel, u"task:evil            state:D stack:0 pid:9"_s}}) << QStringList();
        QTest::addRow("a name with control characters stays on its line")
            << asJson({{By::kernel, failed}, {By::kernel, u"task:ev\nil\x1b[2J state:D stack:0 pid:9"_s}})
            << QStringList{"A suspend failed because ev il [2J could not be stopped"};
        QJsonArray bytes;
        for (const char c : QByteArray("task:caf\xe9 state:D pid:7"))
            bytes.append(int(uchar(c)));
        QByteArray notUtf8 = asJson({{By::kernel, failed}});
        notUtf8.prepend(QJsonDocument(QJsonObject{{"MESSAGE", bytes},
                                                  {"_TRANSPORT", "kernel"},
                                                  {"_BOOT_ID", QString::fromLatin1(thisBoot)}})
                            .toJson(QJsonDocument::Compact) +
                        '\n');
        QTest::addRow("a message in bytes that are not UTF-8")
            << notUtf8 << QStringList{u"A suspend failed because caf\uFFFD could not be stopped"_s};
        QTest::addRow("a huge line, lines that are no entries, entries without fields")
            << QByteArray("{\"MESSAGE\":\"" + QByteArray(200000, 'x') +
                          "\"}\nnot json\n[1,2]\n\x01\xff\n{}\n"
                          "{\"MESSAGE\":12,\"_TRANSPORT\":\"kernel\",\"_BOOT_ID\":\"" +
                          thisBoot + "\"}\n")
            << QStringList();
        QTest::addRow("an exit before its entry is no quick wake")
            << asJson({{By::sleep, u"System returned from sleep state."_s, 0},
                       {By::sleep, u"Entering sleep state 'suspend'..."_s, 2}})
            << QStringList();
        QList<Line> many{{By::kernel, failed}};
        for (int i = 0; i < 5000; ++i)
            many.append({By::kernel, u"task:t%1 state:D pid:%1"_s.arg(i)});
        QTest::addRow("thousands of tasks")
            << asJson(many) << QStringList{"A suspend failed because t0 could not be stopped"};
    }
    void hostileJournal()
    {
        QFETCH(QByteArray, journal);
        const QList<Finding> found = LastSuspends::fromJournal(journal, context);
        QTEST(titles(found), "expected");
        for (const Finding &f : found) {
            QVERIFY(!f.title.contains(u'\n') && !f.title.contains(u'\x1b'));
            QVERIFY2(f.detail.count(u'\n') < 16, qPrintable(f.detail));
        }
    }

    // The real journalctl, with the program's own arguments, on journal files that the real
    // systemd-journal-remote wrote, as the program runs it.
    void realJournal_data()
    {
        QTest::addColumn<QList<Line>>("lines");
        QTest::addColumn<QString>("user"); // empty: root
        QTest::addColumn<int>("access");
        QTest::addColumn<QStringList>("expected");
        const qint64 start = m_start;
        const auto ok = int(LastSuspends::Access::read);
        const Line entering{By::sleep, u"Entering sleep state 'suspend'..."_s};
        const Line entry{By::kernel, u"PM: suspend entry (deep)"_s};
        QList<Line> freezer{
            entering,
            entry,
            {By::kernel, u"Freezing user space processes"_s},
            {By::kernel,
             u"Freezing user space processes failed after 20.005 seconds (2 tasks refusing to freeze, wq_busy=0):"_s,
             20,
             thisBoot,
             {},
             3},
            {By::kernel, u"task:syncthing       state:D stack:0     pid:1301  ppid:1273   flags:0x00004006"_s,
             20},
            {By::kernel, u" __schedule+0x2b6/0x620"_s, 20},
            {By::kernel, u"task:unattended-upgr state:D stack:0     pid:812   ppid:1      flags:0x00004006"_s,
             20},
            {By::kernel, u"PM: suspend exit"_s, 21},
            {By::sleep, u"Failed to put system to sleep. System resumed again: Device or resource busy"_s,
             21}};
        QTest::addRow("a freezer failure names both tasks")
            << freezer << QString() << ok
            << QStringList{"A suspend failed because syncthing and unattended-upgr could not be stopped"};
        QTest::addRow("a device that refused")
            << QList<Line>{entering,
                           entry,
                           {By::kernel,
                            u"usb usb2: PM: failed to suspend async: error -16"_s,
                            2,
                            thisBoot,
                            {},
                            3},
                           {By::kernel,
                            u"PM: Some devices failed to suspend, or early wake event detected"_s,
                            2,
                            thisBoot,
                            {},
                            3},
                           {By::kernel, u"PM: suspend exit"_s, 3},
                           {By::sleep,
                            u"Failed to put system to sleep. System resumed again: Device or resource busy"_s,
                            3}}
            << QString() << ok << QStringList{"A suspend failed because usb2 (usb) refused to suspend"};
        QTest::addRow("NVIDIA's unit failing")
            << QList<Line>{{By::logind, u"The system will suspend now!"_s},
                           {By::manager,
                            u"nvidia-suspend.service: Main process exited, code=exited, status=203/EXEC"_s, 1,
                            thisBoot, u"nvidia-suspend.service"_s},
                           {By::manager, u"nvidia-suspend.service: Failed with result 'exit-code'."_s, 1,
                            thisBoot, u"nvidia-suspend.service"_s}}
            << QString() << ok << QStringList{u"NVIDIA’s suspend steps are missing or failing"_s};
        QTest::addRow("a wake after 3 seconds")
            << QList<Line>{entering,
                           entry,
                           {By::kernel, u"ACPI: PM: Waking up from system sleep state S3"_s, 2},
                           {By::kernel, u"PM: suspend exit"_s, 3},
                           {By::sleep, u"System returned from sleep state."_s, 3}}
            << QString() << ok << QStringList{"It woke up 3 seconds after it went to sleep"};
        QTest::addRow("a previous boot that ends in a suspend")
            << QList<Line>{{By::sleep, entering.message, 0, earlierBoot},
                           {By::kernel, entry.message, 0, earlierBoot},
                           {By::kernel, u"Linux version 6.1.0-18-amd64"_s, 600}}
            << QString() << ok
            << QStringList{u"The computer stopped responding while suspending on "_s + date(0, start)};
        // A night's sleep, and a user's program pretending to be logind, which journalctl leaves out.
        QTest::addRow("a clean night's sleep")
            << QList<Line>{{By::user, u"Unit suspend.target is masked, refusing operation."_s},
                           entering,
                           entry,
                           {By::kernel, u"PM: suspend exit"_s, 8 * 3600 + 5},
                           {By::sleep, u"System returned from sleep state."_s, 8 * 3600 + 6}}
            << QString() << ok
            << QStringList{u"The last suspend went well: it slept for 8 h from "_s + date(0, start)};
        QTest::addRow("a journal the user may not read")
            << freezer << u"nobody"_s << int(LastSuspends::Access::denied) << QStringList();
    }
    void realJournal()
    {
        QFETCH(QList<Line>, lines);
        QFETCH(QString, user);
        if (const std::optional<QString> why =
                privateMountsUnavailable({"/lib/systemd/systemd-journal-remote", "/usr/bin/journalctl",
                                          "/etc/machine-id", "/usr/bin/setpriv"}))
            QSKIP(qPrintable(*why));
        QFile machineFile("/etc/machine-id");
        QVERIFY(machineFile.open(QIODevice::ReadOnly));
        const QByteArray machine = machineFile.readAll().trimmed();
        const qint64 start = m_start;

        QByteArray exported;
        for (const Line &line : lines) {
            const QJsonObject fields = fieldsOf(line, start);
            exported += "__REALTIME_TIMESTAMP=" + fields["__REALTIME_TIMESTAMP"].toString().toLatin1() +
                        "\n__MONOTONIC_TIMESTAMP=" + QByteArray::number(qint64(line.at * 1e6) + 1000) +
                        "\n_MACHINE_ID=" + machine + '\n';
            for (auto it = fields.begin(); it != fields.end(); ++it) {
                if (it.key() != u"__REALTIME_TIMESTAMP")
                    exported += it.key().toUtf8() + '=' + it.value().toString().toUtf8() + '\n';
            }
            exported += '\n';
        }
        QTemporaryDir dir;
        writeFile(dir.filePath("entries.export"), exported);
        // The program runs journalctl by its path with its arguments; here that path is a script
        // that puts the journal in place first.
        const QString journalctl = dir.filePath("journalctl");
        writeFile(journalctl,
                  "#!/bin/sh\nexec /usr/bin/unshare -m --propagation private /bin/sh " LULLWICK_JOURNAL_RIG
                  " " +
                      (user.isEmpty() ? QByteArray() : "--as=" + user.toLatin1() + ' ') +
                      dir.filePath("entries.export").toLocal8Bit() + " \"$@\"\n");
        QVERIFY(QFile::setPermissions(journalctl, QFile::ReadOwner | QFile::ExeOwner));
        const std::atomic<bool> keepGoing{false};
        const LastSuspends::Reading reading =
            LastSuspends::read(journalctl, context, keepGoing, QDeadlineTimer(60000));
        QTEST(int(reading.access), "access");
        QTEST(titles(reading.findings), "expected");
        if (QTest::currentDataTag() == QByteArrayView("a freezer failure names both tasks"))
            QVERIFY2(reading.findings[0].detail.contains(u"unattended-upgr… (the kernel keeps 15 characters"),
                     qPrintable(reading.findings[0].detail));
        if (QTest::currentDataTag() == QByteArrayView("a wake after 3 seconds"))
            QVERIFY(reading.findings[0].detail.endsWith(u"XHC0: USB controller (pci 0000:0d:00.3)"));
    }
};

QTEST_GUILESS_MAIN(TestLastSuspends)
#include "tst_lastsuspends.moc"
