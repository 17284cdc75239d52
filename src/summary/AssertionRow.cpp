#include "summary/AssertionRow.h"

#include "platform/Workspace.h"
#include "ui/Icons.h"
#include "ui/TextLabel.h"
#include "ui/TextStyle.h"
#include "ui/Visibility.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

namespace {

// The lines that a row may leave out: the holder's words above the process line, the others
// below it.
enum OptionalLine { quoteLine, createdForLine, explanationLine, callToActionLine };

// Where the lines go: 6 points above and below the row, 4 between its lines, the held badge 8
// points (and the spacing on either side) after the title, and 4 more above the button.
constexpr int rowPadding = 6;
constexpr int lineSpacing = 4;
constexpr int titleGap = 12 + 8 + 12;
constexpr int buttonGap = 4;

} // namespace

void revealInProcessViewer(qint64 pid, const std::optional<OpenTarget> &viewer)
{
    Workspace::copyPlainText(QString::number(pid));
    if (viewer)
        Workspace::open(*viewer);
}

QLabel *heldDurationLabel(const QString &timeHeld, QWidget *parent)
{
    // One painted widget rather than a card holding a label: pages hold hundreds of rows.
    auto *badge = new TextLabel(parent);
    TextStyle::apply(badge, Style::callout, Role::secondary, Option::plainText);
    badge->setObjectName(u"rowHeldText"_s);
    badge->setFill(Role::secondary, 0.10, 6);
    badge->setContentsMargins(8, 2, 8, 2);
    badge->setToolTip(u"How long this assertion has been held, since the moment the process created it."_s);
    badge->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // DejaVu and the system fonts draw digits of one width already; Qt 6.4 cannot ask for "tnum".
    // Where the time is not known the badge says nothing rather than "unknown".
    badge->setText(AssertionRowText::heldText(timeHeld));
    if (badge->text().isEmpty())
        badge->hide();
    return badge;
}

AssertionRow::AssertionRow(Assertion assertion, const ResolvedNames &names, QWidget *parent)
    : QWidget(parent), m_assertion(std::move(assertion)), m_text(AssertionRowText::make(m_assertion, names))
{
    setObjectName(u"assertionRow"_s);
    m_title =
        TextStyle::label(m_text.title, Style::body, Role::primary, Option::semibold | Option::wrap, this);
    m_title->setObjectName(u"rowTitle"_s);
    m_held = heldDurationLabel(m_assertion.timeHeld, this);

    auto *process = new TextLabel(this);
    TextStyle::apply(process, Style::callout, Role::secondary, Option::wrap | Option::plainText);
    process->setObjectName(u"rowProcess"_s);
    process->setText(m_assertion.processName + m_text.processSuffix);
    process->setEmphasis(int(m_assertion.processName.size()), QFont::Medium);
    m_process = process;

    // Without a process viewer the button still copies the PID, and says so.
    const Profile::Summary &texts = Profile::current().summary();
    std::optional<OpenTarget> viewer = Profile::current().processViewer();
    const QString label = viewer ? texts.viewerButton.arg(viewer->label) : texts.copyPIDButton;
    auto *button = new QPushButton(Icons::icon(u"list.bullet.rectangle", Role::primary, this), label, this);
    button->setObjectName(u"rowActivityMonitor"_s);
    button->setAccessibleName(label);
    button->setFont(TextStyle::font(Style::callout)); // the small control size
    button->setToolTip(viewer ? texts.viewerTooltip.arg(viewer->label) : texts.copyPIDTooltip);
    connect(button, &QPushButton::clicked, this,
            [this, viewer = std::move(viewer)] { revealInProcessViewer(m_text.revealPID, viewer); });
    m_button = button;

    showNames(names);
}

void AssertionRow::showNames(const ResolvedNames &names)
{
    m_text = AssertionRowText::make(m_assertion, names);
    if (m_title->text() != m_text.title)
        m_title->setText(m_text.title);
    showLine(m_quote, quoteLine, m_text.quote);
    showLine(m_createdFor, createdForLine, m_text.createdForLine);
    showLine(m_explanation, explanationLine, m_text.explanation);
    showLine(m_callToAction, callToActionLine, m_text.callToAction);
    relayout();
}

