#include "summary/SummaryView.h"

#include "platform/Workspace.h"
#include "profile/Profile.h"
#include "summary/AssertionRow.h"
#include "summary/AssertionsModel.h"
#include "summary/SleepSection.h"
#include "summary/SummaryVerdict.h"
#include "ui/Card.h"
#include "ui/DisclosureGroup.h"
#include "ui/IconRow.h"
#include "ui/Icons.h"
#include "ui/LinkButton.h"
#include "ui/ScrollPage.h"
#include "ui/TextStyle.h"
#include "ui/Visibility.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

namespace {

QString kindObjectName(SleepKind kind)
{
    switch (kind) {
    case SleepKind::idleSystem:
        return u"sleepBlock-idleSystem"_s;
    case SleepKind::system:
        return u"sleepBlock-system"_s;
    case SleepKind::display:
        return u"sleepBlock-display"_s;
    }
    return {};
}

/// Whether two readings' assertions are the same one: the same process holding the same assertion
/// of the same kind. Its held time moves on between readings, and its id is new in each.
bool sameAssertion(const Assertion &a, const Assertion &b)
{
    return a.pid == b.pid && a.assertionID == b.assertionID && a.kind == b.kind &&
           a.processName == b.processName;
}

void staticContents(QWidget *container)
{
    container->setAttribute(Qt::WA_StaticContents);
}

size_t assertionKey(const Assertion &a)
{
    return qHashMulti(0, a.pid, a.assertionID, a.kind, a.processName);
}

/// Holds the layouts from widgets of a visible page up to the page while its contents change, and
/// lets them go together. Every widget shown on a visible page lays out all of its ancestors at
/// once (QWidgetPrivate::setVisible), so rows and lines appearing one by one would lay out the
/// whole page each time; held, the page is laid out once, afterwards.
class LayoutHold {
public:
    explicit LayoutHold(QWidget *page) : m_page(page) {}
    ~LayoutHold()
    {
        for (const QPointer<QLayout> &layout : std::as_const(m_held)) {
            if (layout) { // a block that went away takes its layouts along
                layout->setEnabled(true);
                layout->invalidate();
            }
        }
    }
    Q_DISABLE_COPY_MOVE(LayoutHold)

    void hold(QWidget *from)
    {
        for (QWidget *w = from; w; w = w->parentWidget()) {
            if (QLayout *layout = w->layout(); layout && layout->isEnabled()) {
                layout->setEnabled(false);
                m_held << layout;
            }
            if (w == m_page)
                break;
        }
    }

private:
    QWidget *m_page;
    QList<QPointer<QLayout>> m_held;
};

} // namespace

SummaryView::SummaryView(AssertionsModel *model, QWidget *parent)
    : QScrollArea(parent), m_model(model), m_expanded{{SleepKind::idleSystem, true},
                                                      {SleepKind::system, true},
                                                      {SleepKind::display, true}}
{
    setObjectName(u"summaryView"_s);
    QVBoxLayout *column = ScrollPage::setUp(this);

    m_errorBox = makeErrorBox();
    column->addWidget(m_errorBox);
    m_reading = TextStyle::label(Profile::current().summary().reading, Style::body, Role::secondary);
    m_reading->setObjectName(u"readingLabel"_s);
    column->addWidget(m_reading);

    // The page below is made with the first reading: the window's first paint shows none of it.
    m_content = new QWidget;
    column->addWidget(m_content);
    // These hold the rows and paint nothing themselves: when a row grows or shrinks they repaint
    // only what moved, not all that is shown above it.
    staticContents(widget());
    staticContents(m_content);
    column->addStretch();

    connect(m_model, &AssertionsModel::snapshotChanged, this, &SummaryView::showSnapshot);
    connect(m_model, &AssertionsModel::lastErrorChanged, this, &SummaryView::showState);
    connect(m_model, &AssertionsModel::resolvedNamesChanged, this, &SummaryView::showNames);
    connect(m_model, &AssertionsModel::sleepFindingsChanged, this, [this] {
        if (!m_order)
            return;
        showVerdict();
        m_sleepSection->showFindings(m_model->sleepFindings());
    });
    connect(m_model, &AssertionsModel::showNonBlockedFirstChanged, this, [this] {
        if (!m_order)
            return;
        const QSignalBlocker blocker(m_order);
        m_order->setChecked(m_model->showNonBlockedFirst());
        orderBlocks();
    });
    showSnapshot();
}

