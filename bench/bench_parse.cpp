// Parsing cost against the floor of merely decoding the same bytes from UTF-8.

#include "Fixtures.h"
#include "pmset/PMSetService.h"

#include <benchmark/benchmark.h>

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

} // namespace

BENCHMARK(BM_Parse)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DecodeOnly)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
