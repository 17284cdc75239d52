#include "FakeToolDir.h"
#include "Fixtures.h"
#include "PrivateMounts.h"
#include "details/DetailsClipboard.h"
#include "pmset/PMSetService.h"
#include "report/ReportMetrics.h"
#include "restart/RestartClipboard.h"
#include "restart/RestartModel.h"
#include "sleep/SleepCheck.h"
#include "summary/SummaryClipboard.h"

#include <QtTest>
#include <csignal>
#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

using namespace lullwick;

namespace {

constexpr int waitMs = 20'000;
const QString ownPid = QString::number(QCoreApplication::applicationPid());

/// The listing whose one created-for PID is this test's own, so the real ps names it.
QByteArray everyField()
{
    return Fixtures::readText("assertions-every-field.txt").replace("1069", ownPid).toUtf8();
}

/// A pseudo-terminal that passes bytes through unchanged (no CR before LF).
struct Terminal {
    int master = -1;
    int slave = -1;

    Terminal()
    {
        termios raw = {};
        cfmakeraw(&raw);
        if (::openpty(&master, &slave, nullptr, &raw, nullptr) != 0)
            qFatal("no pseudo-terminal");
        ::fcntl(master, F_SETFD, FD_CLOEXEC);
        ::fcntl(master, F_SETFL, O_NONBLOCK);
    }
    ~Terminal()
    {
        ::close(master);
        ::close(slave);
    }
    Q_DISABLE_COPY_MOVE(Terminal)

    /// Appends what the program has written so far.
    void drainInto(QByteArray &bytes) const
    {
        char buffer[4096];
        for (ssize_t n; (n = ::read(master, buffer, sizeof buffer)) > 0;)
            bytes.append(buffer, n);
    }
};

/// Where the report's standard output goes.
enum class Output { pipe, terminal, fullDisk, closed };

struct Run {
    int status = -1;
    QByteArray out, err;
    QDateTime from, to; ///< the run's span; from a whole second, as the texts show no fractions
};

/// A copy of the built report beside a `lullwick-pmset` link to the fake pmset: the report finds
/// its pmset next to itself, and the fake reads its behaviour files next to the link.
struct Rig {
    FakeToolDir fake;
    QString report;
    QStringList prefix; ///< a program and its arguments that start the report

    explicit Rig(const QByteArray &listing)
    {
        fake.setOutput("assertions", listing);
        fake.setOutputFromFixture("settings", "settings-typical.txt");
        fake.setOutput("restart-evidence",
                       "shutdown-lock\tblock\tNightly copy\tCopying files\t4321\tcopyjobd\n");
        report = fake.placeProgram(LULLWICK_REPORT);
        if (!fake.isValid() || report.isEmpty())
            qFatal("cannot set up the report beside the fake pmset");
    }