void SummaryView::makePage()
{
    auto *content = new QVBoxLayout(m_content);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(18);
    content->addWidget(makeIntro());
    content->addWidget(makeVerdict());
    m_sleepSection = new SleepSection;
    m_sleepSection->showFindings(m_model->sleepFindings());
    content->addWidget(m_sleepSection);
    m_order = new QCheckBox(u"Show what isn’t blocked first"_s);
    m_order->setObjectName(u"orderCheckBox"_s);
    m_order->setAccessibleName(m_order->text());
    m_order->setFont(TextStyle::font(Style::callout));
    m_order->setChecked(m_model->showNonBlockedFirst());
    connect(m_order, &QCheckBox::toggled, m_model, &AssertionsModel::setShowNonBlockedFirst);
    content->addWidget(m_order);
    m_blocks = new QVBoxLayout;
    m_blocks->setSpacing(18);
    content->addLayout(m_blocks);
    for (SleepKind kind : allSleepKinds)
        makeSleepBlock(kind);
    content->addWidget(makeWhereToLookNext());
}

void SummaryView::showState()
{
    const bool hasSnapshot = m_model->snapshot().has_value();
    const std::optional<QString> &error = m_model->lastError();
    if (error)
        m_errorText->setText(*error);
    setShown(m_errorBox, error.has_value());
    setShown(m_reading, !hasSnapshot && !error);
    setShown(m_content, hasSnapshot);
}

void SummaryView::showSnapshot()
{
    // The page keeps its blocks and the rows of the assertions that are still held, and changes
    // only what differs from the reading it shows; a reading with the same content changes nothing.
    const std::optional<AssertionsSnapshot> &snapshot = m_model->snapshot();
    if (snapshot) {
        m_shownNames = m_model->resolvedNames();
        if (!m_order)
            makePage();
        LayoutHold hold(widget());
        if (m_content->isVisible()) {
            for (Block *block : {&m_kindBlocks[0], &m_kindBlocks[1], &m_kindBlocks[2], &m_others}) {
                if (block->card) {
                    hold.hold(block->content);
                    hold.hold(block->group->header());
                }
            }
        }
        for (SleepKind kind : allSleepKinds)
            showSleepBlock(kind, snapshot->blockers(kind));
        QList<Assertion> others = snapshot->nonBlockingAssertions();
        if (others.isEmpty()) {
            if (Card *card = std::exchange(m_others, {}).card) {
                m_blocks->removeWidget(card);
                delete card;
            }
        } else {
            if (!m_others.card) {
                makeOtherAssertionsBlock();
                hold.hold(m_others.content);
                m_blocks->addWidget(m_others.card);
                // On a shown page a new block is shown now, not when the event loop gets to it.
                if (m_content->isVisible())
                    m_others.card->show();
            }
            m_others.count->setText(QString::number(others.size()));
            showRows(m_others, std::move(others));
        }
        indexRows();

        showVerdict();
        orderBlocks();
    }
    showState();
}

void SummaryView::showVerdict()
{
    const std::optional<AssertionsSnapshot> &snapshot = m_model->snapshot();
    if (!snapshot)
        return;
    const std::optional<SleepFindings> &sleep = m_model->sleepFindings();
    const SummaryVerdict verdict = SummaryVerdict::of(*snapshot, sleep ? sleep->cannotSuspend : std::nullopt);
    const bool clear = verdict.isClear();
    m_verdictIcon->setSymbol(clear ? u"moon.zzz"_s : u"exclamationmark.triangle.fill"_s,
                             clear ? Role::green : Role::orange);
    m_verdictText->setText(verdict.text());
    NamedColor::bindForeground(m_verdictText, clear ? Role::green : Role::orange);
}

