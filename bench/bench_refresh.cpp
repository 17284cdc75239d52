// A whole refresh against the fake tools, beside the same tool runs made directly: the
// difference is what the refresh itself costs (threads, awaiting, parsing, publishing).
// And how long the window stops answering meanwhile: the longest gap of the UI thread's event
// loop during a whole refresh, names included, and during a restart analysis, with the real
// models and the Summary page on screen.

#include "FakeToolDir.h"
#include "Fixtures.h"
#include "platform/ChildProcess.h"
#include "platform/RunningApps.h"
#include "restart/RestartModel.h"
#include "restart/RestartView.h"
#include "summary/AssertionsModel.h"
#include "summary/SummaryView.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <benchmark/benchmark.h>

using namespace lullwick;

namespace {

constexpr int createdForPIDs = 8;

struct Setup {
    explicit Setup(int assertions)
    {
        fake.setOutput(QStringLiteral("assertions"),
                       Fixtures::generatedAssertions(assertions, createdForPIDs));
        fake.setOutputFromFixture(QStringLiteral("settings"), QStringLiteral("settings-typical.txt"));
        QHash<qint64, QString> table;
        for (int i = 0; i < createdForPIDs; ++i)
            table.insert(5000 + i, QStringLiteral("/Applications/App%1.app/Contents/MacOS/App%1").arg(i));
        fake.setProcessTable(table);
    }
    FakeToolDir fake;
};

void BM_Refresh(benchmark::State &state)
{
    Setup setup(int(state.range(0)));
    AssertionsModel model(setup.fake.pmsetPath(), setup.fake.psPath());
    for (auto _ : state) {
        model.refresh();
        while (model.isFetching())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    if (!model.snapshot() || model.snapshot()->assertions.size() != state.range(0) ||
        model.resolvedNames().size() != createdForPIDs)
        state.SkipWithError("refresh did not produce the expected reading");
}

// The same child processes a refresh starts, run one after another with nothing else.
void BM_ToolsAlone(benchmark::State &state)
{
    Setup setup(int(state.range(0)));
    const int pidCount = std::min<int>(createdForPIDs, int(state.range(0) + 3) / 4);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ChildProcess::run(setup.fake.pmsetPath(), {"-g", "assertions"}));
        benchmark::DoNotOptimize(ChildProcess::run(setup.fake.pmsetPath(), {"-g"}));
        for (int i = 0; i < pidCount; ++i)
            benchmark::DoNotOptimize(
                ChildProcess::run(setup.fake.psPath(), {"-p", QString::number(5000 + i), "-o", "comm="}));
    }
}

/// Beats every millisecond on the UI thread while it runs; the longest time between two beats is
/// the longest the event loop was kept from answering.
class Heartbeat {
public:
    Heartbeat()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
        m_clock.start();
        m_timer.start();
    }
    void beat()
    {
        const qint64 now = m_clock.nsecsElapsed();
        m_longestNs = qMax(m_longestNs, now - m_lastNs);
        m_lastNs = now;
    }
    [[nodiscard]] double longestSeconds() const { return double(m_longestNs) / 1e9; }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_lastNs = 0;
    qint64 m_longestNs = 0;
};

/// Runs the event loop until `done`, then until the page has laid out and painted what it got.
template <typename Done> void runUntil(Done done)
{
    while (!done())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// The longest stall during refreshes of a model whose Summary page is on screen. With `first`,
/// each refresh is the page's first reading; otherwise it brings the same assertions again.
void BM_LongestStallRefresh(benchmark::State &state, bool first)
{
    Setup setup(int(state.range(0)));
    qint64 longestNs = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto model = std::make_unique<AssertionsModel>(setup.fake.pmsetPath(), setup.fake.psPath());
        SummaryView view(model.get());
        view.resize(760, 900);
        view.show();
        if (!first) {
            model->refresh();
            runUntil([&] { return !model->isFetching(); });
        }
        runUntil([] { return true; });
        state.ResumeTiming();

        Heartbeat heartbeat;
        model->refresh();
        runUntil([&] { return !model->isFetching(); });
        heartbeat.beat();
        state.SetIterationTime(heartbeat.longestSeconds());
        longestNs = qMax(longestNs, qint64(heartbeat.longestSeconds() * 1e9));
        if (model->resolvedNames().size() != createdForPIDs)
            state.SkipWithError("the refresh did not resolve every name");
    }
    state.counters["worst_ms"] = double(longestNs) / 1e6;
}