    /// Runs the report with `input` on its standard input (a pipe), or, for a terminal, with the
    /// terminal as its standard input and output, as in a terminal window.
    [[nodiscard]] Run run(const QStringList &arguments, Output output = Output::pipe,
                          const QByteArray &input = {}) const
    {
        // No display of any kind: the report must not need one.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        QProcess process;
        process.setProcessEnvironment(environment);
        std::optional<Terminal> terminal;
        switch (output) {
        case Output::pipe:
            break;
        case Output::terminal:
            terminal.emplace();
            process.setChildProcessModifier([fd = terminal->slave] {
                ::setsid();
                ::ioctl(fd, TIOCSCTTY, 0);
                ::dup2(fd, STDIN_FILENO);
                ::dup2(fd, STDOUT_FILENO);
            });
            break;
        case Output::fullDisk:
            process.setStandardOutputFile("/dev/full");
            break;
        case Output::closed:
            process.setChildProcessModifier([] { ::close(STDOUT_FILENO); });
            break;
        }
        Run run;
        const QDateTime start = QDateTime::currentDateTimeUtc();
        run.from = start.addMSecs(-start.time().msec());
        process.start(prefix.value(0, report),
                      prefix.mid(1) + (prefix.isEmpty() ? arguments : QStringList{report} + arguments));
        process.write(input);
        process.closeWriteChannel();
        QByteArray shown;
        for (const QDeadlineTimer guard(waitMs); !guard.hasExpired() && !process.waitForFinished(10);) {
            if (terminal)
                terminal->drainInto(shown);
        }
        if (process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit)
            run.status = process.exitCode();
        run.to = QDateTime::currentDateTimeUtc();
        if (terminal)
            terminal->drainInto(shown);
        run.out = terminal ? shown : process.readAllStandardOutput();
        run.err = process.readAllStandardError();
        return run;
    }
};

/// What `build` gives for the whole second within the run that matches the output, if one does;
/// otherwise for the run's end, so that a failing comparison shows a near miss.
QString expectedWithin(const Run &run, const std::function<QString(const QDateTime &)> &build)
{
    for (QDateTime second = run.from; second <= run.to; second = second.addSecs(1)) {
        if (build(second).toUtf8() == run.out)
            return build(second);
    }
    return build(run.to);
}

/// One sample of a Prometheus text exposition.
struct Sample {
    QString name;
    QMap<QString, QString> labels; // unescaped
    double value = 0;
};

/// Reads an exposition strictly: each family is a HELP line, a TYPE line and at least one sample,
/// once; names are prefixed and valid; label values unescape; no series repeats; no timestamps.
QList<Sample> readExposition(const QString &text, QString &error)
{
    static const QRegularExpression help(R"(^# HELP (lullwick_[a-z_]+) \S.*\n# TYPE \1 gauge$)"),
        sample(R"(^(lullwick_[a-z_]+)(?:\{(.*)\})? (\S+)$)"),
        label(R"re(([a-z_]+)="((?:[^"\\]|\\[\\"n])*)",?)re");
    QList<Sample> samples;
    QStringList families, series;
    const QStringList lines = text.split('\n');
    for (qsizetype i = 0; i < lines.size() - 1 && error.isEmpty(); ++i) {
        if (const QRegularExpressionMatch h = help.match(lines[i] + '\n' + lines.value(i + 1));
            h.hasMatch()) {
            if (families.contains(h.captured(1)) ||
                (!families.isEmpty() && samples.last().name != families.last()))
                error = QString("family out of order at line %1").arg(i + 1);
            families.append(h.captured(1));
            ++i;
            continue;
        }
        const QRegularExpressionMatch s = sample.match(lines[i]);
        bool valid = false;
        Sample read{s.captured(1), {}, s.captured(3).toDouble(&valid)};
        qsizetype length = 0;
        for (const QRegularExpressionMatch &l : label.globalMatch(s.captured(2))) {
            length += l.capturedStart() == length ? l.capturedLength() : 0;
            QString value = l.captured(2);
            for (qsizetype c = value.indexOf('\\'); c >= 0; c = value.indexOf('\\', c + 1))
                value.replace(c, 2, value[c + 1] == 'n' ? QChar('\n') : value[c + 1]);
            valid = valid && !read.labels.contains(l.captured(1)) && !s.captured(2).endsWith(',');
            read.labels.insert(l.captured(1), value);
        }
        const QString key = read.name + QStringList(read.labels.keys() + read.labels.values()).join('\0');
        if (!valid || length != s.captured(2).size() || families.value(families.size() - 1) != read.name ||
            series.contains(key))
            error = QString("bad or repeated sample at line %1: %2").arg(i + 1).arg(lines[i]);
        series.append(key);
        samples.append(read);
    }
    if (!text.endsWith('\n') || (!families.isEmpty() && samples.last().name != families.last()))
        error = "no final line feed, or a family without samples";
    return samples;
}

} // namespace

// Declared before the data functions use it as a column type.
Q_DECLARE_METATYPE(Output)

class TestReport : public QObject {
    Q_OBJECT