void SummaryView::showSleepBlock(SleepKind kind, QList<Assertion> blockers)
{
    Block &block = m_kindBlocks[size_t(kind)];
    const bool clear = blockers.isEmpty();
    block.icon->setSymbol(clear ? u"checkmark.circle.fill"_s : u"exclamationmark.triangle.fill"_s,
                          clear ? Role::green : Role::orange);
    if (!clear)
        block.count->setText(QString::number(blockers.size()) +
                             (blockers.size() == 1 ? u" blocker"_s : u" blockers"_s));
    setShown(block.count, !clear);
    setShown(block.notBlocked, clear);
    showRows(block, std::move(blockers));
}

void SummaryView::showRows(Block &block, QList<Assertion> assertions)
{
    block.assertions = std::move(assertions);
    block.rowsCurrent = false;
    // A closed block's rows are built when it is opened: nobody sees them before.
    if (block.group->isExpanded())
        syncRows(block);
}

void SummaryView::syncRows(Block &block)
{
    block.rowsCurrent = true;
    QMultiHash<size_t, AssertionRow *> spare;
    for (AssertionRow *row : std::as_const(block.rows))
        spare.insert(assertionKey(row->assertion()), row);

    auto *column = static_cast<QVBoxLayout *>(block.content->layout());
    const int first = column->count() - int(block.rows.size()); // rows come last, below the text
    QList<AssertionRow *> rows;
    rows.reserve(block.assertions.size());
    for (const Assertion &assertion : std::as_const(block.assertions)) {
        AssertionRow *row = nullptr;
        const size_t key = assertionKey(assertion);
        for (auto it = spare.find(key); it != spare.end() && it.key() == key; ++it) {
            if (sameAssertion((*it)->assertion(), assertion)) {
                row = *it;
                spare.erase(it);
                break;
            }
        }
        if (row)
            row->showAssertion(assertion, m_shownNames);
        else
            row = new AssertionRow(assertion, m_shownNames, block.content);
        rows << row;
    }
    // A held layout does not notice its widgets going away, so they leave it first.
    for (AssertionRow *row : std::as_const(spare)) {
        column->removeWidget(row);
        delete row;
    }
    // Rows that stayed keep their place; only new ones and those that moved are placed again.
    for (int i = 0; i < rows.size(); ++i) {
        QLayoutItem *item = column->itemAt(first + i);
        if (!item || item->widget() != rows[i])
            column->insertWidget(first + i, rows[i]);
        if (block.content->isVisible() && rows[i]->isHidden())
            rows[i]->show();
    }
    block.rows = std::move(rows);
}

void SummaryView::indexRows()
{
    m_rowsByCreator.clear();
    for (const Block *block : {&m_kindBlocks[0], &m_kindBlocks[1], &m_kindBlocks[2], &m_others}) {
        for (AssertionRow *row : block->rows) {
            if (const auto pid = row->createdForPID())
                m_rowsByCreator.insert(*pid, row);
        }
    }
}

void SummaryView::orderBlocks()
{
    const std::optional<AssertionsSnapshot> &snapshot = m_model->snapshot();
    if (!snapshot)
        return;
    QList<SleepKind> blocked;
    QList<SleepKind> notBlocked;
    for (SleepKind kind : allSleepKinds)
        (snapshot->blockers(kind).isEmpty() ? notBlocked : blocked).append(kind);
    const QList<SleepKind> order =
        m_model->showNonBlockedFirst() ? notBlocked + blocked : blocked + notBlocked;
    // Moving the existing blocks keeps their rows and open states; nothing is rebuilt.
    for (int i = 0; i < order.size(); ++i) {
        Card *card = m_kindBlocks[size_t(order[i])].card;
        if (QLayoutItem *item = m_blocks->itemAt(i); !item || item->widget() != card)
            m_blocks->insertWidget(i, card);
    }
    if (m_others.card) {
        const int last = int(order.size());
        if (QLayoutItem *item = m_blocks->itemAt(last); !item || item->widget() != m_others.card)
            m_blocks->insertWidget(last, m_others.card);
    }
}

