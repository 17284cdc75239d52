#include "restart/RestartView.h"

#include "platform/DateFormat.h"
#include "platform/FileBrowser.h"
#include "profile/Profile.h"
#include "restart/RestartModel.h"
#include "restart/RestartVerdict.h"
#include "ui/Card.h"
#include "ui/FindingCard.h"
#include "ui/IconRow.h"
#include "ui/Icons.h"
#include "ui/ScrollPage.h"
#include "ui/TextStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

namespace {

struct Presentation {
    QString symbol;
    Role color;
};

Presentation presentation(RestartVerdict::Case verdict)
{
    switch (verdict) {
    case RestartVerdict::likelyCause:
        return {u"exclamationmark.octagon.fill"_s, Role::red};
    case RestartVerdict::worthChecking:
        return {u"magnifyingglass.circle.fill"_s, Role::orange};
    case RestartVerdict::noObviousBlocker:
        return {u"checkmark.circle.fill"_s, Role::green};
    }
    Q_UNREACHABLE();
}

QPushButton *button(const QString &text, const QString &symbol, const QString &objectName)
{
    auto *result = new QPushButton(text);
    result->setObjectName(objectName);
    result->setAccessibleName(text);
    result->setIcon(Icons::icon(symbol, Role::primary, result));
    return result;
}

/// A small busy indicator: an indeterminate bar, as wide as a short word.
QProgressBar *busyIndicator(const QString &objectName, const QString &accessibleName)
{
    auto *bar = new QProgressBar;
    bar->setObjectName(objectName);
    bar->setAccessibleName(accessibleName);
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setFixedSize(48, 8);
    return bar;
}

} // namespace

RestartView::RestartView(RestartModel *model, QWidget *parent) : QScrollArea(parent), m_model(model)
{
    setObjectName(u"restartView"_s);
    QVBoxLayout *column = ScrollPage::setUp(this);

    const Profile::Restart &texts = Profile::current().restart();
    QLabel *intro = TextStyle::label(texts.intro, Style::callout, Role::secondary, Option::wrap);
    intro->setObjectName(u"restartIntro"_s);
    column->addWidget(intro);
    column->addWidget(makeAnalyzeBar());

    m_content = new QWidget;
    auto *content = new QVBoxLayout(m_content);
    content->setContentsMargins(0, 0, 0, 0);
    content->setSpacing(18);
    content->addWidget(makeVerdict());
    m_cards = new QVBoxLayout;
    m_cards->setSpacing(18);
    content->addLayout(m_cards);
    content->addWidget(makeCaveat());
    column->addWidget(m_content);

    m_hint = TextStyle::label(texts.hint, Style::body, Role::secondary, Option::wrap);
    m_hint->setObjectName(u"analyzeHint"_s);
    column->addWidget(m_hint);
    column->addStretch();

    connect(m_model, &RestartModel::analysisChanged, this, &RestartView::showAnalysis);
    connect(m_model, &RestartModel::isAnalyzingChanged, this, &RestartView::showAnalyzing);
    connect(m_model, &RestartModel::isDecodingChanged, this, &RestartView::showDecoding);
    showAnalysis();
}

QWidget *RestartView::makeAnalyzeBar()
{
    auto *bar = new QWidget;
    bar->setObjectName(u"analyzeBar"_s);
    auto *layout = rowLayout(bar, 12);

    m_analyze = new QPushButton;
    m_analyze->setObjectName(u"analyzeButton"_s);
    m_analyze->setMinimumWidth(120);
    m_analyze->setMinimumHeight(m_analyze->sizeHint().height() + 8); // the large control size
    m_analyze->setFont(TextStyle::font(Style::body, Option::medium));
    paintAnalyzeButton();
    connect(m_analyze, &QPushButton::clicked, m_model, &RestartModel::analyze);
    layout->addWidget(m_analyze, 0, Qt::AlignVCenter);

    m_analyzeProgress = busyIndicator(u"analyzeProgress"_s, u"Analyzing"_s);
    layout->addWidget(m_analyzeProgress, 0, Qt::AlignVCenter);
    m_analyzeProgressText =
        TextStyle::label(Profile::current().restart().analyzing, Style::caption, Role::secondary);
    m_analyzeProgressText->setObjectName(u"analyzeProgressText"_s);
    layout->addWidget(m_analyzeProgressText, 0, Qt::AlignVCenter);
    m_checked = TextStyle::label({}, Style::caption, Role::secondary);
    m_checked->setObjectName(u"checkedLabel"_s);
    layout->addWidget(m_checked, 0, Qt::AlignVCenter);
    layout->addStretch();
    return bar;
}

