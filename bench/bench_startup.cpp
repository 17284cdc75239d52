// Start-up of the program against an empty main window built with the same flags: time from
// process start to the window's first paint, and peak memory once the first reading is in.
// Each iteration starts a fresh process (this program again, in a child role), so dynamic
// loading and the first reading's child processes are all counted.
#include "app/ContentView.h"
#include "app/LullwickApp.h"
#include "summary/AssertionsModel.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <ctime>
#include <optional>
#include <sys/resource.h>

namespace {

qint64 monotonicNs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

/// Reports the first paint of any widget, once.
class FirstPaint : public QObject {
public:
    qint64 atNs = 0;
    std::function<void()> then;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (atNs == 0 && event->type() == QEvent::Paint && watched->isWidgetType()) {
            atNs = monotonicNs();
            QTimer::singleShot(0, then);
        }
        return false;
    }
};

enum class Role { empty, labelled, full };

int child(int argc, char *argv[], Role role)
{
    QApplication app(argc, argv);
    FirstPaint paint;
    app.installEventFilter(&paint);
    auto report = [&paint] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::printf("%lld %ld\n", static_cast<long long>(paint.atNs), usage.ru_maxrss);
        std::fflush(stdout);
        QCoreApplication::exit(0);
    };
    if (role != Role::full) {
        QMainWindow window;
        window.resize(760, 600);
        // One line of text: what any window with words pays to load its fonts.
        if (role == Role::labelled)
            window.setCentralWidget(new QLabel(QStringLiteral("Lullwick")));
        paint.then = report;
        window.show();
        return QApplication::exec();
    }
    lullwick::LullwickApp lullwick; // with the program's own updater, which checks only when asked
    lullwick::AssertionsModel *model = lullwick.content().model();
    paint.then = [&] {
        if (!model->isFetching())
            return report();
        QObject::connect(model, &lullwick::AssertionsModel::isFetchingChanged, model, [&] {
            if (!model->isFetching())
                report();
        });
    };
    lullwick.window().show();
    return QApplication::exec();
}

struct Start {
    double firstPaintSeconds = 0;
    long peakKb = 0;
};

/// Starts this program in `role` and waits for its report; nothing when it does not report.
std::optional<Start> startChild(const char *role)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    const qint64 startNs = monotonicNs();
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--child"), QString::fromLatin1(role)});
    if (!process.waitForFinished(60'000) || process.exitCode() != 0)
        return std::nullopt;
    const QList<QByteArray> fields = process.readAllStandardOutput().trimmed().split(' ');
    return Start{double(fields.value(0).toLongLong() - startNs) / 1e9, fields.value(1).toLong()};
}

void startUp(benchmark::State &state, const char *role)
{
    long peakKb = 0;
    for (auto _ : state) {
        const std::optional<Start> start = startChild(role);
        if (!start) {
            state.SkipWithError("the child did not report");
            return;
        }
        state.SetIterationTime(start->firstPaintSeconds);
        peakKb = qMax(peakKb, start->peakKb);
    }
    state.counters["peak_MB"] = double(peakKb) / 1024.0;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

/// The program and the window with one label started in turn, so that a machine whose load
/// changes slows both alike: the program's first paint and peak memory as ratios to the label's.
void startUpBesideOneLabel(benchmark::State &state)
{
    QList<double> program, label;
    long programKb = 0, labelKb = 0;
    for (auto _ : state) {
        const std::optional<Start> labelled = startChild("labelled");
        const std::optional<Start> full = startChild("lullwick");
        if (!labelled || !full) {
            state.SkipWithError("a child did not report");
            return;
        }
        label << labelled->firstPaintSeconds;
        program << full->firstPaintSeconds;
        labelKb = qMax(labelKb, labelled->peakKb);
        programKb = qMax(programKb, full->peakKb);
        state.SetIterationTime(full->firstPaintSeconds);
    }
    state.counters["label_ms"] = median(label) * 1e3;
    state.counters["lullwick_ms"] = median(program) * 1e3;
    state.counters["ratio"] = median(program) / median(label);
    state.counters["extra_peak_MB"] = double(programKb - labelKb) / 1024.0;
}

} // namespace

BENCHMARK_CAPTURE(startUp, empty_main_window, "empty")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(startUp, main_window_with_one_label, "labelled")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(startUp, lullwick, "lullwick")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK(startUpBesideOneLabel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--child") == 0)
        return child(argc, argv,
                     qstrcmp(argv[2], "lullwick") == 0   ? Role::full
                     : qstrcmp(argv[2], "labelled") == 0 ? Role::labelled
                                                         : Role::empty);
    QCoreApplication app(argc, argv); // for the program's own path
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
