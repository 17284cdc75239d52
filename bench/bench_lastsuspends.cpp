// The last suspends on a big journal: a previous boot of 600,000 entries written by the real
// systemd-journal-remote, read by the real journalctl with the program's own arguments, beside the
// floor of the same run (journalctl opening the same files and printing nothing). The iteration
// time is the difference: what the source adds to a reading. Needs root, for a private mount
// namespace in which the journal lies where journalctl looks.

#include "platform/ChildProcess.h"
#include "sleep/LastSuspends.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <chrono>
#include <unistd.h>

using namespace lullwick;

namespace {

constexpr int previousBootEntries = 590000;
constexpr int currentBootEntries = 10000;
const QByteArray previousBoot = "8d1e0f2a6b9c4d3e8f7a6b5c4d3e2f1a";
const QByteArray currentBoot = "0f1e2d3c4b5a69788796a5b4c3d2e1f0";

struct Journal {
    QTemporaryDir dir;
    QString journalctl; ///< a script that puts the journal in place, then runs the real journalctl
    qint64 bytes = 0;
    QString error;
};

// What a day of a desktop writes: services chatting, the session, a little kernel.
void writeEntries(QFile &out, const QByteArray &machine)
{
    static const char *const services[][3] = {
        {"NetworkManager", "NetworkManager.service", "0"},
        {"gnome-shell", "session-2.scope", "1000"},
        {"pipewire", "user@1000.service", "1000"},
        {"systemd-resolved", "systemd-resolved.service", "101"},
        {"firefox-esr", "app-firefox.scope", "1000"},
        {"cron", "cron.service", "0"},
        {"dbus-daemon", "dbus.service", "0"},
        {"systemd", "init.scope", "0"},
    };
    qint64 clock = (QDateTime::currentMSecsSinceEpoch() - 23 * 3600 * 1000) * 1000;
    qint64 monotonic = 1000000;
    QByteArray boot = previousBoot;
    const auto entry = [&](const char *transport, const char *comm, const char *unit, const char *uid,
                           const QByteArray &message, const char *priority = "6") {
        clock += 110000;
        monotonic += 110000;
        QByteArray e = "__REALTIME_TIMESTAMP=" + QByteArray::number(clock) +
                       "\n__MONOTONIC_TIMESTAMP=" + QByteArray::number(monotonic) + "\n_BOOT_ID=" + boot +
                       "\n_MACHINE_ID=" + machine + "\n_TRANSPORT=" + transport + "\nPRIORITY=" + priority +
                       "\n_HOSTNAME=desk\n";
        if (comm)
            e += QByteArray("_COMM=") + comm + "\nSYSLOG_IDENTIFIER=" + comm + "\n_SYSTEMD_UNIT=" + unit +
                 "\n_UID=" + uid + "\n_PID=" + QByteArray::number(1000 + qHash(QByteArrayView(comm)) % 5000) +
                 '\n';
        else
            e += "SYSLOG_IDENTIFIER=kernel\n";
        out.write(e + "MESSAGE=" + message + "\n\n");
    };
    const auto kernel = [&](const QByteArray &message, const char *priority = "6") {
        entry("kernel", nullptr, nullptr, nullptr, message, priority);
    };
    // A night's sleep in the previous boot; in this one, a suspend that fails because two
    // processes would not freeze, then one that wakes at once.
    const auto suspend = [&](double seconds, bool fails) {
        entry("journal", "systemd-logind", "systemd-logind.service", "0", "The system will suspend now!");
        entry("journal", "systemd-sleep", "systemd-suspend.service", "0",
              "Entering sleep state 'suspend'...");
        kernel("PM: suspend entry (deep)");
        kernel("Freezing user space processes");
        if (fails) {
            clock += 20'000'000;
            kernel("Freezing user space processes failed after 20.005 seconds (2 tasks refusing to freeze, "
                   "wq_busy=0):",
                   "3");
            kernel("task:syncthing       state:D stack:0     pid:1301  ppid:1273   flags:0x00004006");
            kernel("task:gvfsd-fuse      state:D stack:0     pid:1350  ppid:1100   flags:0x00004006");
            kernel("PM: suspend exit");
            entry("journal", "systemd-sleep", "systemd-suspend.service", "0",
                  "Failed to put system to sleep. System resumed again: Device or resource busy");
            return;
        }
        kernel("ACPI: PM: Preparing to enter system sleep state S3");
        clock += qint64(seconds * 1e6);
        kernel("ACPI: PM: Waking up from system sleep state S3");
        kernel("PM: suspend exit");
        entry("journal", "systemd-sleep", "systemd-suspend.service", "0",
              "System returned from sleep state.");
    };
    for (int i = 0; i < previousBootEntries + currentBootEntries; ++i) {
        if (i == previousBootEntries) {
            boot = currentBoot;
            monotonic = 1000000;
        }
        if (i == 50000)
            suspend(8 * 3600, false);
        if (i == previousBootEntries + 2000 || i == previousBootEntries + 6000)
            suspend(3, i == previousBootEntries + 2000);
        if (i % 33 == 0) {
            entry("kernel", nullptr, nullptr, nullptr,
                  "usb 1-2: new high-speed USB device number " + QByteArray::number(i % 127) +
                      " using xhci_hcd");
            continue;
        }
        const auto &s = services[i % 8];
        entry(i % 3 ? "journal" : "stdout", s[0], s[1], s[2],
              "request " + QByteArray::number(i) + " handled in " + QByteArray::number(i % 977) +
                  " ms for connection " + QByteArray::number(i * 7919 % 100003) + " (status ok)");
    }
}

Journal &bigJournal()
{
    static Journal journal = [] {
        Journal j;
        QFile machineFile(QStringLiteral("/etc/machine-id"));
        if (::geteuid() != 0 || !machineFile.open(QIODevice::ReadOnly) ||
            !QFileInfo::exists(QStringLiteral("/lib/systemd/systemd-journal-remote"))) {
            j.error = QStringLiteral("needs root, /etc/machine-id and systemd-journal-remote");
            return j;
        }
        const QByteArray machine = machineFile.readAll().trimmed();
        QFile exported(j.dir.filePath(QStringLiteral("entries.export")));
        if (!exported.open(QIODevice::WriteOnly)) {
            j.error = QStringLiteral("cannot write the export");
            return j;
        }
        writeEntries(exported, machine);
        exported.close();
        const QString folder = j.dir.filePath(QStringLiteral("journal/") + QString::fromLatin1(machine));
        QDir().mkpath(folder);
        const ChildProcessResult wrote = ChildProcess::run(
            QStringLiteral("/lib/systemd/systemd-journal-remote"),
            {QStringLiteral("--output=") + folder + QStringLiteral("/system.journal"), exported.fileName()});
        QFile::remove(exported.fileName());
        for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files))
            j.bytes += file.size();
        if (wrote.exitStatus != 0 || j.bytes == 0) {
            j.error = QString::fromLocal8Bit(wrote.standardError);
            return j;
        }
        // The same fixed path the program runs, reached in a mount namespace of its own.
        j.journalctl = j.dir.filePath(QStringLiteral("journalctl"));
        QFile script(j.journalctl);
        script.open(QIODevice::WriteOnly);
        script.write(
            "#!/bin/sh\nexec /usr/bin/unshare -m --propagation private /bin/sh -c 'mount --bind \"$0\" "
            "/var/log/journal && { [ ! -d /run/log/journal ] || mount -t tmpfs none /run/log/journal; } && "
            "exec /usr/bin/journalctl \"$@\"' " +
            j.dir.filePath(QStringLiteral("journal")).toLocal8Bit() + " \"$@\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return j;
    }();
    return journal;
}