void SummaryView::showNames()
{
    const ResolvedNames &names = m_model->resolvedNames();
    QSet<qint64> changed;
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        if (m_shownNames.value(it.key()) != it.value() || !m_shownNames.contains(it.key()))
            changed.insert(it.key());
    }
    for (auto it = m_shownNames.cbegin(); it != m_shownNames.cend(); ++it) {
        if (!names.contains(it.key()))
            changed.insert(it.key());
    }
    m_shownNames = names;

    QList<AssertionRow *> rows;
    for (qint64 pid : changed) {
        for (auto row = m_rowsByCreator.constFind(pid); row != m_rowsByCreator.cend() && row.key() == pid;
             ++row)
            rows << *row;
    }
    LayoutHold hold(widget());
    for (AssertionRow *row : std::as_const(rows))
        hold.hold(row);
    for (AssertionRow *row : std::as_const(rows))
        row->showNames(names);
}

QWidget *SummaryView::makeErrorBox()
{
    auto *box = new Card(Role::orange, 0.08, 10, 6);
    box->setObjectName(u"errorBox"_s);
    box->setOutline(Role::orange, 0.40, 1);
    m_errorText = TextStyle::label({}, Style::callout, Role::orange, Option::wrap | Option::selectable, box);
    m_errorText->setObjectName(u"errorText"_s);
    box->column()->addWidget(m_errorText);
    return box;
}

QWidget *SummaryView::makeIntro()
{
    auto *intro =
        TextStyle::label(Profile::current().summary().intro, Style::callout, Role::secondary, Option::wrap);
    intro->setObjectName(u"introLabel"_s);
    return intro;
}

QWidget *SummaryView::makeVerdict()
{
    m_verdictIcon = new IconLabel(u"moon.zzz"_s, Role::green);
    m_verdictIcon->setObjectName(u"verdictIcon"_s);
    m_verdictText = TextStyle::label({}, Style::title3, Role::green, Option::medium | Option::wrap);
    m_verdictText->setObjectName(u"verdictLabel"_s);
    return iconRow(m_verdictIcon, m_verdictText, 6);
}

void SummaryView::makeSleepBlock(SleepKind kind)
{
    Block &block = m_kindBlocks[size_t(kind)];
    block.card = new Card(Role::secondary, 0.06, 14, 10, m_content);
    block.card->setObjectName(kindObjectName(kind));
    block.group = new DisclosureGroup(rawValue(kind));
    block.card->column()->addWidget(block.group);

    QHBoxLayout *title = block.group->header()->row();
    block.icon = new IconLabel(u"checkmark.circle.fill"_s, Role::green);
    block.icon->setObjectName(u"blockIcon"_s);
    auto *label = TextStyle::label(rawValue(kind), Style::title3, Role::primary, Option::semibold);
    label->setObjectName(u"blockTitle"_s);
    block.icon->setFont(label->font());
    title->addWidget(block.icon);
    title->addWidget(label);
    block.count = TextStyle::label({}, Style::caption, Role::orange);
    block.count->setObjectName(u"blockCount"_s);
    block.count->hide();
    title->addWidget(block.count);
    title->addStretch();

    block.content = makeContent(Profile::current().summary().kindExplanations[size_t(kind)]);
    auto *notBlocked = TextStyle::label(u"Not blocked."_s, Style::callout, Role::green);
    notBlocked->setObjectName(u"notBlocked"_s);
    block.notBlocked = iconRow(new IconLabel(u"checkmark.circle.fill"_s, Role::green), notBlocked, 6);
    block.content->layout()->addWidget(block.notBlocked);
    block.group->setContent(block.content);
    staticContents(block.group);
    staticContents(block.content);
    block.group->setExpanded(m_expanded.value(kind, true));
    m_blocks->addWidget(block.card);
    connect(block.group, &DisclosureGroup::toggled, this, [this, kind](bool open) {
        m_expanded[kind] = open;
        Block &opened = m_kindBlocks[size_t(kind)];
        if (open && !opened.rowsCurrent) {
            syncRows(opened);
            indexRows();
        }
    });
}

