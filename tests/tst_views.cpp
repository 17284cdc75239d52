#include "AssertionsModelFeeder.h"
#include "DarkPalette.h"
#include "FakeToolDir.h"
#include "Fixtures.h"
#include "details/DetailsView.h"
#include "pmset/PMSetService.h"
#include "profile/Profile.h"
#include "restart/RestartModel.h"
#include "restart/RestartView.h"
#include "summary/AssertionRow.h"
#include "summary/AssertionRowText.h"
#include "summary/SummaryView.h"
#include "ui/DisclosureGroup.h"
#include "ui/Icons.h"
#include "ui/NamedColor.h"
#include "ui/SelectableText.h"
#include "ui/TextStyle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QVBoxLayout>
#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;
using NamedColor::Role;

namespace {

AssertionsSnapshot everyKind()
{
    return PMSetService::parse(Fixtures::readText(u"assertions-every-kind.txt"_s),
                               QDateTime::currentDateTimeUtc());
}

AssertionsSnapshot listing(const QString &perProcessLines)
{
    return PMSetService::parse(u"Listed by owning process:\n"_s + perProcessLines,
                               QDateTime::currentDateTimeUtc());
}

QString textOf(const QWidget *parent, const QString &name)
{
    const auto *label = parent->findChild<QLabel *>(name);
    return label && label->isVisibleTo(parent->window()) ? label->text() : u"<none>"_s;
}

/// The sleep-kind blocks from top to bottom, by their object names.
QStringList blockOrder(const SummaryView &view)
{
    QList<QWidget *> blocks = view.findChildren<QWidget *>(QRegularExpression(u"^sleepBlock-"_s));
    std::sort(blocks.begin(), blocks.end(), [](QWidget *a, QWidget *b) { return a->y() < b->y(); });
    QStringList names;
    for (QWidget *w : blocks)
        names << w->objectName().mid(11);
    return names;
}

QWidget *blockOf(const QWidget &view, const QString &name = u"sleepBlock-idleSystem"_s)
{
    return view.findChild<QWidget *>(name);
}

DisclosureGroup *groupOf(const QWidget &view, const QString &block = u"sleepBlock-idleSystem"_s)
{
    return blockOf(view, block)->findChild<DisclosureGroup *>();
}

/// The block's rows from top to bottom.
QList<AssertionRow *> rowsOf(const QWidget &view, const QString &block = u"sleepBlock-idleSystem"_s)
{
    QList<AssertionRow *> rows = blockOf(view, block)->findChildren<AssertionRow *>();
    std::sort(rows.begin(), rows.end(), [](auto *a, auto *b) { return a->y() < b->y(); });
    return rows;
}

AssertionRow *rowOf(const QWidget &view, const QString &processName,
                    const QString &block = u"sleepBlock-idleSystem"_s)
{
    for (AssertionRow *row : rowsOf(view, block)) {
        if (row->assertion().processName == processName)
            return row;
    }
    return nullptr;
}

/// The texts of the shown labels and buttons of that name, joined by "|".
QString shown(const QWidget *view, const QString &objectName)
{
    QStringList texts;
    for (const QWidget *w : view->findChildren<QWidget *>(objectName)) {
        if (!w->isVisibleTo(view))
            continue;
        if (const auto *label = qobject_cast<const QLabel *>(w))
            texts.append(label->text());
        else if (const auto *button = qobject_cast<const QAbstractButton *>(w))
            texts.append(button->text());
    }
    return texts.join(u'|');
}

/// Whether the image has more than ten fully opaque pixels, all of exactly that colour.
bool drawnIn(const QImage &image, QRgb colour)
{
    int opaque = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (const QColor c = image.pixelColor(x, y); c.alpha() == 255) {
                if (c.rgb() != colour)
                    return false;
                ++opaque;
            }
        }
    }
    return opaque > 10;
}

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// A model fed by hand, with both of its views.
struct Views {
    AssertionsModel model;
    AssertionsModelFeeder feed{model};
    SummaryView summary{&model};
    DetailsView details{&model};

    /// The summary on screen, at the screenshots' size.
    bool showSummary()
    {
        summary.resize(720, 900);
        summary.show();
        return QTest::qWaitForWindowExposed(&summary);
    }
};

} // namespace