    QJsonDocument m_json;
    Run m_jsonRun;
    QHash<QString, QString> m_metrics; // by where they came from
    int m_failedStatus = -1;

private Q_SLOTS:
    void initTestCase()
    {
        m_jsonRun = Rig(everyField()).run({"--json", "restart"});
        m_json = QJsonDocument::fromJson(m_jsonRun.out);

        m_metrics["reading"] = QString::fromUtf8(Rig(everyField()).run({"metrics"}).out);
        const Rig failing({});
        failing.fake.setExitStatus("assertions", 1);
        const Run failed = failing.run({"metrics"});
        m_metrics["failed reading"] = QString::fromUtf8(failed.out);
        m_failedStatus = failed.status;
        // Twelve holders of all sleep, the first named by the process it acts for, in words of its own.
        QString listing = "Listed by owning process:\n";
        for (int i = 0; i < 12; ++i)
            listing += QString("   pid %1(holder%1): [%1] %2 PreventSystemSleep\n%3")
                           .arg(i)
                           .arg(i ? "unknown" : "1:00:00", i ? "" : "\tCreated for PID: 42\n");
        const QDateTime at(QDate(2026, 11, 20), QTime(10, 0), Qt::UTC);
        const QList<Finding> sleepFindings{
            Finding::make(FindingSeverity::possible, "A new check", "t", "d", "a")};
        m_metrics["hostile names"] = QString::fromUtf8(ReportMetrics::text({PMSetService::parse(listing, at),
                                                                            {{42, " say \"hi\" \\ to\nme "}},
                                                                            std::nullopt,
                                                                            sleepFindings,
                                                                            "1"}));
    }

