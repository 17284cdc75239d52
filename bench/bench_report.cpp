// The command-line report against the fake pmset, beside the same tool runs made directly, both
// in each iteration: the difference is what the report itself costs (loading, start-up, threads,
// parsing, rendering). Reported as the iteration time; the two absolute figures are counters.

#include "FakeToolDir.h"
#include "Fixtures.h"
#include "platform/ChildProcess.h"
#include "profile/ToolPaths.h"

#include <QCoreApplication>
#include <QFile>
#include <benchmark/benchmark.h>
#include <chrono>

using namespace lullwick;

namespace {

double secondsToRun(const QString &program, const QStringList &arguments)
{
    const auto start = std::chrono::steady_clock::now();
    const ChildProcessResult run = ChildProcess::run(program, arguments);
    benchmark::DoNotOptimize(run);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void BM_ReportOverTools(benchmark::State &state, const QStringList &arguments)
{
    // The report finds its pmset beside itself: copy it next to a link to the fake.
    FakeToolDir fake;
    fake.setOutputFromFixture(QStringLiteral("assertions"), QStringLiteral("assertions-typical.txt"));
    fake.setOutputFromFixture(QStringLiteral("settings"), QStringLiteral("settings-typical.txt"));
    const QString report = fake.path() + QStringLiteral("/lullwick-report");
    const QString pmset = fake.path() + QStringLiteral("/lullwick-pmset");
    if (!fake.isValid() || !QFile::copy(QStringLiteral(LULLWICK_REPORT), report) ||
        !QFile::link(fake.pmsetPath(), pmset)) {
        state.SkipWithError("cannot set up the report beside the fake pmset");
        return;
    }
    if (ChildProcess::run(report, arguments).exitStatus != 0) {
        state.SkipWithError("the report failed");
        return;
    }

    double reportTotal = 0;
    double toolsTotal = 0;
    for (auto _ : state) {
        const double reportTime = secondsToRun(report, arguments);
        // What the report starts: both pmset reads, and ps for the one created-for PID.
        const double toolsTime =
            secondsToRun(pmset, {QStringLiteral("-g"), QStringLiteral("assertions")}) +
            secondsToRun(pmset, {QStringLiteral("-g")}) +
            secondsToRun(ToolPaths::ps(), {QStringLiteral("-p"), QStringLiteral("1069"), QStringLiteral("-o"),
                                           QStringLiteral("comm=")});
        state.SetIterationTime(reportTime - toolsTime);
        reportTotal += reportTime;
        toolsTotal += toolsTime;
    }
    const auto perRun = [&state](double total) {
        return benchmark::Counter(total * 1e3 / double(state.iterations()));
    };
    state.counters["report_ms"] = perRun(reportTotal);
    state.counters["tools_ms"] = perRun(toolsTotal);
}

} // namespace

BENCHMARK_CAPTURE(BM_ReportOverTools, summary, QStringList{})->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(BM_ReportOverTools, json, QStringList{QStringLiteral("--json")})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