class TestViews : public QObject {
    Q_OBJECT
    // The Mac wording; the Linux wording has its own tests.
    const ScopedProfile m_mac{Profile::System::macOS};

    const QString shots = QStringLiteral(LULLWICK_SCREENSHOT_DIR);

    void screenshot(QAbstractScrollArea &view, const QString &name)
    {
        settle();
        // The whole page, not just the part the viewport shows.
        QVERIFY(static_cast<QScrollArea &>(view).widget()->grab().save(shots + u'/' + name + u".png"_s));
    }
    void darkScreenshot(QAbstractScrollArea &view, const QString &name)
    {
        const QPalette light = QApplication::palette();
        QApplication::setPalette(darkPalette());
        screenshot(view, name);
        QApplication::setPalette(light);
    }

private slots:
    void initTestCase() { QVERIFY(QDir().mkpath(shots)); }

    // Not a check: leaves the full pages, light and dark, for people to look at.
    void cleanupTestCase()
    {
        Views v;
        v.summary.resize(720, 900);
        v.details.resize(720, 900);
        v.feed.setSnapshot(everyKind());
        v.feed.setSettingsRaw(Fixtures::readText(u"settings-typical.txt"_s));
        v.feed.storeResolvedName(4711, u"Spotify"_s);
        screenshot(v.summary, u"summary-blockers-named"_s);
        screenshot(v.details, u"details"_s);
        darkScreenshot(v.summary, u"summary-blockers-dark"_s);
        darkScreenshot(v.details, u"details-dark"_s);
    }