void SummaryView::makeOtherAssertionsBlock()
{
    m_others.card = new Card(Role::secondary, 0.06, 14, 10, m_content);
    m_others.card->setObjectName(u"otherAssertionsBlock"_s);
    m_others.group = new DisclosureGroup(u"Other assertions held"_s);
    m_others.card->column()->addWidget(m_others.group);

    QHBoxLayout *title = m_others.group->header()->row();
    auto *label =
        TextStyle::label(u"Other assertions held"_s, Style::title3, Role::primary, Option::semibold);
    label->setObjectName(u"blockTitle"_s);
    auto *icon = new IconLabel(u"info.circle.fill"_s, Role::secondary);
    icon->setFont(label->font());
    title->addWidget(icon);
    title->addWidget(label);
    m_others.count = TextStyle::label({}, Style::caption, Role::secondary);
    m_others.count->setObjectName(u"blockCount"_s);
    title->addWidget(m_others.count);
    title->addStretch();

    m_others.content = makeContent(Profile::current().summary().othersExplanation);
    m_others.group->setContent(m_others.content);
    staticContents(m_others.group);
    staticContents(m_others.content);
    m_others.group->setExpanded(m_othersExpanded);
    connect(m_others.group, &DisclosureGroup::toggled, this, [this](bool open) {
        m_othersExpanded = open;
        if (open && !m_others.rowsCurrent) {
            syncRows(m_others);
            indexRows();
        }
    });
}

QWidget *SummaryView::makeContent(const QString &explanation)
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto *paragraph = TextStyle::label(explanation, Style::callout, Role::secondary, Option::wrap);
    paragraph->setObjectName(u"blockExplanation"_s);
    column->addWidget(paragraph);
    column->addSpacing(4);
    return content;
}

QWidget *SummaryView::makeWhereToLookNext()
{
    const Profile &profile = Profile::current();
    const Profile::Summary &texts = profile.summary();
    auto *card = new Card(Role::accent, 0.06);
    card->setObjectName(u"whereToLookNext"_s);
    QVBoxLayout *column = card->column();
    column->setSpacing(10);
    column->addWidget(
        TextStyle::label(u"Where to look next"_s, Style::title3, Role::primary, Option::semibold));
    column->addWidget(
        TextStyle::label(texts.whereToLookIntro, Style::callout, Role::secondary, Option::wrap));

    auto *links = new QVBoxLayout;
    links->setSpacing(6);
    for (const OpenTarget &link : profile.settingsLinks()) {
        auto *button = new LinkButton(link.label, u"gearshape"_s);
        button->setObjectName(u"settingsLink"_s);
        connect(button, &LinkButton::clicked, this, [link] { Workspace::open(link); });
        links->addWidget(button);
    }
    links->addSpacing(4);
    const std::optional<OpenTarget> viewer = profile.processViewer();
    if (viewer) {
        const QString label = texts.viewerButton.arg(viewer->label);
        auto *open = new QPushButton(Icons::icon(u"chart.line.uptrend.xyaxis", Role::primary, this), label);
        open->setObjectName(u"activityMonitorButton"_s);
        open->setAccessibleName(label);
        // Unlike a row's button, this one copies nothing.
        connect(open, &QPushButton::clicked, this, [target = *viewer] { Workspace::open(target); });
        links->addWidget(open, 0, Qt::AlignLeft);
        links->addSpacing(4);
    }
    auto *tip = TextStyle::label(viewer ? texts.viewerTip.arg(viewer->label) : texts.noViewerTip,
                                 Style::caption, Role::secondary, Option::wrap);
    tip->setObjectName(u"viewerTip"_s);
    links->addWidget(tip);
    column->addLayout(links);
    return card;
}

} // namespace lullwick
