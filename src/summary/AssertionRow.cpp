#include "summary/AssertionRow.h"

#include "platform/Workspace.h"
#include "ui/Card.h"
#include "ui/Icons.h"
#include "ui/TextLabel.h"
#include "ui/TextStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

namespace {

// The lines that a row may leave out, in their order below the process line.
enum OptionalLine { createdForLine, explanationLine, callToActionLine };
constexpr int firstOptionalLine = 2; // after the title row and the process line

} // namespace

void revealInProcessViewer(qint64 pid, const std::optional<OpenTarget> &viewer)
{
    Workspace::copyPlainText(QString::number(pid));
    if (viewer)
        Workspace::open(*viewer);
}

QWidget *heldDurationLabel(const QString &timeHeld, QWidget *parent)
{
    auto *badge = new Card(Role::secondary, 0.10, 0, 6, parent);
    badge->setObjectName(u"rowHeld"_s);
    badge->column()->setContentsMargins(8, 2, 8, 2);
    badge->setToolTip(u"How long this assertion has been held, since the moment the process created it."_s);
    badge->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // DejaVu and the system fonts draw digits of one width already; Qt 6.4 cannot ask for "tnum".
    auto *text = TextStyle::label(u"Held "_s + AssertionRowText::prettyDuration(timeHeld), Style::callout,
                                  Role::secondary, {}, badge);
    text->setObjectName(u"rowHeldText"_s);
    badge->column()->addWidget(text);
    return badge;
}

AssertionRow::AssertionRow(Assertion assertion, const ResolvedNames &names, QWidget *parent)
    : QWidget(parent), m_assertion(std::move(assertion)), m_text(AssertionRowText::make(m_assertion, names)),
      m_column(new QVBoxLayout(this))
{
    setObjectName(u"assertionRow"_s);
    m_column->setContentsMargins(0, 6, 0, 6);
    m_column->setSpacing(4);

    auto *titleRow = new QHBoxLayout;
    titleRow->setSpacing(12);
    m_title =
        TextStyle::label(m_text.title, Style::body, Role::primary, Option::semibold | Option::wrap, this);
    m_title->setObjectName(u"rowTitle"_s);
    titleRow->addWidget(m_title, 1, Qt::AlignTop);
    titleRow->addSpacing(8);
    QWidget *badge = heldDurationLabel(m_assertion.timeHeld, this);
    m_held = badge->findChild<QLabel *>(u"rowHeldText"_s);
    titleRow->addWidget(badge, 0, Qt::AlignTop);
    m_column->addLayout(titleRow);

    auto *process = new TextLabel(this);
    TextStyle::apply(process, Style::callout, Role::secondary, Option::wrap | Option::plainText);
    process->setObjectName(u"rowProcess"_s);
    process->setText(m_assertion.processName + m_text.processSuffix);
    process->setEmphasis(int(m_assertion.processName.size()), QFont::Medium);
    m_process = process;
    m_column->addWidget(process);

    auto *buttonRow = new QHBoxLayout;
    buttonRow->setContentsMargins(0, 4, 0, 0);
    buttonRow->setSpacing(12);
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
    buttonRow->addStretch();
    buttonRow->addWidget(button);
    buttonRow->addStretch();
    m_column->addLayout(buttonRow);

    showNames(names);
}

void AssertionRow::showNames(const ResolvedNames &names)
{
    m_text = AssertionRowText::make(m_assertion, names);
    if (m_title->text() != m_text.title)
        m_title->setText(m_text.title);
    showLine(m_createdFor, createdForLine, m_text.createdForLine);
    showLine(m_explanation, explanationLine, m_text.explanation);
    showLine(m_callToAction, callToActionLine, m_text.callToAction);
}

void AssertionRow::showAssertion(Assertion assertion, const ResolvedNames &names)
{
    // The process name and kind are what the row was matched by; the held time moves on.
    m_assertion = std::move(assertion);
    const QString held = u"Held "_s + AssertionRowText::prettyDuration(m_assertion.timeHeld);
    if (m_held->text() != held)
        m_held->setText(held);
    showNames(names);
    const QString process = m_assertion.processName + m_text.processSuffix;
    if (m_process->text() != process)
        m_process->setText(process);
}

void AssertionRow::showLine(QLabel *&label, int position, const std::optional<QString> &text)
{
    if (!text) {
        if (label)
            label->hide();
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
            {u"rowCreatedFor", Role::secondary, Option::italic | Option::wrap},
            {u"rowExplanation", Role::secondary, Option::wrap},
            {u"rowCallToAction", Role::primary, Option::wrap},
        };
        const LineStyle &style = styles[position];
        label = TextStyle::label({}, Style::callout, style.color, style.options, this);
        label->setObjectName(QString::fromUtf16(style.objectName));
        int index = firstOptionalLine;
        for (QLabel *earlier : {m_createdFor, m_explanation, m_callToAction}) {
            if (earlier == label)
                break;
            if (earlier)
                ++index;
        }
        m_column->insertWidget(index, label);
    }
    if (label->text() != *text)
        label->setText(*text);
    label->show();
}

} // namespace lullwick