    // Every symbol draws in exactly the tint asked for. Named colours and icons follow the palette:
    // the icon engine reads it when it draws, so the same QIcon re-tints.
    void colorsFollowThePalette()
    {
        const QColor tint(0x12, 0x34, 0x56);
        QVERIFY(!Icons::symbolNames().isEmpty());
        for (const QString &name : Icons::symbolNames()) {
            const QImage image = Icons::pixmap(name, tint, 16, 2.0).toImage();
            QVERIFY2(image.size() == QSize(32, 32) && drawnIn(image, tint.rgb()), qPrintable(name));
        }
        QVERIFY(Icons::icon(u"no.such.symbol").isNull());

        QWidget window;
        auto *label =
            TextStyle::label(QStringLiteral("Careful"), TextStyle::Style::callout, Role::orange, {}, &window);
        const QIcon gear = Icons::icon(u"gearshape", Role::primary, label);
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(0xFF9500));
        window.setPalette(darkPalette());
        QVERIFY(NamedColor::isDark(window.palette()));
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(0xFF9F0A));
        const auto strongest = [](const QImage &image) { // the colour of the most opaque pixel
            QColor best(Qt::transparent);
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (image.pixelColor(x, y).alpha() > best.alpha())
                        best = image.pixelColor(x, y);
            return best.rgb();
        };
        for (const QPalette &palette : {darkPalette(), QPalette()}) {
            window.setPalette(palette);
            const QRgb drawn = strongest(gear.pixmap(32, 1.0).toImage());
            const QRgb text = palette.color(QPalette::WindowText).rgb();
            // Premultiplied pixels round by one step.
            QVERIFY(std::abs(qRed(drawn) - qRed(text)) <= 1 && std::abs(qGreen(drawn) - qGreen(text)) <= 1 &&
                    std::abs(qBlue(drawn) - qBlue(text)) <= 1);
        }
    }

    void disclosureGroupWorksFromTheKeyboard()
    {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *group = new DisclosureGroup(QStringLiteral("Display sleep"));
        auto *field = new QLineEdit;
        group->setContent(field);
        auto *after = new QLineEdit;
        layout->addWidget(group);
        layout->addWidget(after);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy toggled(group, &DisclosureGroup::toggled);

        group->header()->setFocus();
        QTest::keyClick(group->header(), Qt::Key_Space);
        QCOMPARE(toggled.size(), 1);
        QCOMPARE(toggled.at(0).at(0).toBool(), false);
        QVERIFY(!field->isVisible());
        QTest::keyClick(group->header(), Qt::Key_Tab); // closed content is skipped
        QVERIFY(after->hasFocus());

        group->header()->setFocus();
        QTest::keyClick(group->header(), Qt::Key_Return);
        QCOMPARE(toggled.size(), 2);
        QVERIFY(field->isVisible());
        QTest::keyClick(group->header(), Qt::Key_Tab);
        QVERIFY(field->hasFocus());

        group->setExpanded(false); // the caller's state: shown, not reported
        QCOMPARE(toggled.size(), 2);
        QVERIFY(!field->isVisible());
    }

    void pageStates_data()
    {
        QTest::addColumn<bool>("snapshot");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("shown"); // which of error box, "Reading pmset…", page
        QTest::addColumn<QString>("shot");
        const QString failure =
            PMSetError::makeNonZeroExit(1, u"pmset: could not read assertions\n"_s).errorDescription();
        QTest::addRow("first refresh under way")
            << false << QString() << u"reading"_s << u"summary-no-snapshot"_s;
        QTest::addRow("error and no snapshot: the box alone")
            << false << failure << u"error"_s << u"summary-error"_s;
        QTest::addRow("snapshot: the page") << true << QString() << u"page"_s << u"summary-blockers"_s;
        QTest::addRow("later refresh failed: box above the page")
            << true << u"pmset failed"_s << u"error page"_s << u"summary-error-over-snapshot"_s;
    }
    void pageStates()
    {
        QFETCH(bool, snapshot);
        QFETCH(QString, error);
        QFETCH(QString, shot);
        Views v;
        v.summary.resize(720, 900);
        if (snapshot)
            v.feed.setSnapshot(everyKind());
        if (!error.isNull())
            v.feed.setLastError(error);
        QStringList visible;
        const auto shownPart = [&](const QString &name) { // a part not made yet is not shown either
            const auto *part = v.summary.findChild<QWidget *>(name);
            return part && part->isVisibleTo(&v.summary);
        };
        if (shownPart(u"errorBox"_s))
            visible << u"error"_s;
        if (shownPart(u"readingLabel"_s))
            visible << u"reading"_s;
        if (shownPart(u"introLabel"_s))
            visible << u"page"_s;
        QTEST(visible.join(u' '), "shown");
        if (!error.isNull())
            QCOMPARE(textOf(&v.summary, u"errorText"_s), error);
        screenshot(v.summary, shot);
    }

    void blocksAndVerdict()
    {
        Views v;
        SummaryView &view = v.summary;
        QVERIFY(v.showSummary());

        v.feed.setSnapshot(listing({}));
        QCOMPARE(textOf(&view, u"verdictLabel"_s), u"Nothing is preventing your Mac from sleeping."_s);
        for (QWidget *block : view.findChildren<QWidget *>(QRegularExpression(u"^sleepBlock-"_s))) {
            QCOMPARE(textOf(block, u"notBlocked"_s), u"Not blocked."_s);
            QCOMPARE(textOf(block, u"blockCount"_s), u"<none>"_s);
        }
        QVERIFY(!view.findChild<QWidget *>(u"otherAssertionsBlock"_s));
        screenshot(view, u"summary-empty"_s);

        v.feed.setSnapshot(everyKind());
        QCOMPARE(textOf(&view, u"verdictLabel"_s),
                 u"Currently blocking: idle system sleep, all system sleep, display sleep."_s);
        QCOMPARE(textOf(blockOf(view), u"blockCount"_s), u"3 blockers"_s);
        QCOMPARE(textOf(blockOf(view, u"sleepBlock-system"_s), u"blockCount"_s), u"1 blocker"_s);
        QCOMPARE(textOf(blockOf(view, u"otherAssertionsBlock"_s), u"blockCount"_s), u"2"_s);
        // An assertion against all sleep is a row in every block.
        for (const QString &block :
             {u"sleepBlock-idleSystem"_s, u"sleepBlock-system"_s, u"sleepBlock-display"_s})
            QVERIFY(rowOf(view, u"backupd"_s, block));

        // Only idle sleep blocked; the checkbox writes through and re-orders at once.
        v.feed.setSnapshot(listing(u"   pid 5(x): [0x1] 00:00:01 BackgroundTask\n"_s));
        settle();
        QCOMPARE(blockOrder(view), QStringList({u"system"_s, u"display"_s, u"idleSystem"_s}));
        view.findChild<QCheckBox *>(u"orderCheckBox"_s)->click();
        QCOMPARE(v.model.showNonBlockedFirst(), false);
        settle();
        QCOMPARE(blockOrder(view), QStringList({u"idleSystem"_s, u"system"_s, u"display"_s}));
        // The verdict keeps the canonical order whatever the checkbox says.
        v.feed.setSnapshot(everyKind());
        QVERIFY(textOf(&view, u"verdictLabel"_s).startsWith(u"Currently blocking: idle system sleep, all"_s));
    }

    // A closed block stays closed through new readings and makes no rows; opening it shows the
    // reading and names of that moment.
    void closedBlocksStayClosedUntilOpened()
    {
        Views v;
        QVERIFY(v.showSummary());
        v.feed.setSnapshot(listing({}));
        groupOf(v.summary)->header()->click();
        groupOf(v.summary, u"sleepBlock-display"_s)->header()->click();
        v.feed.setSnapshot(everyKind());
        groupOf(v.summary, u"otherAssertionsBlock"_s)->header()->click(); // closed with its rows
        v.feed.setSnapshot(listing({}));                                  // it goes, and comes back closed
        v.feed.setSnapshot(everyKind());
        v.feed.storeResolvedName(4711, u"Spotify"_s);
        settle();
        for (const QString &block :
             {u"sleepBlock-idleSystem"_s, u"sleepBlock-display"_s, u"otherAssertionsBlock"_s}) {
            QVERIFY2(!groupOf(v.summary, block)->isExpanded(), qPrintable(block));
            QVERIFY(!groupOf(v.summary, block)->content()->isVisibleTo(&v.summary));
        }
        QVERIFY(groupOf(v.summary, u"sleepBlock-system"_s)->content()->isVisibleTo(&v.summary));
        QVERIFY(rowsOf(v.summary).isEmpty());
        QCOMPARE(textOf(blockOf(v.summary), u"blockCount"_s), u"3 blockers"_s);

        groupOf(v.summary)->header()->click();
        settle();
        QCOMPARE(rowsOf(v.summary).size(), 3);
        QCOMPARE(textOf(rowOf(v.summary, u"coreaudiod"_s), u"rowTitle"_s),
                 u"Spotify is playing or holding a session"_s);
        for (AssertionRow *row : rowsOf(v.summary))
            QVERIFY(row->isVisible());
    }

    void arrivingNameRedrawsOnlyItsRows()
    {
        Views v;
        v.feed.setSnapshot(everyKind());
        AssertionRow *audio = rowOf(v.summary, u"coreaudiod"_s);
        QCOMPARE(textOf(audio, u"rowTitle"_s), u"An audio device or routing session is active"_s);
        QCOMPARE(textOf(audio, u"rowCreatedFor"_s), u"Created for pid 4711"_s);
        QVERIFY(textOf(audio, u"rowExplanation"_s).startsWith(u"Core Audio is macOS’s sound engine."_s));
        QCOMPARE(textOf(audio, u"rowHeldText"_s), u"Held 12m 31s"_s);

        const QList<AssertionRow *> before = v.summary.findChildren<AssertionRow *>();
        const auto otherTitles = [&] {
            QStringList titles;
            for (AssertionRow *row : before)
                titles << (row == audio ? QString() : textOf(row, u"rowTitle"_s));
            return titles;
        };
        const QStringList othersBefore = otherTitles();

        v.feed.storeResolvedName(4711, u"Spotify"_s);
        QCOMPARE(v.summary.findChildren<AssertionRow *>(), before); // no row was rebuilt
        QCOMPARE(otherTitles(), othersBefore);
        QCOMPARE(textOf(audio, u"rowTitle"_s), u"Spotify is playing or holding a session"_s);
        QCOMPARE(textOf(audio, u"rowCreatedFor"_s), u"Created for Spotify (pid 4711)"_s);
        QCOMPARE(
            textOf(audio, u"rowExplanation"_s),
            u"Spotify keeps a display- or system-sleep assertion alive whenever audio is playing or queued."_s);
        QCOMPARE(textOf(audio, u"rowCallToAction"_s), u"Pause playback or quit Spotify."_s);

        // The button copies the created-for PID; opening Activity Monitor fails here and is ignored.
        audio->findChild<QAbstractButton *>(u"rowActivityMonitor"_s)->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"4711"_s);
        rowOf(v.summary, u"backupd"_s)->findChild<QAbstractButton *>(u"rowActivityMonitor"_s)->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"88"_s);
    }

    // A change paints again only what it moved or changed; the window must then look as if it had
    // been painted whole: no edge of a card, no scroll-bar handle, no row left where it was.
    void changesRepaintWhatTheyMove_data()
    {
        QTest::addColumn<int>("assertions"); // few show the bottom edges of the blocks, many scroll
        QTest::addColumn<int>("change");
        for (int assertions : {6, 50}) {
            const QByteArray page = assertions < 10 ? "a short page: " : "a long page: ";
            QTest::newRow(page + "a name arrives and its rows grow") << assertions << 0;
            QTest::newRow(page + "another name comes and its rows shrink") << assertions << 1;
            QTest::newRow(page + "a reading with fewer assertions shortens a block") << assertions << 2;
            QTest::newRow(page + "a block closes") << assertions << 3;
        }
    }

    void changesRepaintWhatTheyMove()
    {
        QFETCH(int, assertions);
        QFETCH(int, change);
        const auto generated = [](int count) {
            return PMSetService::parse(QString::fromUtf8(Fixtures::generatedAssertions(count, 8)),
                                       QDateTime::currentDateTimeUtc());
        };
        AssertionsModel model;
        AssertionsModelFeeder feed{model};
        feed.setSnapshot(generated(assertions));
        if (change == 1)
            feed.storeResolvedName(5000, u"caffeinate"_s);
        QWidget window;
        auto *column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        auto *view = new SummaryView(&model);
        column->addWidget(view);
        window.resize(760, 900);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        settle();
        const int pageHeight = view->widget()->height();
        const int range = view->verticalScrollBar()->maximum();

        switch (change) {
        case 0:
            feed.storeResolvedName(5000, u"caffeinate"_s);
            break;
        case 1:
            feed.storeResolvedName(5000, u"Spotify"_s);
            break;
        case 2:
            feed.setSnapshot(generated(assertions - 2));
            break;
        case 3:
            groupOf(*view)->setExpanded(false);
            break;
        }
        // A layout pass can leave another behind it (a page that changed height lays out again).
        for (int pass = 0; pass < 5; ++pass)
            settle();
        QVERIFY(view->widget()->height() != pageHeight); // the change moved what is below it
        if (range > 0)
            QVERIFY(view->verticalScrollBar()->maximum() != range);

        // What the window holds now, painted bit by bit, against the same window painted whole.
        const auto held = [&] { return window.screen()->grabWindow(window.winId()).toImage(); };
        const QImage painted = held();
        window.repaint();
        const QImage whole = held();
        QCOMPARE(painted.size(), whole.size());
        QVERIFY2(painted == whole, "a change left pixels of what the window showed before");
    }

    // A new reading keeps the rows of the assertions it still holds, matched by process, assertion
    // and kind rather than by the new ids; only what differs is shown anew.
    void rowsOutliveReadingsOfTheSameAssertions_data()
    {
        QTest::addColumn<QString>("from"); // replaced in the listing…
        QTest::addColumn<QString>("to");   // …by this
        QTest::addColumn<QString>("idleTitles");
        QTest::addColumn<QString>("rebuilt"); // processes whose rows in the idle block are new
        const QString all =
            u"An audio device or routing session is active|Time Machine is running a backup|Syncing photos"_s;
        QTest::addRow("same content, new ids") << QString() << QString() << all << QString();
        QTest::addRow("held time moves on: the badge changes in place")
            << u"01:05:00 PreventSystemSleep"_s << u"01:06:00 PreventSystemSleep"_s << all << QString();
        QTest::addRow("an assertion no longer blocks: its row goes")
            << u"PreventSystemSleep named"_s << u"ExternalMedia named"_s
            << u"An audio device or routing session is active|Syncing photos"_s << QString();
        QTest::addRow("an assertion of another kind: a new row in its place")
            << u"01:05:00 PreventSystemSleep"_s << u"01:05:00 PreventUserIdleSystemSleep"_s << all
            << u"backupd"_s;
    }
    void rowsOutliveReadingsOfTheSameAssertions()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        Views v;
        QVERIFY(v.showSummary());
        v.feed.setSnapshot(everyKind());
        settle();
        QHash<QString, AssertionRow *> before;
        for (AssertionRow *row : rowsOf(v.summary))
            before.insert(row->assertion().processName, row);

        QString listing = Fixtures::readText(u"assertions-every-kind.txt"_s);
        if (!from.isNull())
            listing.replace(from, to);
        const AssertionsSnapshot next = PMSetService::parse(listing, QDateTime::currentDateTimeUtc());
        v.feed.setSnapshot(next);
        settle();

        // In the block's order, each row showing the new reading's assertion, id included.
        const QList<Assertion> blockers = next.blockers(SleepKind::idleSystem);
        const QList<AssertionRow *> rows = rowsOf(v.summary);
        QCOMPARE(rows.size(), blockers.size());
        QStringList titles, rebuilt;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            QCOMPARE(rows[i]->assertion(), blockers[i]);
            QCOMPARE(textOf(rows[i], u"rowHeldText"_s),
                     u"Held "_s + AssertionRowText::prettyDuration(blockers[i].timeHeld));
            // What the user reads of the kind is the new reading's.
            QVERIFY(textOf(rows[i], u"rowProcess"_s).endsWith(Profile::current().describe(blockers[i].kind)));
            titles << textOf(rows[i], u"rowTitle"_s);
            if (before.value(blockers[i].processName) != rows[i])
                rebuilt << blockers[i].processName;
        }
        QTEST(titles.join(u'|'), "idleTitles");
        QTEST(rebuilt.join(u'|'), "rebuilt");
    }

    // The label that shapes its text once breaks, measures and paints it exactly as QLabel does.
    void textLabelMatchesQLabel_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("wrap");
        QTest::addColumn<int>("width");
        const QString paragraph =
            u"Power-management assertions are signals from apps and from the system itself that say, "
            u"in effect, “don’t sleep yet, I’m doing something.” Each names the kind of sleep it prevents."_s;
        QTest::addRow("one line that fits") << u"Held 12m 31s"_s << true << 300;
        QTest::addRow("a paragraph broken into lines") << paragraph << true << 300;
        QTest::addRow("a paragraph at its page's width") << paragraph << true << 700;
        QTest::addRow("narrower than its widest word") << paragraph << true << 40;
        QTest::addRow("a line that exactly fits") << paragraph << true << -1; // its own unbroken width
        QTest::addRow("line feeds in the text")
            << u"First line\nsecond, rather longer line\nthird"_s << true << 90;
        QTest::addRow("right to left") << u"שלום עולם, זהו טקסט ארוך למדי שנשבר לשורות"_s << true << 120;
        QTest::addRow("not wrapping") << paragraph << false << 200;
        QTest::addRow("empty") << QString() << true << 200;
    }
    void textLabelMatchesQLabel()
    {
        QFETCH(QString, text);
        QFETCH(bool, wrap);
        QFETCH(int, width);
        QWidget window;
        auto *ours = TextStyle::label(text, TextStyle::Style::callout, Role::primary,
                                      wrap ? TextStyle::Option::wrap : TextStyle::Option::none, &window);
        auto *theirs = new QLabel(&window);
        theirs->setFont(ours->font());
        theirs->setPalette(ours->palette());
        theirs->setWordWrap(wrap);
        theirs->setTextFormat(Qt::PlainText);
        theirs->setText(text);
        if (width < 0)
            width = QFontMetrics(ours->font())
                        .boundingRect(QRect(0, 0, 2000, 2000), Qt::TextWordWrap, text)
                        .width();

        QCOMPARE(ours->heightForWidth(width), theirs->heightForWidth(width));
        QCOMPARE(ours->minimumSizeHint(), theirs->minimumSizeHint());
        if (!wrap)
            QCOMPARE(ours->sizeHint(), theirs->sizeHint());
        const QSize size(width, qMax(theirs->heightForWidth(width), theirs->sizeHint().height()));
        const auto paint = [&size](QLabel *label) {
            label->resize(size);
            QImage image(size, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            label->render(&image);
            return image;
        };
        QCOMPARE(paint(ours), paint(theirs));
    }

    void detailsLineColours_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("runs"); // colour (and "bold") of each run, then the second run's start
        QTest::addRow("heading bold") << u"Kernel Assertions: 0x4=USB"_s << u"primary bold"_s;
        QTest::addRow("indented heading not bold") << u" Kernel Assertions:"_s << u"primary"_s;
        QTest::addRow("tab line dimmed, before its type") << u"\tBackgroundTask"_s << u"secondary"_s;
        QTest::addRow("blue type") << u"   BackgroundTask    1"_s << u"blue"_s;
        QTest::addRow("orange wins over blue") << u"   BackgroundTask UserIsActive"_s << u"orange"_s;
        QTest::addRow("split at the name")
            << u"   pid 1(a): [0x1] 00:00:01 PreventUserIdleSystemSleep named: \"x\""_s
            << u"orange, secondary from  named: \""_s;
        QTest::addRow("two separators not split")
            << u"   UserIsActive named: \"a\" named: \"b\""_s << u"orange"_s;
        QTest::addRow("empty line keeps its height") << QString() << u"primary"_s;
    }
    void detailsLineColours()
    {
        QFETCH(QString, line);
        QFETCH(QString, runs);
        Views v;
        v.feed.setSettingsRaw(u"AC Power:\n"_s + line);
        const QTextBlock block =
            v.details.findChild<SelectableText *>(u"settingsText"_s)->document()->lastBlock();
        const QPalette palette = v.details.palette();
        const QHash<QRgb, QString> names{
            {NamedColor::resolve(Role::primary, palette).rgba(), u"primary"_s},
            {NamedColor::resolve(Role::secondary, palette).rgba(), u"secondary"_s},
            {NamedColor::resolve(Role::orange, palette).rgba(), u"orange"_s},
            {NamedColor::resolve(Role::blue, palette).rgba(), u"blue"_s}};
        QStringList seen;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            QString run = names.value(format.foreground().color().rgba(), u"?"_s);
            if (format.fontWeight() == QFont::Bold)
                run += u" bold"_s;
            if (!seen.isEmpty())
                run += u" from "_s + it.fragment().text().left(9);
            seen << run;
        }
        QCOMPARE(seen.join(u", "_s), runs);
        QCOMPARE(block.text(), line.isEmpty() ? u" "_s : line);
    }

    void detailsWithoutOutput()
    {
        Views v;
        for (const QString &name : {u"assertionsEmpty"_s, u"settingsEmpty"_s})
            QCOMPARE(textOf(&v.details, name), u"(no output)"_s);
        v.feed.setSnapshot(AssertionsSnapshot{QDateTime::currentDateTimeUtc(), {}, {}, {}}); // empty listing
        v.feed.setSettingsRaw(u"AC Power:"_s);
        QCOMPARE(textOf(&v.details, u"assertionsEmpty"_s), u"(no output)"_s);
        QCOMPARE(textOf(&v.details, u"settingsEmpty"_s), u"<none>"_s);
    }

    void accessibleNamesAreTheVisibleLabels()
    {
        Views v;
        v.feed.setSnapshot(everyKind());
        int buttons = 0;
        for (const QWidget *view : std::initializer_list<const QWidget *>{&v.summary, &v.details}) {
            for (const QAbstractButton *button : view->findChildren<QAbstractButton *>()) {
                QVERIFY2(!button->text().isEmpty(), qPrintable(button->objectName()));
                QCOMPARE(button->accessibleName(), button->text());
                ++buttons;
            }
        }
        // 4 blocks, 4 settings links, the checkbox, the page's button and one per row (3 + 1 + 1 + 2).
        QCOMPARE(buttons, 4 + 4 + 1 + 1 + 7);
    }

    void restartViewThroughASession()
    {
        FakeToolDir fake; // its folder holds the stall report too
        fake.setOutputFromFixture(u"assertions"_s, u"assertions-software-update.txt"_s);
        fake.setOutputFromFixture(u"log"_s, u"loginwindow-compact.txt"_s);
        fake.setOutputFromFixture(u"spindump"_s, u"spindump-decoded.txt"_s);
        fake.setSleep(u"log"_s, 0.3);
        const QString report = fake.path() + u"/loginwindow_2026-11-19-220531_Mac.shutdownStall"_s;
        Fixtures::writeFile(report);
        const QList<RunningAppInfo> apps{
            {u"TextEdit"_s, {}, 301}, {u"Preview"_s, {}, 302}, {u"Pages"_s, {}, 303}};
        RestartModel model([&] { return apps; }, fake.pmsetPath(), fake.logPath(), fake.spindumpPath(),
                           fake.path());
        const auto settled = [&] {
            return QTest::qWaitFor([&] { return !model.isAnalyzing() && !model.isDecoding(); }, 20'000);
        };
        RestartView view(&model);
        view.resize(720, 1300);
        view.show();
        QVERIFY(QTest::qWaitForWindowActive(&view));

        QCOMPARE(shown(&view, u"analyzeButton"_s), u"Analyze"_s);
        QCOMPARE(shown(&view, u"analyzeHint"_s),
                 u"Click Analyze to check what's holding up a restart right now."_s);
        QCOMPARE(shown(&view, u"verdictLabel"_s), QString());
        screenshot(view, u"restart-before-analysis"_s);

        // The shortcut starts the analysis (after the button's brief pressed look).
        QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(model.isAnalyzing());
        QVERIFY(!view.findChild<QAbstractButton *>(u"analyzeButton"_s)->isEnabled());
        QCOMPARE(shown(&view, u"analyzeProgressText"_s), u"Reading pmset, scanning loginwindow logs…"_s);
        QCOMPARE(shown(&view, u"analyzeHint"_s) + shown(&view, u"verdictLabel"_s), QString());
        screenshot(view, u"restart-first-analysis"_s);

        QVERIFY(settled());
        QCOMPARE(shown(&view, u"analyzeButton"_s), u"Analyze again"_s);
        QVERIFY(shown(&view, u"checkedLabel"_s).startsWith(u"Checked "_s));
        QCOMPARE(shown(&view, u"verdictLabel"_s), u"Found a likely cause that's holding up restart."_s);
        QCOMPARE(shown(&view, u"severityTag"_s), u"Likely|Possible|Possible|For reference"_s);
        QCOMPARE(shown(&view, u"decodeButton"_s) + shown(&view, u"revealButton"_s),
                 u"Decode latest stall reportReveal report"_s);
        QCOMPARE(shown(&view, u"decodedProcessLabel"_s), QString());
        screenshot(view, u"restart-all-findings"_s);

        view.findChild<QAbstractButton *>(u"decodeButton"_s)->click();
        QVERIFY(settled());
        QCOMPARE(shown(&view, u"decodedProcessLabel"_s), u"Process that hung the shutdown: backupd [1180]"_s);
        QCOMPARE(shown(&view, u"decodeButton"_s), u"Decode again"_s);
        screenshot(view, u"restart-decoded"_s);
        // Every button is named for assistive technology by its visible label.
        for (const QAbstractButton *button : view.findChildren<QAbstractButton *>())
            QCOMPARE(button->accessibleName(), button->text());

        darkScreenshot(view, u"restart-decoded-dark"_s);

        // Only the running apps are left: a green verdict over one blue card.
        fake.setOutput(u"assertions"_s, "Listed by owning process:\n");
        fake.setExitStatus(u"log"_s, 1);
        QVERIFY(QFile::remove(report));
        view.findChild<QAbstractButton *>(u"analyzeButton"_s)->click();
        QVERIFY(settled());
        QCOMPARE(shown(&view, u"verdictLabel"_s),
                 u"No obvious restart blocker found. If restart still hangs, "
                 u"it's most likely an app with an unsaved document."_s);
        QCOMPARE(shown(&view, u"severityTag"_s), u"For reference"_s);
        QCOMPARE(shown(&view, u"findingTitle"_s), u"3 apps are open and will be asked to quit"_s);
        QCOMPARE(shown(&view, u"decodeButton"_s), QString());
        screenshot(view, u"restart-running-apps-only"_s);

        // Again, finding the same: the card stays as it is, and only the time is new.
        const QPointer<QLabel> title = view.findChild<QLabel *>(u"findingTitle"_s);
        view.findChild<QAbstractButton *>(u"analyzeButton"_s)->click();
        QVERIFY(settled());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(title);
        QCOMPARE(view.findChildren<QLabel *>(u"findingTitle"_s), QList<QLabel *>{title.data()});

        // A report named with a line feed and a screen-clearing escape is shown on one line, escapes visible.
        Fixtures::writeFile(fake.path() + u"/evil\n\x1b[2J_2026-11-19-1.shutdownStall"_s);
        view.findChild<QAbstractButton *>(u"analyzeButton"_s)->click();
        QVERIFY(settled());
        QVERIFY2(
            shown(&view, u"findingDetail"_s).contains(u"(evil\\x0a\\x1b[2J_2026-11-19-1.shutdownStall)"_s),
            qPrintable(shown(&view, u"findingDetail"_s)));
        screenshot(view, u"restart-stall-name-escaped"_s);
    }
};

QTEST_MAIN(TestViews)
#include "tst_views.moc"