void AssertionRow::showAssertion(Assertion assertion, const ResolvedNames &names)
{
    // The process name and kind are what the row was matched by; the held time moves on.
    m_assertion = std::move(assertion);
    const QString held = AssertionRowText::heldText(m_assertion.timeHeld);
    if (m_held->text() != held) {
        m_held->setText(held);
        setShown(m_held, !held.isEmpty());
    }
    showNames(names);
    const QString process = m_assertion.processName + m_text.processSuffix;
    if (m_process->text() != process) {
        m_process->setText(process);
        relayout();
    }
}

void AssertionRow::showLine(QLabel *&label, int position, const std::optional<QString> &text)
{
    if (!text) {
        if (label)
            setShown(label, false);
        return;
    }
    if (!label) {
        // Made on first use: most rows never show some of these lines, and pages hold hundreds of rows.
        struct LineStyle {
            const char16_t *objectName;
            Role color;
            TextStyle::Options options;
        };
        static const LineStyle styles[] = {
            {u"rowQuote", Role::primary, Option::wrap},
            {u"rowCreatedFor", Role::secondary, Option::italic | Option::wrap},
            {u"rowExplanation", Role::secondary, Option::wrap},
            {u"rowCallToAction", Role::primary, Option::wrap},
        };
        const LineStyle &style = styles[position];
        label = TextStyle::label({}, Style::callout, style.color, style.options, this);
        label->setObjectName(QString::fromUtf16(style.objectName));
    }
    if (label->text() != *text)
        label->setText(*text);
    setShown(label, true);
}

} // namespace lullwick

namespace lullwick {

int AssertionRow::place(int width, bool apply) const
{
    const QSize badge = m_held->isHidden() ? QSize() : m_held->sizeHint();
    const int titleWidth = qMax(0, width - titleGap - badge.width());
    const int titleHeight = m_title->heightForWidth(titleWidth);
    int y = rowPadding;
    if (apply) {
        m_title->setGeometry(0, y, titleWidth, titleHeight);
        m_held->setGeometry(width - badge.width(), y, badge.width(), badge.height());
    }
    y += qMax(titleHeight, badge.height());
    for (QLabel *line : {m_quote, m_process, m_createdFor, m_explanation, m_callToAction}) {
        if (!line || line->isHidden())
            continue;
        const int height = line->heightForWidth(width);
        y += lineSpacing;
        if (apply)
            line->setGeometry(0, y, width, height);
        y += height;
    }
    y += lineSpacing + buttonGap;
    const QSize button = m_button->sizeHint();
    if (apply)
        m_button->setGeometry((width - button.width()) / 2, y, button.width(), button.height());
    return y + button.height() + rowPadding;
}

int AssertionRow::heightForWidth(int width) const
{
    return m_heights.at(width, [this](int asked) { return place(asked, false); });
}

int AssertionRow::widest(bool minimum) const
{
    const auto across = [minimum](const QWidget *w) {
        return (minimum ? w->minimumSizeHint() : w->sizeHint()).width();
    };
    int width = across(m_title) + titleGap + (m_held->isHidden() ? 0 : m_held->sizeHint().width());
    for (const QWidget *line : std::initializer_list<const QWidget *>{
             m_quote, m_process, m_createdFor, m_explanation, m_callToAction, m_button}) {
        if (line && !line->isHidden())
            width = qMax(width, across(line));
    }
    return width;
}

QSize AssertionRow::sizeHint() const
{
    const int width = widest(false);
    return {width, heightForWidth(width)};
}

QSize AssertionRow::minimumSizeHint() const
{
    // As a column of wrapping labels: the narrowest it can be, and each line one line high.
    return {widest(true), heightForWidth(QWIDGETSIZE_MAX)};
}

void AssertionRow::relayout()
{
    m_heights.clear();
    updateGeometry();
    // A row not shown yet is placed when its layout gives it its size.
    if (isVisible())
        place(width(), true);
}

bool AssertionRow::event(QEvent *event)
{
    // A line whose size may have changed asks its parent to lay out again.
    if (event->type() == QEvent::LayoutRequest) {
        relayout();
        return true;
    }
    return QWidget::event(event);
}

void AssertionRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place(width(), true);
}

} // namespace lullwick
