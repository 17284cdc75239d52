#include "ui/FindingCard.h"

#include "ui/IconRow.h"
#include "ui/Icons.h"
#include "ui/TextStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

QString FindingCard::symbol(FindingSeverity severity)
{
    switch (severity) {
    case FindingSeverity::likely:
        return u"exclamationmark.octagon.fill"_s;
    case FindingSeverity::possible:
        return u"exclamationmark.triangle.fill"_s;
    case FindingSeverity::info:
        return u"info.circle"_s;
    }
    Q_UNREACHABLE();
}

NamedColor::Role FindingCard::color(FindingSeverity severity)
{
    switch (severity) {
    case FindingSeverity::likely:
        return Role::red;
    case FindingSeverity::possible:
        return Role::orange;
    case FindingSeverity::info:
        return Role::blue;
    }
    Q_UNREACHABLE();
}

FindingCard::FindingCard(const Finding &finding, QWidget *extra, QWidget *parent)
    : Card(color(finding.severity), 0.06, 14, 10, parent)
{
    const Role tint = color(finding.severity);
    setObjectName(u"findingCard"_s);
    QVBoxLayout *content = column();
    content->setSpacing(8);

    auto *header = new QWidget;
    QHBoxLayout *headerRow = rowLayout(header, 8);
    QLabel *title = TextStyle::label(finding.title, Style::headline, Role::primary, Option::wrap);
    title->setObjectName(u"findingTitle"_s);
    auto *icon = new IconLabel(symbol(finding.severity), tint);
    icon->setFont(title->font());
    headerRow->addWidget(icon, 0, Qt::AlignVCenter);
    headerRow->addWidget(title, 1, Qt::AlignVCenter);
    QLabel *tagText = TextStyle::label(label(finding.severity), Style::caption, tint, Option::semibold);
    tagText->setObjectName(u"severityTag"_s);
    // A capsule: the radius is half the tag's height.
    auto *tag = new Card(tint, 0.14, 0, (tagText->sizeHint().height() + 4) / 2.0);
    tag->column()->setContentsMargins(7, 2, 7, 2);
    tag->column()->addWidget(tagText);
    headerRow->addWidget(tag, 0, Qt::AlignVCenter);
    content->addWidget(header);

    QLabel *detail =
        TextStyle::label(finding.detail, Style::callout, Role::primary, Option::wrap | Option::selectable);
    detail->setObjectName(u"findingDetail"_s);
    content->addWidget(detail);
    if (finding.advice) {
        QLabel *advice = TextStyle::label(*finding.advice, Style::callout, Role::secondary, Option::wrap);
        advice->setObjectName(u"findingAdvice"_s);
        content->addWidget(iconRow(u"arrow.turn.down.right"_s, Role::secondary, advice));
    }
    if (extra) {
        content->addSpacing(2);
        content->addWidget(extra);
    }
    QLabel *source = TextStyle::label(finding.source, Style::caption2, Role::tertiary);
    source->setObjectName(u"findingSource"_s);
    content->addWidget(source);
}

} // namespace lullwick
