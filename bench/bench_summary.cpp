// The Summary page beside its floor: the page's own clipboard text laid out and painted once in a
// single word-wrapped label of the page's width, which is what drawing the page's words costs at
// the least. Every page figure includes the layout and painting that follow, since that is what
// the user waits for; the page is painted as the window paints it (what the viewport shows, and
// after a change only what changed). Compare figures of one run: the machine's load moves them all.

#include "AssertionsModelFeeder.h"
#include "Fixtures.h"
#include "pmset/PMSetService.h"
#include "summary/SummaryClipboard.h"
#include "summary/SummaryView.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <benchmark/benchmark.h>

using namespace lullwick;

namespace {

constexpr int createdForPIDs = 8; // the generated listing's creators are PIDs 5000 to 5007
constexpr int pageWidth = 700;    // the column inside the page's padding
constexpr int copies = 8;         // readings of one listing, each with ids of its own

/// `copies` readings of the same listing: the same content under new ids, as each refresh brings.
QList<AssertionsSnapshot> readings(int assertions, bool changeOne = false)
{
    QByteArray listing = Fixtures::generatedAssertions(assertions, createdForPIDs);
    // The first assertion's held time moves on: one row's badge changes, nothing else.
    if (changeOne)
        listing.replace("00:10:00 PreventUserIdleSystemSleep", "00:10:01 PreventUserIdleSystemSleep");
    QList<AssertionsSnapshot> result;
    for (int i = 0; i < copies; ++i)
        result << PMSetService::parse(QString::fromUtf8(listing), QDateTime::currentDateTimeUtc());
    return result;
}

/// Delivers what the event loop would: layout requests, deferred deletes and paints.
void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// A window as wide as the program's, in which pages are built, shown and painted.
struct Window {
    Window()
    {
        host.resize(pageWidth + 40 + 20, 900); // the page's padding and room for a scroll bar
        new QVBoxLayout(&host);
        host.layout()->setContentsMargins(0, 0, 0, 0);
        host.show();
        settle();
    }
    void add(SummaryView *view)
    {
        host.layout()->addWidget(view);
        view->show();
        settle();
    }
    QWidget host;
};

void BM_Floor(benchmark::State &state)
{
    const AssertionsSnapshot snapshot = readings(int(state.range(0))).first();
    const QString text = SummaryClipboard::text(snapshot, {});
    QImage canvas;
    for (auto _ : state) {
        QLabel label;
        label.setWordWrap(true);
        label.setText(text);
        label.resize(pageWidth, label.heightForWidth(pageWidth));
        if (canvas.size() != label.size())
            canvas = QImage(label.size(), QImage::Format_ARGB32_Premultiplied);
        label.render(&canvas);
    }
    state.counters["characters"] = double(text.size());
}

void BM_FirstBuild(benchmark::State &state)
{
    AssertionsModel model;
    AssertionsModelFeeder(model).setSnapshot(readings(int(state.range(0))).first());
    Window window;
    for (auto _ : state) {
        auto *view = new SummaryView(&model);
        window.add(view);
        state.PauseTiming();
        delete view;
        settle();
        state.ResumeTiming();
    }
}

/// A page showing a reading, that each iteration hands the next of `next`.
void refreshWith(benchmark::State &state, const QList<AssertionsSnapshot> &shown,
                 const QList<AssertionsSnapshot> &next)
{
    AssertionsModel model;
    AssertionsModelFeeder feed(model);
    feed.setSnapshot(shown.first());
    Window window;
    window.add(new SummaryView(&model));
    int i = 0;
    for (auto _ : state) {
        // Alternating keeps every iteration a change of the same size.
        feed.setSnapshot((i % 2 ? shown : next).at(i % copies));
        settle();
        ++i;
    }
}

void BM_RefreshSameContent(benchmark::State &state)
{
    const QList<AssertionsSnapshot> same = readings(int(state.range(0)));
    refreshWith(state, same, same);
}

void BM_RefreshOneRowChanged(benchmark::State &state)
{
    refreshWith(state, readings(int(state.range(0))), readings(int(state.range(0)), true));
}

void BM_NameArrives(benchmark::State &state)
{
    AssertionsModel model;
    AssertionsModelFeeder feed(model);
    feed.setSnapshot(readings(int(state.range(0))).first());
    Window window;
    window.add(new SummaryView(&model));
    bool flip = false;
    for (auto _ : state) {
        // A different name each time, so every arrival is a change that the rows must show.
        feed.storeResolvedName(5000,
                               (flip = !flip) ? QStringLiteral("Spotify") : QStringLiteral("caffeinate"));
        settle();
    }
}

// What any change that moves the visible rows costs at the least: painting what the window shows.
void BM_PaintVisiblePage(benchmark::State &state)
{
    AssertionsModel model;
    AssertionsModelFeeder(model).setSnapshot(readings(int(state.range(0))).first());
    Window window;
    window.add(new SummaryView(&model));
    for (auto _ : state)
        window.host.repaint();
}

} // namespace

BENCHMARK(BM_Floor)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstBuild)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshSameContent)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshOneRowChanged)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NameArrives)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintVisiblePage)->Arg(50)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    static QtMessageHandler previous = nullptr;
    previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &message) {
            // The offscreen platform says this of every window it shows; it is no news here.
            if (!message.contains(QLatin1String("propagateSizeHints")) && previous)
                previous(type, context, message);
        });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
