// Building the Summary page for a reading, and redrawing it when one created-for name arrives.
// Both include the layout pass that follows, since that is what the user waits for.

#include "AssertionsModelFeeder.h"
#include "Fixtures.h"
#include "pmset/PMSetService.h"
#include "summary/SummaryView.h"

#include <QApplication>
#include <benchmark/benchmark.h>

using namespace lullwick;

namespace {

constexpr int createdForPIDs = 8; // the generated listing's creators are PIDs 5000 to 5007

AssertionsSnapshot generated(int assertions)
{
    return PMSetService::parse(QString::fromUtf8(Fixtures::generatedAssertions(assertions, createdForPIDs)),
                               QDateTime::currentDateTimeUtc());
}

/// Lets the page lay itself out and delete what a rebuild let go of.
void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

struct Page {
    Page()
    {
        view.resize(800, 900);
        view.show();
        settle();
    }
    AssertionsModel model;
    AssertionsModelFeeder feed{model};
    SummaryView view{&model};
};

void BM_BuildSummaryPage(benchmark::State &state)
{
    const AssertionsSnapshot snapshot = generated(int(state.range(0)));
    Page page;
    for (auto _ : state) {
        page.feed.setSnapshot(snapshot);
        settle();
    }
}

void BM_NameArrives(benchmark::State &state)
{
    Page page;
    page.feed.setSnapshot(generated(int(state.range(0))));
    settle();
    bool flip = false;
    for (auto _ : state) {
        // A different name each time, so every arrival is a change that the rows must show.
        page.feed.storeResolvedName(5000, (flip = !flip) ? QStringLiteral("Spotify")
                                                         : QStringLiteral("caffeinate"));
        settle();
    }
}

} // namespace

BENCHMARK(BM_BuildSummaryPage)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NameArrives)->Arg(500)->Unit(benchmark::kMillisecond);

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
