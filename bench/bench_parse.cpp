// Parsing cost against the floor of merely decoding the same bytes from UTF-8.

#include "Fixtures.h"
#include "pmset/PMSetService.h"

#include <benchmark/benchmark.h>
#include <chrono>

using namespace lullwick;

namespace {

const QByteArray &listing(int lines)
{
    static QHash<int, QByteArray> cache;
    auto it = cache.find(lines);
    if (it == cache.end())
        it = cache.insert(lines, Fixtures::generatedAssertions(lines));
    return *it;
}

void BM_Parse(benchmark::State &state)
{
    const QByteArray &bytes = listing(int(state.range(0)));
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (auto _ : state) {
        const AssertionsSnapshot s = PMSetService::parse(QString::fromUtf8(bytes), now);
        benchmark::DoNotOptimize(s.assertions.constData());
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

void BM_DecodeOnly(benchmark::State &state)
{
    const QByteArray &bytes = listing(int(state.range(0)));
    for (auto _ : state) {
        const QString text = QString::fromUtf8(bytes);
        benchmark::DoNotOptimize(text.constData());
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

// Parsing is meant to take time linear in the input: the counter "100k/1k" is the time for a listing
// of 100,000 assertions over the time for one of 1,000, so about 100 when linear.
void BM_ParseScaling(benchmark::State &state)
{
    const QString small = QString::fromUtf8(listing(1'000));
    const QString large = QString::fromUtf8(listing(100'000));
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const auto secondsToParse = [&](const QString &text, int times) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < times; ++i)
            benchmark::DoNotOptimize(PMSetService::parse(text, now).assertions.constData());
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    double smallSeconds = 0;
    double largeSeconds = 0;
    for (auto _ : state) {
        smallSeconds += secondsToParse(small, 100) / 100; // many runs, so the short one is measurable
        largeSeconds += secondsToParse(large, 1);
    }
    state.counters["100k/1k"] = largeSeconds / smallSeconds;
}

} // namespace

BENCHMARK(BM_Parse)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DecodeOnly)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ParseScaling)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