void RestartView::paintAnalyzeButton()
{
    // The prominent style: filled with the accent colour, text and icon in the highlighted-text
    // colour. Re-run on every palette change, so light and dark both hold.
    // Disabled, both fade, so that a running analysis shows on the button too.
    const QPalette base = NamedColor::basePalette(this);
    const QColor fill = NamedColor::resolve(Role::accent, base);
    QColor text = base.color(QPalette::HighlightedText);
    QPalette palette = m_analyze->palette();
    palette.setColor(QPalette::Button, fill);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Disabled, QPalette::Button, NamedColor::resolve(Role::accent, base, 0.45));
    text.setAlphaF(0.7f);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, text);
    m_analyze->setPalette(palette);
    const int side = m_analyze->iconSize().height();
    QIcon icon(Icons::pixmap(u"stethoscope", palette.color(QPalette::Active, QPalette::ButtonText), side,
                             devicePixelRatioF()));
    icon.addPixmap(Icons::pixmap(u"stethoscope", text, side, devicePixelRatioF()), QIcon::Disabled);
    m_analyze->setIcon(icon);
}

QWidget *RestartView::makeVerdict()
{
    m_verdictText = TextStyle::label({}, Style::title3, Role::green, Option::medium | Option::wrap);
    m_verdictText->setObjectName(u"verdictLabel"_s);
    QWidget *row = iconRow(u"checkmark.circle.fill"_s, Role::green, m_verdictText, 8);
    m_verdictIcon = row->findChild<IconLabel *>();
    return row;
}

Card *RestartView::makeFindingCard(const RestartFinding &finding, const RestartAnalysis &analysis)
{
    return new FindingCard(finding,
                           finding.source == stallReportSource() ? makeStallControls(analysis) : nullptr);
}

QWidget *RestartView::makeStallControls(const RestartAnalysis &analysis)
{
    auto *controls = new QWidget;
    controls->setObjectName(u"stallControls"_s);
    auto *column = new QVBoxLayout(controls);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);

    if (analysis.decodedStallProcess) {
        QLabel *decoded = TextStyle::label(
            u"Process that hung the shutdown: "_s + *analysis.decodedStallProcess, Style::callout,
            Role::primary, Option::medium | Option::wrap | Option::selectable);
        decoded->setObjectName(u"decodedProcessLabel"_s);
        column->addWidget(iconRow(u"magnifyingglass"_s, Role::primary, decoded));
    }

    auto *buttons = new QWidget;
    QHBoxLayout *row = rowLayout(buttons, 10);
    m_decode = button(analysis.decodedStallProcess ? u"Decode again"_s : u"Decode latest stall report"_s,
                      u"wand.and.stars"_s, u"decodeButton"_s);
    // While decoding, the button's label is the busy indicator alone.
    m_decodeProgress = busyIndicator(u"decodeProgress"_s, u"Decoding"_s);
    auto *inside = new QHBoxLayout(m_decode);
    inside->setContentsMargins(10, 0, 10, 0);
    inside->addWidget(m_decodeProgress, 0, Qt::AlignCenter);
    m_decode->setMinimumWidth(m_decode->sizeHint().width());
    connect(m_decode, &QPushButton::clicked, m_model, &RestartModel::decodeStall);
    row->addWidget(m_decode, 0, Qt::AlignVCenter);
    if (analysis.stallReportPath) {
        QPushButton *reveal = button(u"Reveal report"_s, u"folder"_s, u"revealButton"_s);
        connect(reveal, &QPushButton::clicked, this,
                [path = *analysis.stallReportPath] { FileBrowser::reveal(path); });
        row->addWidget(reveal, 0, Qt::AlignVCenter);
    }
    row->addStretch();
    column->addWidget(buttons);
    return controls;
}

Card *RestartView::makeCaveat()
{
    auto *caveat = new Card(Role::secondary, 0.06);
    caveat->setObjectName(u"caveat"_s);
    caveat->column()->setSpacing(6);
    const Profile::Restart &texts = Profile::current().restart();
    QLabel *heading = TextStyle::label(texts.caveatHeading, Style::callout, Role::primary, Option::semibold);
    caveat->column()->addWidget(iconRow(u"info.circle"_s, Role::primary, heading));
    caveat->column()->addWidget(
        TextStyle::label(texts.caveat, Style::caption, Role::secondary, Option::wrap));
    // Said only when it applies: after an analysis that could not read the system journal.
    m_journalCaveat = TextStyle::label(texts.journalCaveat, Style::caption, Role::secondary, Option::wrap);
    m_journalCaveat->setObjectName(u"journalCaveat"_s);
    m_journalCaveat->hide();
    caveat->column()->addWidget(m_journalCaveat);
    return caveat;
}

