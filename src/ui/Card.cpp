#include "ui/Card.h"

#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

namespace lullwick {

Card::Card(NamedColor::Role fill, qreal opacity, int padding, qreal radius, QWidget *parent)
    : QWidget(parent), m_fill(fill), m_opacity(opacity), m_radius(radius), m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(padding, padding, padding, padding);
    m_column->setSpacing(0);
}

void Card::setOutline(NamedColor::Role role, qreal opacity, qreal width)
{
    m_outline = Outline{role, opacity, width};
    update();
}

void Card::paintEvent(QPaintEvent *)
{
    // Colours are read here, from the current palette, so a palette change needs no bookkeeping.
    const QPalette base = NamedColor::basePalette(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal penWidth = m_outline ? m_outline->width : 0;
    // Inset by half the pen so that the outline is not clipped at the widget's edge.
    const QRectF area = QRectF(rect()).adjusted(penWidth / 2, penWidth / 2, -penWidth / 2, -penWidth / 2);
    QPainterPath path;
    path.addRoundedRect(area, m_radius, m_radius);
    painter.fillPath(path, NamedColor::resolve(m_fill, base, m_opacity));
    if (m_outline) {
        painter.setPen(QPen(NamedColor::resolve(m_outline->role, base, m_outline->opacity), penWidth));
        painter.drawPath(path);
    }
}

} // namespace lullwick
