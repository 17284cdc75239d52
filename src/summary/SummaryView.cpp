#include "summary/SummaryView.h"

#include "platform/Profile.h"
#include "platform/Workspace.h"
#include "summary/AssertionRow.h"
#include "summary/AssertionsModel.h"
#include "summary/SummaryVerdict.h"
#include "ui/Card.h"
#include "ui/DisclosureGroup.h"
#include "ui/Icons.h"
#include "ui/LinkButton.h"
#include "ui/ScrollPage.h"
#include "ui/TextStyle.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
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

/// An icon beside a label, as one row.
QWidget *iconRow(IconLabel *icon, QLabel *label, int spacing)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    icon->setFont(label->font());
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(label, 1);
    return row;
}

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

    m_content = new QWidget;
    auto *content = new QVBoxLayout(m_content);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(18);
    content->addWidget(makeIntro());
    content->addWidget(makeVerdict());
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
    content->addWidget(makeWhereToLookNext());
    column->addWidget(m_content);
    column->addStretch();

    connect(m_model, &AssertionsModel::snapshotChanged, this, &SummaryView::rebuild);
    connect(m_model, &AssertionsModel::lastErrorChanged, this, &SummaryView::showState);
    connect(m_model, &AssertionsModel::resolvedNamesChanged, this, &SummaryView::showNames);
    connect(m_model, &AssertionsModel::showNonBlockedFirstChanged, this, [this] {
        const QSignalBlocker blocker(m_order);
        m_order->setChecked(m_model->showNonBlockedFirst());
        orderBlocks();
    });
    rebuild();
}

void SummaryView::showState()
{
    const bool hasSnapshot = m_model->snapshot().has_value();
    const std::optional<QString> &error = m_model->lastError();
    if (error)
        m_errorText->setText(*error);
    m_errorBox->setVisible(error.has_value());
    m_reading->setVisible(!hasSnapshot && !error);
    m_content->setVisible(hasSnapshot);
}