/// A made-up system to list running applications from: `entries` desktop entries, and a process
/// folder of `processes` processes of this user, every fifth of them an application's.
struct InstalledApps {
    InstalledApps(int entries, int processes)
    {
        qputenv("XDG_DATA_HOME", data.filePath(QStringLiteral("home")).toUtf8());
        qputenv("XDG_DATA_DIRS", data.filePath(QStringLiteral("system")).toUtf8());
        QDir().mkpath(data.filePath(QStringLiteral("home/applications")));
        for (int i = 0; i < entries; ++i)
            Fixtures::writeFile(
                data.filePath(QStringLiteral("home/applications/org.example.App%1.desktop").arg(i)),
                "[Desktop Entry]\nType=Application\nName=App " + QByteArray::number(i) +
                    "\nName[de]=Anwendung " + QByteArray::number(i) + "\nExec=app" + QByteArray::number(i) +
                    " %U\nIcon=app\nCategories=Utility;\n");
        for (int i = 0; i < processes; ++i) {
            const qint64 pid = 1000 + i;
            const QByteArray program =
                i % 5 == 0 ? "app" + QByteArray::number((i / 5) % entries) : "daemon" + QByteArray::number(i);
            const QString dir = proc() + u'/' + QString::number(pid);
            QDir().mkpath(dir);
            Fixtures::writeFile(dir + QStringLiteral("/stat"),
                                QByteArray::number(pid) + " (" + program + ") S 1 " +
                                    QByteArray::number(pid) +
                                    " 0 0 -1 4194560 0 0 0 0 0 0 0 0 20 0 1 0 100 0 0\n");
            Fixtures::writeFile(dir + QStringLiteral("/cmdline"), "/usr/bin/" + program + "\0--flag\0");
            QFile::link(QStringLiteral("/usr/bin/") + QString::fromLatin1(program),
                        dir + QStringLiteral("/exe"));
        }
    }
    [[nodiscard]] QString proc() const { return data.filePath(QStringLiteral("proc")); }
    QTemporaryDir data;
};

/// The longest stall during restart analyses that list the running applications of a made-up
/// system of 300 desktop entries and 500 processes.
void BM_LongestStallAnalysis(benchmark::State &state)
{
    FakeToolDir fake;
    fake.setOutput(QStringLiteral("assertions"), Fixtures::generatedAssertions(50, createdForPIDs));
    fake.setOutputFromFixture(QStringLiteral("log"), QStringLiteral("loginwindow-compact.txt"));
    QTemporaryDir reports;
    InstalledApps installed(300, 500);
    RestartModel model([root = installed.proc()] { return RunningApps::current(root); }, fake.pmsetPath(),
                       fake.logPath(), fake.spindumpPath(), reports.path());
    qint64 longestNs = 0;
    for (auto _ : state) {
        Heartbeat heartbeat;
        model.analyze();
        runUntil([&] { return !model.isAnalyzing(); });
        heartbeat.beat();
        state.SetIterationTime(heartbeat.longestSeconds());
        longestNs = qMax(longestNs, qint64(heartbeat.longestSeconds() * 1e9));
    }
    if (!model.analysis() || model.analysis()->findings.isEmpty())
        state.SkipWithError("the analysis found nothing");
    state.counters["worst_ms"] = double(longestNs) / 1e6;
}

/// The Restart tab on screen while analyses replace one another, each with the same findings:
/// the time from the stored analysis to the tab laid out and painted again.
void BM_RestartTabShowsAnalysis(benchmark::State &state)
{
    FakeToolDir fake;
    fake.setOutputFromFixture(QStringLiteral("assertions"), QStringLiteral("assertions-software-update.txt"));
    fake.setOutputFromFixture(QStringLiteral("log"), QStringLiteral("loginwindow-compact.txt"));
    QByteArray locks; // on Linux the evidence comes from the stand-in: a few programs holding off shutdown
    for (int i = 0; i < 5; ++i)
        locks += "shutdown-lock\tblock\tNightly copy " + QByteArray::number(i) + "\tCopying files\t" +
                 QByteArray::number(4321 + i) + "\tcopyjob" + QByteArray::number(i) + "\n";
    fake.setOutput(QStringLiteral("restart-evidence"), locks);
    QTemporaryDir reports;
    Fixtures::writeFile(reports.filePath(QStringLiteral("loginwindow_2026-11-19-220531_Mac.shutdownStall")));
    const QList<RunningAppInfo> apps{{QStringLiteral("TextEdit"), QStringLiteral("com.apple.TextEdit"), 301},
                                     {QStringLiteral("Safari"), QStringLiteral("com.apple.Safari"), 302}};
    RestartModel model([apps] { return apps; }, fake.pmsetPath(), fake.logPath(), fake.spindumpPath(),
                       reports.path());
    // Connected before the tab, so it runs first: the clock starts when the analysis is stored.
    QElapsedTimer shown;
    QObject::connect(&model, &RestartModel::analysisChanged, [&shown] { shown.start(); });
    RestartView view(&model);
    view.resize(760, 900);
    view.show();
    for (auto _ : state) {
        model.analyze();
        runUntil([&] { return !model.isAnalyzing(); });
        state.SetIterationTime(double(shown.nsecsElapsed()) / 1e9);
    }
    if (!model.analysis() || model.analysis()->findings.isEmpty())
        state.SkipWithError("the analysis found nothing");
    else
        state.counters["findings"] = double(model.analysis()->findings.size());
}

} // namespace

BENCHMARK(BM_RestartTabShowsAnalysis)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);
BENCHMARK_CAPTURE(BM_LongestStallRefresh, first_reading, true)
    ->Arg(50)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(20);
BENCHMARK_CAPTURE(BM_LongestStallRefresh, same_assertions_again, false)
    ->Arg(50)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(20);
BENCHMARK(BM_LongestStallAnalysis)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);
BENCHMARK(BM_Refresh)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ToolsAlone)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
