// What the sleep check adds to a reading: a whole refresh of the real AssertionsModel against the
// fake tools, without the check (the floor) and with it, wall-clock time; and the check alone.
// The check runs on a worker of its own beside pmset's, so what it adds is the part of it that
// outlasts the reading. Its inputs: the stand-in's logind answers (the fake pmset), the real
// gsettings with GNOME's power schema in a schema folder of its own, and a root folder holding a
// masked target, suspend-to-idle only, a recorded /proc/acpi/wakeup and 300 devices.

#include "FakeToolDir.h"
#include "Fixtures.h"
#include "sleep/SleepCheck.h"
#include "summary/AssertionsModel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace lullwick;

namespace {

constexpr int assertions = 50;

void put(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    Fixtures::writeFile(path, bytes);
}

struct Setup {
    Setup()
    {
        fake.setOutput(QStringLiteral("assertions"), Fixtures::generatedAssertions(assertions, 8));
        fake.setOutputFromFixture(QStringLiteral("settings"), QStringLiteral("settings-linux.txt"));
        QHash<qint64, QString> table;
        for (int i = 0; i < 8; ++i)
            table.insert(5000 + i, QStringLiteral("app%1").arg(i));
        fake.setProcessTable(table);
        fake.setOutput(QStringLiteral("sleep-evidence"),
                       "can-suspend\tna\ncan-hibernate\tna\nlogind\tOnExternalPower\tyes\n"
                       "logind\tHandleLidSwitchExternalPower\tsuspend\nlogind\tIdleAction\tignore\n");
        const QString r = root.path();
        QDir().mkpath(r + QStringLiteral("/etc/systemd/system"));
        QFile::link(QStringLiteral("/dev/null"), r + QStringLiteral("/etc/systemd/system/suspend.target"));
        put(r + QStringLiteral("/sys/power/mem_sleep"), "[s2idle]\n");
        put(r + QStringLiteral("/sys/power/state"), "freeze mem disk\n");
        put(r + QStringLiteral("/proc/acpi/wakeup"),
            Fixtures::read(QStringLiteral("sleep-proc-acpi-wakeup.txt")));
        for (int i = 0; i < 150; ++i) {
            const QString usb = r + QStringLiteral("/sys/bus/usb/devices/1-%1").arg(i);
            put(usb + QStringLiteral("/product"), "Receiver\n");
            put(usb + QStringLiteral("/power/wakeup"), i % 10 ? "disabled\n" : "enabled\n");
            const QString pci =
                r + QStringLiteral("/sys/bus/pci/devices/0000:00:%1.0").arg(i, 2, 16, QLatin1Char('0'));
            put(pci + QStringLiteral("/class"), "0x0c0330\n");
            put(pci + QStringLiteral("/power/wakeup"), "disabled\n");
        }
        const QString schemas = r + QStringLiteral("/schemas");
        put(schemas + QStringLiteral("/org.gnome.settings-daemon.plugins.power.gschema.xml"),
            Fixtures::read(QStringLiteral("gsettings-gnome-power.gschema.xml")));
        QProcess::execute(QStringLiteral("/usr/bin/glib-compile-schemas"), {schemas});
        qputenv("GSETTINGS_SCHEMA_DIR", QFile::encodeName(schemas));
        qputenv("GSETTINGS_BACKEND", "memory");
        check = SleepCheck{
            fake.pmsetPath(), r, {QStringLiteral("/usr/bin/gsettings"), r, {QStringLiteral("GNOME")}, {}}};
    }
    FakeToolDir fake;
    QTemporaryDir root;
    SleepCheck check;
};

void refreshUntilDone(benchmark::State &state, AssertionsModel &model)
{
    for (auto _ : state) {
        model.refresh();
        while (model.isFetching())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void BM_ReadingAlone(benchmark::State &state)
{
    Setup setup;
    AssertionsModel model(setup.fake.pmsetPath(), setup.fake.psPath());
    refreshUntilDone(state, model);
}

void BM_ReadingWithSleepCheck(benchmark::State &state)
{
    Setup setup;
    AssertionsModel model(setup.fake.pmsetPath(), setup.fake.psPath(), setup.check);
    refreshUntilDone(state, model);
    if (!model.sleepFindings() || model.sleepFindings()->findings.size() < 4)
        state.SkipWithError("the sleep check did not find what its inputs hold");
}

void BM_SleepCheckAlone(benchmark::State &state)
{
    Setup setup;
    const std::atomic<bool> keepGoing{false};
    for (auto _ : state)
        benchmark::DoNotOptimize(setup.check.run(keepGoing));
}

} // namespace

BENCHMARK(BM_ReadingAlone)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3);
BENCHMARK(BM_ReadingWithSleepCheck)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3);
BENCHMARK(BM_SleepCheckAlone)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3);