    void metricsReadBack_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("labels"); // all of them
        QTest::addColumn<double>("value");       // NaN: no such sample
        const auto row = [](const char *name, const char *from, const char *metric, const QStringList &labels,
                            double value) {
            QTest::addRow("%s", name) << from << QString("lullwick_") + metric << labels << value;
        };
        const double absent = qQNaN();
        row("reading worked", "reading", "up", {}, 1);
        row("all sleep blocked", "reading", "sleep_blocked", {"kind=system"}, 1);
        row("holder named by the process it acts for", "reading", "blocker_info",
            {"kind=idle", "holder=tst_report"}, 1);
        row("locks of idle sleep", "reading", "locks", {"what=idle", "mode=block"}, 3);
        row("restart finding by source", "reading", "restart_findings",
            {"severity=likely", "source=shutdown_locks"}, 1);
        row("restart findings: every series, zero too", "reading", "restart_findings",
            {"severity=info", "source=other"}, 0);
        row("sleep check: every series, zero too", "reading", "sleep_findings",
            {"severity=info", "source=other"}, 0);
        row("failed reading, no sleep check", "failed reading", "sleep_findings",
            {"severity=info", "source=other"}, absent);
        row("failed reading said", "failed reading", "up", {}, 0);
        row("failed reading counts nothing", "failed reading", "sleep_blocked", {"kind=system"}, absent);
        row("holder escaped and trimmed", "hostile names", "blocker_info",
            {"kind=system", "holder=say \"hi\" \\ to\nme"}, 1);
        row("holders capped at ten", "hostile names", "blocker_info", {"kind=system", "holder=holder10"},
            absent);
        row("blocked since the longest-held lock", "hostile names", "sleep_blocked_since_timestamp_seconds",
            {"kind=system"}, QDateTime(QDate(2026, 11, 20), QTime(9, 0), Qt::UTC).toSecsSinceEpoch());
        row("unknown finding source is other", "hostile names", "sleep_findings",
            {"severity=possible", "source=other"}, 1);
    }
    void metricsReadBack()
    {
        QFETCH(QString, from);
        QFETCH(QString, name);
        QFETCH(QStringList, labels);
        QCOMPARE(m_failedStatus, 3);
        QString error;
        const QList<Sample> samples = readExposition(m_metrics[from], error);
        QVERIFY2(error.isEmpty(), qPrintable(error + "\n" + m_metrics[from]));
        QMap<QString, QString> wanted;
        for (const QString &label : labels)
            wanted.insert(label.section('=', 0, 0), label.section('=', 1));
        const auto found = std::find_if(samples.cbegin(), samples.cend(), [&](const Sample &s) {
            return s.name == name && s.labels == wanted;
        });
        QTEST(found == samples.cend() ? qQNaN() : found->value, "value");
    }

    void metricsPassPromtool()
    {
        if (!QFileInfo::exists("/usr/bin/promtool"))
            QSKIP("promtool is not installed");
        for (const QString &metrics : std::as_const(m_metrics)) {
            QProcess promtool;
            promtool.start("/usr/bin/promtool", {"check", "metrics"});
            promtool.write(metrics.toUtf8());
            promtool.closeWriteChannel();
            QVERIFY(promtool.waitForFinished(waitMs));
            QVERIFY2(promtool.exitCode() == 0,
                     promtool.readAllStandardOutput() + promtool.readAllStandardError());
        }
    }

    void outputFile_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("folder"); // how the folder is made unwritable
        QTest::addColumn<int>("status");
        QTest::addRow("metrics replace the old file") << QStringList{"metrics"} << QString() << 0;
        QTest::addRow("any report does") << QStringList{"--json", "restart"} << QString() << 0;
        QTest::addRow("full disk") << QStringList{"metrics"} << "size=4k" << 4;
        QTest::addRow("read-only folder") << QStringList{"details"} << "ro" << 4;
        QTest::addRow("folder it may not write") << QStringList{"metrics"} << "not mine" << 4;
    }
    void outputFile()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, folder);
        Rig rig(everyField());
        QTemporaryDir dir;
        const QString file = dir.filePath("lullwick.prom");
        QFile old(file);
        QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old\n") == 4 &&
                old.setPermissions(QFile::ReadOwner));
        old.close();
        const std::optional<QString> why = privateMountsUnavailable({"/usr/bin/mount", "/usr/bin/setpriv"});
        if (!folder.isEmpty() && why)
            QSKIP(qPrintable(*why));
        if (folder == "not mine") { // root may write anywhere: the report runs as nobody
            QFile::setPermissions(rig.fake.path(), QFile::Permissions(0x7777));
            QFile::setPermissions(dir.path(), QFile::Permissions(0x7755));
            rig.prefix =
                QStringList{"/usr/bin/setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"};
        } else if (!folder.isEmpty()) {
            // A tiny file system of its own, holding the old file, then full or read-only.
            const char *script = R"(mount -t tmpfs -o size=4k tmpfs "$1" && echo old >"$1/lullwick.prom" &&
                mount -o "remount,$2" "$1" || exit 99; d=$1; shift 2; "$@"; s=$?; ls -A "$d"; cat "$d"/*; exit $s)";
            rig.prefix = {"/usr/bin/unshare", "-m",  "--propagation", "private",
                          "/bin/sh",          "-c",  script,          "sh",
                          dir.path(),         folder};
        }
        const Run run = rig.run(arguments + QStringList{"--output", file});
        QTEST(run.status, "status");
        const bool kept = run.status != 0;
        QCOMPARE(run.err.count('\n'), kept ? 1 : 0);
        QVERIFY2(run.err.startsWith(
                     kept ? "lullwick-report: could not write the report to " + file.toUtf8() + ": " : ""),
                 run.err);
        if (folder == "size=4k" || folder == "ro") // the mounted folder, as the report left it
            QCOMPARE(run.out, QByteArray("lullwick.prom\nold\n"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{"lullwick.prom"});
        QVERIFY(old.open(QIODevice::ReadOnly));
        const QByteArray now = old.readAll();
        QVERIFY2(kept ? now == "old\n"
                      : now.startsWith(arguments.contains("metrics") ? "# HELP lullwick_up" : "{"),
                 now);
        QCOMPARE(old.permissions() & 0x7077, kept ? QFile::ReadOwner : QFile::Permissions(0x6044));
    }

    void textIsTheClipboardText_data()
    {
        QTest::addColumn<QString>("report");
        QTest::addRow("summary by default") << QString();
        QTest::addRow("summary") << "summary";
        QTest::addRow("details") << "details";
        QTest::addRow("restart after one analysis") << "restart";
    }
    void textIsTheClipboardText()
    {
        QFETCH(QString, report);
        const Rig rig(everyField());
        const Run run = rig.run(report.isNull() ? QStringList() : QStringList{report});
        QCOMPARE(run.status, 0);

        std::optional<RestartAnalysis> analysis;
        if (report == "restart") {
            RestartModel model([] { return RunningApps::current(); }, rig.fake.path() + "/lullwick-pmset");
            model.analyze();
            QTRY_VERIFY_WITH_TIMEOUT(model.analysis(), waitMs);
            analysis = model.analysis();
        }
        const QString expected = expectedWithin(run, [&](const QDateTime &at) {
            const AssertionsSnapshot reading = PMSetService::parse(QString::fromUtf8(everyField()), at);
            if (report == "details")
                return DetailsClipboard::text(reading, Fixtures::readText("settings-typical.txt"));
            if (report == "restart") {
                analysis->ranAt = at;
                return RestartClipboard::text(analysis);
            }
            // On Linux the sleep check's verdict and findings follow the capture time; the fake
            // stand-in answers nothing, so the check reads only this machine's files.
            const std::atomic<bool> keepGoing{false};
            return SummaryClipboard::text(reading, {{ownPid.toLongLong(), "tst_report"}}, {},
                                          SleepCheck{}.evaluate(SleepEvidence(), keepGoing));
        });
        QCOMPARE(QString::fromUtf8(run.out), expected);
    }

    void jsonCarriesTheReading_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("expected"); // JSON text
        QTest::addRow("schema version") << "schemaVersion" << QByteArray("1");
        QTest::addRow("counters in order")
            << "systemWideCounts/1" << QByteArray(R"j({"name": "SoftwareUpdateTask", "count": 1})j");
        QTest::addRow("created-for pid") << "assertions/0/createdForPID" << ownPid.toUtf8();
        QTest::addRow("created-for name resolved by ps")
            << "assertions/0/createdForName" << QByteArray(R"j("tst_report")j");
        // Above the largest PID Linux hands out, so ps cannot name it.
        QTest::addRow("created-for name not found") << "assertions/3/createdForName" << QByteArray("null");
        QTest::addRow("extras") << "assertions/0/extras"
                                << "\"Created for PID: " + ownPid.toUtf8() + ".\"";
        // The built profile's wording (Linux here); the Mac wording is checked in a Mac-profile build.
        QTest::addRow("record fields")
            << "assertions/2"
            << QByteArray(R"j({"pid": 5120, "processName": "backupd", "assertionID": "0x0000150000019b02",
                "timeHeld": "00:02:11", "type": "PreventSystemSleep", "kind": "preventSystemSleep",
                "namedReason": "Time Machine backup", "extras": null, "holder": null, "createdForPID": null,
                "createdForName": null, "title": "Time Machine backup",
                "description": "Refusing every suspend, automatic or asked for, until the lock is let go.",
                "blocks": ["idle", "system", "display"], "catalog": null})j");
        QTest::addRow("catalog entry of a Linux holder")
            << "assertions/1/catalog" << QByteArray(R"j({"headline": "Zoom call is active",
                "explanation": "Zoom keeps the screen on during a meeting.",
                "callToAction": "End or leave the meeting."})j");
        QTest::addRow("unknown type without name or catalog entry")
            << "assertions/5"
            << QByteArray(R"j({"pid": 877, "processName": "renderd", "assertionID": "0x0000160000019c07",
                "timeHeld": "00:00:40", "type": "RenderFarmHold", "kind": "other", "namedReason": null,
                "extras": null, "holder": null, "createdForPID": null, "createdForName": null,
                "title": "Assertion: RenderFarmHold.", "description": "Assertion: RenderFarmHold.",
                "blocks": [], "catalog": null})j");
        QTest::addRow("blockers as indexes")
            << "blockers" << QByteArray(R"j({"idle": [0, 1, 2, 4], "system": [2], "display": [1, 2]})j");
        QTest::addRow("non-blocking as indexes") << "nonBlocking" << QByteArray("[3, 5]");
        QTest::addRow("verdict")
            << "verdict"
            << QByteArray(R"j("Currently blocking: idle system sleep, all system sleep, display sleep.")j");
        QTest::addRow("restart verdict")
            << "restart/verdict" << QByteArray(R"j("Found a likely cause that’s holding up a restart.")j");
        QTest::addRow("shutdown lock finding first")
            << "restart/findings/0" << QByteArray(R"j({"severity": "likely", "source": "Shutdown locks",
                "title": "Nightly copy is blocking restart and shutdown: Copying files",
                "detail": "A program can ask systemd-logind to hold off shutdown until it’s done. While it holds such a lock, choosing Restart in the desktop does nothing — or asks whether to restart anyway — and only a forced restart gets past it. Holding a lock right now:\n\nNightly copy — Copying files (block, copyjobd, PID 4321)",
                "action": "Let it finish, then restart again. If it’s stuck, quit copyjobd from your system monitor, or with “kill 4321” in a terminal."})j");
    }
    void jsonCarriesTheReading()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, expected);
        QCOMPARE(m_jsonRun.status, 0);
        QJsonValue value = m_json.object();
        for (const QString &step : path.split('/'))
            value = value.isArray() ? value[step.toInt()] : value[step];
        QCOMPARE(value, QJsonDocument::fromJson("[" + expected + "]").array().first());
    }

    // The built profile (Linux) names each lock's holder and reason in the text, and keeps the
    // holder as a field of its own in the JSON.
    void linuxHoldersInTextAndJson_data()
    {
        QTest::addColumn<QString>("holder");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QString>("title");
        QTest::addRow("systemd-inhibit around an unknown command") << "Backup"
                                                                   << "Backing up home"
                                                                   << "Backing up home";
        QTest::addRow("another one") << "Video Player"
                                     << "Playing “Le Café” full screen"
                                     << "Playing “Le Café” full screen";
        QTest::addRow("session inhibitor of an unknown app") << "org.example.Recorder"
                                                             << "Recording a podcast episode"
                                                             << "Recording a podcast episode";
        // ps names no process here: the session's application ID finds the catalog entry.
        QTest::addRow("session inhibitor of a known player") << "org.gnome.Totem"
                                                             << "Playing video"
                                                             << "Videos (Totem) is playing media";
    }
    void linuxHoldersInTextAndJson()
    {
        QFETCH(QString, holder);
        QFETCH(QString, reason);
        QFETCH(QString, title);
        const Rig rig(Fixtures::read("inhibitors-linux-desktop.txt"));
        const QString text = QString::fromUtf8(rig.run({}).out);
        QVERIFY2(text.contains(QStringLiteral("    “") + reason + QStringLiteral("” — ") + holder + '\n'),
                 qPrintable(text));
        QVERIFY(!text.contains(QStringLiteral("unknown")));
        const QJsonArray assertions =
            QJsonDocument::fromJson(rig.run({"--json"}).out)["assertions"].toArray();
        const auto it = std::find_if(assertions.begin(), assertions.end(), [&](const QJsonValue &a) {
            return a.toObject().value("holder") == holder;
        });
        QVERIFY(it != assertions.end());
        QCOMPARE(it->toObject().value("namedReason"), reason);
        QCOMPARE(it->toObject().value("title"), title);
    }

    void jsonTimesAreUtc()
    {
        for (const QJsonValue &stamp : {m_json["capturedAt"], m_json["restart"]["ranAt"]}) {
            QVERIFY(stamp.toString().endsWith('Z'));
            const QDateTime at = QDateTime::fromString(stamp.toString(), Qt::ISODate);
            QVERIFY(at >= m_jsonRun.from && at <= m_jsonRun.to);
        }
    }

    void exitStatus_data()
    {
        const QByteArray idleOnly = Fixtures::read("assertions-typical.txt");
        const QByteArray nothing =
            "Listed by owning process:\n"
            "   pid 143(WindowServer): [0x1] 00:00:02 UserIsActive named: \"tickle\"\n";
        QTest::addColumn<QByteArray>("listing");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("error"); // how standard error starts when the run fails
        QTest::addColumn<Output>("output");
        const auto row = [](const char *name, const QByteArray &listing, const QStringList &arguments,
                            int status, const QByteArray &error = {}, Output output = Output::pipe) {
            QTest::addRow("%s", name) << listing << arguments << status << error << output;
        };
        row("blocked, not asked", everyField(), {}, 0);
        row("any kind blocked", idleOnly, {"--fail-if-blocked"}, 1);
        row("nothing blocks", nothing, {"--json", "--fail-if-blocked"}, 0);
        row("idle blocked", idleOnly, {"--fail-if-blocked=idle"}, 1);
        row("system free", idleOnly, {"--fail-if-blocked=system"}, 0);
        row("system blocked", everyField(), {"--fail-if-blocked=system"}, 1);
        row("display free", idleOnly, {"details", "--fail-if-blocked=display"}, 0);
        row("display blocked", everyField(), {"--fail-if-blocked=display"}, 1);
        row("help", nothing, {"--help"}, 0);
        row("unknown option", nothing, {"--verbose"}, 2, "Unknown option 'verbose'.");
        row("unknown kind", nothing, {"--fail-if-blocked=lid"}, 2, "Unknown kind of sleep: lid");
        row("kind left empty", nothing, {"--fail-if-blocked="}, 2, "Unknown kind of sleep: ");
        row("unknown report", nothing, {"weekly"}, 2, "Unknown report: weekly");
        row("two reports", nothing, {"summary", "details"}, 2, "Ask for one report at a time.");
        // "--" ends the options: whatever follows is a report name, however it looks.
        row("an option after -- is a report name", idleOnly, {"--", "--fail-if-blocked=idle"}, 2,
            "Unknown report: --fail-if-blocked=idle");
        row("a bare option after -- is a report name", nothing, {"--", "--json"}, 2,
            "Unknown report: --json");
        row("options before -- still count", everyField(), {"--fail-if-blocked=display", "--", "details"}, 1);
        row("pmset fails", QByteArray(), {"--fail-if-blocked"}, 3,
            "pmset exited with status 1.\n\npmset: no assertions\n");
        const QByteArray unwritten = "lullwick-report: could not write the report: ";
        row("report onto a full disk", everyField(), {}, 4, unwritten, Output::fullDisk);
        row("report with standard output closed", everyField(), {"--json"}, 4, unwritten, Output::closed);
        row("help onto a full disk", nothing, {"--help"}, 4, unwritten, Output::fullDisk);
    }
    void exitStatus()
    {
        QFETCH(QByteArray, listing);
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QByteArray, error);
        QFETCH(Output, output);
        const Rig rig(listing);
        if (status == 3) {
            rig.fake.setExitStatus("assertions", 1);
            rig.fake.setErrorOutput("assertions", "pmset: no assertions\n");
        }
        const Run run = rig.run(arguments, output);
        QCOMPARE(run.status, status);
        // The report is printed whether or not it fails the run; errors go to standard error alone.
        QCOMPARE(run.out.isEmpty(), status >= 2);
        QCOMPARE(run.err.contains("Usage: "), status == 2);
        if (status == 2)
            QCOMPARE(run.err.split('\n').first(), error);
        else if (status == 4) // one line, ended
            QVERIFY2(run.err.startsWith(error) && run.err.count('\n') == 1, run.err);
        else
            QCOMPARE(run.err, error);
    }

    void controlCharactersShowOnlyOnATerminal_data()
    {
        QTest::addColumn<Output>("output");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("shown");
        QTest::addColumn<QByteArray>("absent");
        // An escape sequence that clears the screen, and the one-character CSI from C1.
        const QByteArray name = "bad\x1b[2Jname\xc2\x9b" + QByteArray("1m");
        QTest::addRow("text on a terminal: visible escapes")
            << Output::terminal << QStringList{} << QByteArray("bad\\x1b[2Jname\\x9b1m")
            << QByteArray("\x1b");
        QTest::addRow("text into a pipe: byte for byte")
            << Output::pipe << QStringList{} << name << QByteArray("\\x1b");
        QTest::addRow("JSON on a terminal: escaped by JSON alone")
            << Output::terminal << QStringList{"--json"} << QByteArray(name).replace('\x1b', "\\u001b")
            << QByteArray("\\x1b");
    }
    void controlCharactersShowOnlyOnATerminal()
    {
        QFETCH(Output, output);
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, shown);
        QFETCH(QByteArray, absent);
        const Run run = Rig("Listed by owning process:\n   pid 7(evil): [0x1] 00:00:02 "
                            "PreventUserIdleSystemSleep named: \"bad\x1b[2Jname\xc2\x9b" +
                            QByteArray("1m\"\n"))
                            .run(arguments, output);
        QCOMPARE(run.status, 0);
        QVERIFY2(run.out.contains(shown) && !run.out.contains(absent), run.out);
    }

    void toolsReadOurInputButNoTerminal_data()
    {
        QTest::addColumn<Output>("output");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("read");
        QTest::addRow("input from a pipe reaches the tool")
            << Output::pipe << QByteArray("from the caller\n") << QByteArray("from the caller");
        // Leading a group of its own, the tool would be stopped for good by reading the terminal.
        QTest::addRow("a terminal is not handed on") << Output::terminal << QByteArray() << QByteArray();
    }
    void toolsReadOurInputButNoTerminal()
    {
        QFETCH(Output, output);
        QFETCH(QByteArray, input);
        const Rig rig(everyField());
        rig.fake.readInput("assertions");
        const Run run = rig.run({}, output, input);
        QCOMPARE(run.status, 0);
        QTEST(rig.fake.lineRead("assertions"), "read");
    }

    void signalEndsTheReportAndItsTool_data()
    {
        QTest::addColumn<QList<int>>("sent");
        QTest::addColumn<bool>("nohup"); // the hang-up signal is ignored when the report starts
        QTest::addColumn<int>("status"); // negative: killed by that signal
        QTest::addRow("terminated") << QList<int>{SIGTERM} << false << 128 + SIGTERM;
        QTest::addRow("interrupted from the keyboard") << QList<int>{SIGINT} << false << 128 + SIGINT;
        QTest::addRow("hung up") << QList<int>{SIGHUP} << false << 128 + SIGHUP;
        // Both arrive together and the lower number comes first: a handled hang-up would decide.
        QTest::addRow("hang-up ignored under nohup stays ignored")
            << QList<int>{SIGHUP, SIGTERM} << true << 128 + SIGTERM;
        QTest::addRow("killed outright") << QList<int>{SIGKILL} << false << -SIGKILL;
    }
    void signalEndsTheReportAndItsTool()
    {
        QFETCH(QList<int>, sent);
        QFETCH(bool, nohup);
        QFETCH(int, status);
        const Rig rig(everyField());
        QProcess report;
        if (nohup)
            report.setChildProcessModifier([] { ::signal(SIGHUP, SIG_IGN); });
        const qint64 tool = rig.fake.signalDuringHeldCall(report, rig.report, sent);
        QVERIFY(tool > 0);
        QCOMPARE(report.exitStatus(), status < 0 ? QProcess::CrashExit : QProcess::NormalExit);
        QCOMPARE(report.exitCode(), qAbs(status));
        QCOMPARE(report.readAllStandardOutput(), QByteArray());
        // Gone long before the held tool would give up by itself.
        QTRY_VERIFY_WITH_TIMEOUT(!FakeToolDir::processGroupAlive(tool), 10'000);
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "tst_report.moc"