double secondsOf(const std::function<void()> &run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void BM_LastSuspendsOnABigJournal(benchmark::State &state)
{
    Journal &journal = bigJournal();
    if (!journal.error.isEmpty()) {
        state.SkipWithError(journal.error.toUtf8().constData());
        return;
    }
    const std::atomic<bool> keepGoing{false};
    const LastSuspends::Context context{currentBoot, {QStringLiteral("XHC0: USB controller")}, {}};
    LastSuspends::Reading reading;
    double sourceTotal = 0, floorTotal = 0;
    for (auto _ : state) {
        const double source = secondsOf([&] {
            reading = LastSuspends::read(journal.journalctl, context, keepGoing, QDeadlineTimer(60000));
        });
        const double floor = secondsOf([&] {
            benchmark::DoNotOptimize(ChildProcess::run(
                journal.journalctl, {QStringLiteral("--lines=0"), QStringLiteral("--output=json")},
                &keepGoing));
        });
        state.SetIterationTime(source - floor);
        sourceTotal += source;
        floorTotal += floor;
    }
    if (reading.access != LastSuspends::Access::read || reading.findings.size() != 2 ||
        !reading.findings[0].title.contains(QStringLiteral("syncthing and gvfsd-fuse"))) {
        state.SkipWithError("the source found nothing in the journal");
        return;
    }
    const auto perRun = [&state](double total) {
        return benchmark::Counter(total * 1e3 / double(state.iterations()));
    };
    state.counters["source_ms"] = perRun(sourceTotal);
    state.counters["floor_ms"] = perRun(floorTotal);
    state.counters["journal_MB"] = double(journal.bytes) / 1e6;
    state.counters["findings"] = double(reading.findings.size());
}

} // namespace

BENCHMARK(BM_LastSuspendsOnABigJournal)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);