void SummaryView::rebuild()
{
    // Blocks made inside a hidden column are shown with it, laid out once when it is shown again.
    // Made inside a visible one, each would need showing by hand, and each show lays out the
    // whole page (QWidgetPrivate::setVisible activates every ancestor's layout).
    m_content->hide();
    for (Card *&block : m_kindBlocks)
        delete std::exchange(block, nullptr);
    delete std::exchange(m_others, nullptr);
    m_rowsByCreator.clear();
    m_shownNames = m_model->resolvedNames();

    if (const std::optional<AssertionsSnapshot> &snapshot = m_model->snapshot()) {
        for (SleepKind kind : allSleepKinds)
            m_kindBlocks[size_t(kind)] = makeSleepBlock(kind, *snapshot);
        const SummaryVerdict verdict = SummaryVerdict::of(*snapshot);
        const bool clear = verdict.blockedKinds().isEmpty();
        m_verdictIcon->setSymbol(clear ? u"moon.zzz"_s : u"exclamationmark.triangle.fill"_s,
                                 clear ? Role::green : Role::orange);
        m_verdictText->setText(verdict.text());
        NamedColor::bindForeground(m_verdictText, clear ? Role::green : Role::orange);
        m_others = makeOtherAssertionsBlock(*snapshot);
        orderBlocks();
    }
    showState();
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
    for (int i = 0; i < order.size(); ++i)
        m_blocks->insertWidget(i, m_kindBlocks[size_t(order[i])]);
    if (m_others)
        m_blocks->insertWidget(int(order.size()), m_others);
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
    // Showing a widget lays out every ancestor at once (QWidgetPrivate::setVisible), so each line
    // that appears in a row would lay out the whole page of rows again. Hold the layouts between
    // the rows and the page while the rows change; the page is then laid out once, later.
    QList<QLayout *> held;
    for (AssertionRow *row : std::as_const(rows)) {
        for (QWidget *w = row; w && w != widget()->parentWidget(); w = w->parentWidget()) {
            if (QLayout *layout = w->layout(); layout && layout->isEnabled()) {
                layout->setEnabled(false);
                held << layout;
            }
        }
    }
    for (AssertionRow *row : std::as_const(rows))
        row->showNames(names);
    for (QLayout *layout : std::as_const(held)) {
        layout->setEnabled(true);
        layout->invalidate();
    }
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

Card *SummaryView::makeSleepBlock(SleepKind kind, const AssertionsSnapshot &snapshot)
{
    const QList<Assertion> blockers = snapshot.blockers(kind);
    auto *card = new Card(Role::secondary, 0.06, 14, 10, m_content);
    card->setObjectName(kindObjectName(kind));
    auto *group = new DisclosureGroup(rawValue(kind));
    card->column()->addWidget(group);

    QHBoxLayout *title = group->header()->row();
    auto *icon =
        new IconLabel(blockers.isEmpty() ? u"checkmark.circle.fill"_s : u"exclamationmark.triangle.fill"_s,
                      blockers.isEmpty() ? Role::green : Role::orange);
    icon->setObjectName(u"blockIcon"_s);
    auto *label = TextStyle::label(rawValue(kind), Style::title3, Role::primary, Option::semibold);
    label->setObjectName(u"blockTitle"_s);
    icon->setFont(label->font());
    title->addWidget(icon);
    title->addWidget(label);
    if (!blockers.isEmpty()) {
        const QString count =
            QString::number(blockers.size()) + (blockers.size() == 1 ? u" blocker"_s : u" blockers"_s);
        auto *badge = TextStyle::label(count, Style::caption, Role::orange);
        badge->setObjectName(u"blockCount"_s);
        title->addWidget(badge);
    }
    title->addStretch();

    QWidget *content = makeRows(Profile::current().summary().kindExplanations[size_t(kind)], blockers);
    if (blockers.isEmpty()) {
        auto *notBlocked = TextStyle::label(u"Not blocked."_s, Style::callout, Role::green);
        notBlocked->setObjectName(u"notBlocked"_s);
        content->layout()->addWidget(
            iconRow(new IconLabel(u"checkmark.circle.fill"_s, Role::green), notBlocked, 6));
    }
    group->setContent(content);
    group->setExpanded(m_expanded.value(kind, true));
    connect(group, &DisclosureGroup::toggled, this, [this, kind](bool open) { m_expanded[kind] = open; });
    return card;
}

Card *SummaryView::makeOtherAssertionsBlock(const AssertionsSnapshot &snapshot)
{
    const QList<Assertion> others = snapshot.nonBlockingAssertions();
    if (others.isEmpty())
        return nullptr;
    auto *card = new Card(Role::secondary, 0.06, 14, 10, m_content);
    card->setObjectName(u"otherAssertionsBlock"_s);
    auto *group = new DisclosureGroup(u"Other assertions held"_s);
    card->column()->addWidget(group);

    QHBoxLayout *title = group->header()->row();
    auto *label =
        TextStyle::label(u"Other assertions held"_s, Style::title3, Role::primary, Option::semibold);
    label->setObjectName(u"blockTitle"_s);
    auto *icon = new IconLabel(u"info.circle.fill"_s, Role::secondary);
    icon->setFont(label->font());
    title->addWidget(icon);
    title->addWidget(label);
    auto *count = TextStyle::label(QString::number(others.size()), Style::caption, Role::secondary);
    count->setObjectName(u"blockCount"_s);
    title->addWidget(count);
    title->addStretch();

    group->setContent(makeRows(Profile::current().summary().othersExplanation, others));
    group->setExpanded(m_othersExpanded);
    connect(group, &DisclosureGroup::toggled, this, [this](bool open) { m_othersExpanded = open; });
    return card;
}

QWidget *SummaryView::makeRows(const QString &explanation, const QList<Assertion> &assertions)
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto *paragraph = TextStyle::label(explanation, Style::callout, Role::secondary, Option::wrap);
    paragraph->setObjectName(u"blockExplanation"_s);
    column->addWidget(paragraph);
    column->addSpacing(4);
    for (const Assertion &a : assertions) {
        auto *row = new AssertionRow(a, m_shownNames, content);
        column->addWidget(row);
        if (const auto pid = row->createdForPID())
            m_rowsByCreator.insert(*pid, row);
    }
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