bool RestartView::showsCardsOf(const RestartAnalysis &analysis) const
{
    const auto sameFinding = [](const RestartFinding &a, const RestartFinding &b) {
        return a.severity == b.severity && a.source == b.source && a.title == b.title &&
               a.detail == b.detail && a.advice == b.advice;
    };
    return m_cardsOf && m_cardsOf->stallReportPath == analysis.stallReportPath &&
           m_cardsOf->decodedStallProcess == analysis.decodedStallProcess &&
           std::equal(m_cardsOf->findings.cbegin(), m_cardsOf->findings.cend(), analysis.findings.cbegin(),
                      analysis.findings.cend(), sameFinding);
}

void RestartView::showAnalysis()
{
    const std::optional<RestartAnalysis> &analysis = m_model->analysis();
    // An analysis that finds what the last one found keeps its cards; only its time is new.
    const bool keepCards = analysis && showsCardsOf(*analysis);
    if (!keepCards) {
        // Old cards go later: a decode that ends at once replaces them from inside their button's click.
        m_decode = nullptr;
        m_decodeProgress = nullptr;
        while (QLayoutItem *item = m_cards->takeAt(0)) {
            item->widget()->hide();
            item->widget()->deleteLater();
            delete item;
        }
        m_cardsOf = analysis;
    }
    const QString analyzeText = analysis ? u"Analyze again"_s : u"Analyze"_s;
    m_analyze->setText(analyzeText);
    m_analyze->setAccessibleName(analyzeText);
    // Ctrl+Shift+A here, Command-Shift-A on Apple. Set after the text, which resets a button's
    // shortcut to its mnemonic. A button's shortcut acts only while the button is shown and
    // enabled: with the Restart tab in front and no analysis under way.
    m_analyze->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A));
    m_journalCaveat->setVisible(analysis && analysis->journalDenied && !m_journalCaveat->text().isEmpty());
    if (analysis) {
        m_checked->setText(u"Checked "_s + DateFormat::standardTime(analysis->ranAt));
        const RestartVerdict verdict = RestartVerdict::of(*analysis);
        const Presentation look = presentation(verdict.verdictCase());
        m_verdictIcon->setSymbol(look.symbol, look.color);
        m_verdictText->setText(verdict.text());
        NamedColor::bindForeground(m_verdictText, look.color);
        for (const RestartFinding &finding : keepCards ? QList<RestartFinding>() : analysis->findings) {
            Card *card = makeFindingCard(finding, *analysis);
            m_cards->addWidget(card);
            // A layout shows what is added to a visible page only on the next pass of the event
            // loop; the page should never be seen without its cards.
            card->show();
        }
    }
    showAnalyzing();
    showDecoding();
}

void RestartView::showAnalyzing()
{
    const bool analyzing = m_model->isAnalyzing();
    const bool hasAnalysis = m_model->analysis().has_value();
    m_analyze->setEnabled(!analyzing);
    m_analyzeProgress->setVisible(analyzing);
    m_analyzeProgressText->setVisible(analyzing);
    m_checked->setVisible(!analyzing && hasAnalysis);
    // The previous results stay in view while a new analysis runs.
    m_content->setVisible(hasAnalysis);
    m_hint->setVisible(!hasAnalysis && !analyzing);
}

void RestartView::showDecoding()
{
    if (!m_decode)
        return;
    const bool decoding = m_model->isDecoding();
    m_decode->setEnabled(!decoding);
    m_decodeProgress->setVisible(decoding);
    if (decoding) {
        m_decode->setText({});
        m_decode->setIcon({});
    } else {
        const bool decoded = m_model->analysis() && m_model->analysis()->decodedStallProcess;
        m_decode->setText(decoded ? u"Decode again"_s : u"Decode latest stall report"_s);
        m_decode->setIcon(Icons::icon(u"wand.and.stars", Role::primary, m_decode));
    }
    m_decode->setAccessibleName(m_decode->text());
}

void RestartView::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_analyze)
        paintAnalyzeButton();
}

} // namespace lullwick
