#include "ui/LinkButton.h"

#include "ui/Icons.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace lullwick {

namespace {
constexpr int iconGap = 6;
constexpr int focusMargin = 2;
} // namespace

LinkButton::LinkButton(const QString &text, const QString &symbolName, QWidget *parent)
    : QAbstractButton(parent), m_symbol(symbolName)
{
    setText(text);
    setAccessibleName(text);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int iconWidth = m_symbol.isEmpty() ? 0 : metrics.height() + iconGap;
    return {iconWidth + metrics.horizontalAdvance(text()) + 2 * focusMargin,
            metrics.height() + 2 * focusMargin};
}

void LinkButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QPalette base = NamedColor::basePalette(this);
    QColor color = NamedColor::resolve(NamedColor::Role::accent, base);
    if (!isEnabled())
        color.setAlphaF(color.alphaF() * 0.4f);
    if (isDown())
        color = color.darker(130);

    QRect area = rect().adjusted(focusMargin, focusMargin, -focusMargin, -focusMargin);
    if (!m_symbol.isEmpty()) {
        const int side = fontMetrics().height();
        painter.drawPixmap(QRect(area.left(), area.top() + (area.height() - side) / 2, side, side),
                           Icons::pixmap(m_symbol, color, side, devicePixelRatioF()));
        area.setLeft(area.left() + side + iconGap);
    }
    QFont textFont = font();
    textFont.setUnderline(underMouse());
    painter.setFont(textFont);
    painter.setPen(color);
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());

    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = base.color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void LinkButton::keyPressEvent(QKeyEvent *event)
{
    // A link follows on Enter and Return as well as on Space.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace lullwick
