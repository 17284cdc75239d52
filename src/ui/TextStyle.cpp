#include "ui/TextStyle.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>

namespace lullwick::TextStyle {

namespace {

struct Metrics {
    qreal points; // at the macOS body size of 13 pt
    QFont::Weight weight;
};

Metrics metrics(Style style)
{
    switch (style) {
    case Style::body:
        return {13, QFont::Normal};
    case Style::callout:
        return {12, QFont::Normal};
    case Style::caption:
    case Style::caption2:
        return {10, QFont::Normal};
    case Style::headline:
        return {13, QFont::DemiBold};
    case Style::title3:
        return {15, QFont::Normal};
    case Style::title2:
        return {17, QFont::Normal};
    }
    return {13, QFont::Normal};
}

} // namespace

QFont font(Style style, Options options)
{
    const QFont base = QGuiApplication::font();
    QFont result =
        options.testFlag(Option::monospaced) ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : base;
    const Metrics m = metrics(style);
    // Scale from the application font so that the user's size setting carries over.
    const qreal bodyPoints = base.pointSizeF() > 0 ? base.pointSizeF() : 13.0;
    result.setPointSizeF(bodyPoints * m.points / 13.0);
    QFont::Weight weight = m.weight;
    if (options.testFlag(Option::medium))
        weight = QFont::Medium;
    if (options.testFlag(Option::semibold))
        weight = QFont::DemiBold;
    if (options.testFlag(Option::bold))
        weight = QFont::Bold;
    result.setWeight(weight);
    result.setItalic(options.testFlag(Option::italic));
    return result;
}

void apply(QLabel *label, Style style, NamedColor::Role color, Options options)
{
    label->setFont(font(style, options));
    NamedColor::bindForeground(label, color);
    label->setWordWrap(options.testFlag(Option::wrap));
    if (options.testFlag(Option::plainText))
        label->setTextFormat(Qt::PlainText);
    if (options.testFlag(Option::selectable)) {
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        label->setCursor(Qt::IBeamCursor);
    }
}

QLabel *label(const QString &text, Style style, NamedColor::Role color, Options options, QWidget *parent)
{
    auto *result = new QLabel(parent);
    apply(result, style, color, options | Option::plainText);
    result->setText(text);
    return result;
}

} // namespace lullwick::TextStyle
