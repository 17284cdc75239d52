// A whole refresh against the fake tools, beside the same tool runs made directly: the
// difference is what the refresh itself costs (threads, awaiting, parsing, publishing).

#include "FakeToolDir.h"
#include "Fixtures.h"
#include "platform/ChildProcess.h"
#include "summary/AssertionsModel.h"

#include <QCoreApplication>
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

} // namespace

BENCHMARK(BM_Refresh)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ToolsAlone)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
