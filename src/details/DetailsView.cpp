#include "details/DetailsView.h"

#include "profile/Profile.h"
#include "summary/AssertionsModel.h"
#include "ui/ScrollPage.h"
#include "ui/SelectableText.h"
#include "ui/TextStyle.h"

#include <QEvent>
#include <QLabel>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

namespace {

constexpr QStringView nameSeparator = u" named: \"";

const QStringView headingPrefixes[] = {
    u"Assertion status system-wide:",
    u"Listed by owning process:",
    u"Kernel Assertions:",
    u"System-wide power settings:",
    u"Currently in use:",
    u"Battery Power:",
    u"AC Power:",
};

struct TypeToken {
    QStringView token;
    Role color;
};

// Tested in this order, so a line holding both an orange and a blue type is orange.
const TypeToken knownTypes[] = {
    {u"PreventUserIdleSystemSleep", Role::orange},
    {u"PreventSystemSleep", Role::orange},
    {u"PreventUserIdleDisplaySleep", Role::orange},
    {u"NoDisplaySleepAssertion", Role::orange},
    {u"NoIdleSleepAssertion", Role::orange},
    {u"UserIsActive", Role::orange},
    {u"ExternalMedia", Role::orange},
    {u"NetworkClientActive", Role::blue},
    {u"BackgroundTask", Role::blue},
    {u"ApplePushServiceTask", Role::blue},
    {u"SoftwareUpdateTask", Role::blue},
};

std::optional<Role> colorForKnownType(QStringView line)
{
    for (const TypeToken &type : knownTypes) {
        if (line.contains(type.token))
            return type.color;
    }
    return std::nullopt;
}

/// Appends `line` to the block at `cursor` in the colours of its kind.
void renderedLine(QTextCursor &cursor, QStringView line, const QTextCharFormat &plain,
                  const QPalette &palette)
{
    const auto run = [&](QStringView text, Role role, bool bold = false) {
        QTextCharFormat format = plain;
        format.setForeground(NamedColor::resolve(role, palette));
        if (bold)
            format.setFontWeight(QFont::Bold);
        cursor.insertText(text.toString(), format);
    };
    if (line.isEmpty()) {
        run(u" ", Role::primary); // keeps the empty line's height
        return;
    }
    for (QStringView prefix : headingPrefixes) {
        if (line.startsWith(prefix)) {
            run(line, Role::primary, true);
            return;
        }
    }
    if (line.startsWith(u'\t')) {
        run(line, Role::secondary); // the detail lines under an assertion
        return;
    }
    const Role color = colorForKnownType(line).value_or(Role::primary);
    const qsizetype at = line.indexOf(nameSeparator);
    // Only a line with exactly one separator is split: its type in colour, its name dimmed.
    if (at >= 0 && line.indexOf(nameSeparator, at + 1) < 0) {
        run(line.first(at), color);
        run(line.sliced(at), Role::secondary);
        return;
    }
    run(line, color);
}

void coloredText(QTextDocument *document, const QString &output, const QPalette &palette)
{
    document->clear();
    QTextCursor cursor(document);
    QTextCharFormat plain;
    plain.setFont(TextStyle::font(Style::callout, Option::monospaced));
    bool first = true;
    for (QStringView line : QStringView(output).split(u'\n')) {
        if (!first)
            cursor.insertBlock();
        first = false;
        renderedLine(cursor, line, plain, palette);
    }
}

} // namespace

DetailsView::DetailsView(AssertionsModel *model, QWidget *parent) : QScrollArea(parent), m_model(model)
{
    setObjectName(u"detailsView"_s);
    QVBoxLayout *column = ScrollPage::setUp(this);
    const Profile::Details &texts = Profile::current().details();
    m_assertions = makeSection(texts.inhibitorsHeading, u"assertions"_s);
    m_settings = makeSection(texts.settingsHeading, u"settings"_s);
    column->addStretch();

    // A refresh brings both texts one after the other; each section changes only with its own.
    connect(m_model, &AssertionsModel::snapshotChanged, this, [this] { showAll(); });
    connect(m_model, &AssertionsModel::settingsRawChanged, this, [this] { showAll(); });
    showAll(true);
}

DetailsView::Section DetailsView::makeSection(const QString &heading, const QString &objectName)
{
    auto *column = static_cast<QVBoxLayout *>(widget()->layout());
    auto *title = TextStyle::label(heading, Style::headline, Role::primary, {}, widget());
    title->setObjectName(objectName + u"Heading"_s);
    column->addWidget(title);
    // The heading and its text sit together; the page's spacing separates the two sections.
    auto *body = new QWidget(widget());
    auto *bodyColumn = new QVBoxLayout(body);
    bodyColumn->setContentsMargins(0, 0, 0, 0);
    Section section{new SelectableText(body),
                    TextStyle::label(u"(no output)"_s, Style::body, Role::secondary, {}, body),
                    {}};
    section.text->setObjectName(objectName + u"Text"_s);
    section.empty->setObjectName(objectName + u"Empty"_s);
    bodyColumn->addWidget(section.text);
    bodyColumn->addWidget(section.empty);
    column->addWidget(body);
    return section;
}

void DetailsView::showSection(Section &section, const QString &output, bool again)
{
    if (!again && output == section.shown)
        return;
    section.shown = output;
    section.empty->setVisible(output.isEmpty());
    section.text->setVisible(!output.isEmpty());
    coloredText(section.text->document(), output, NamedColor::basePalette(this));
}

void DetailsView::showAll(bool again)
{
    const std::optional<AssertionsSnapshot> &snapshot = m_model->snapshot();
    showSection(m_assertions, snapshot ? snapshot->rawOutput : QString(), again);
    showSection(m_settings, m_model->settingsRaw(), again);
}

void DetailsView::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    // The line colours live in the documents, so a new palette means rendering them again.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
        showAll(true);
}

} // namespace lullwick
