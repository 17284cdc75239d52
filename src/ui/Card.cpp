#include "ui/Card.h"

#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <cmath>

namespace lullwick {

Card::Card(NamedColor::Role fill, qreal opacity, int padding, qreal radius, QWidget *parent)
    : QWidget(parent), m_fill(fill), m_opacity(opacity), m_radius(radius), m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(padding, padding, padding, padding);
    m_column->setSpacing(0);
    // A card that grows or shrinks as its content changes repaints only its changed edge (see
    // resizeEvent), not all that it shows: a page's cards resize with every row that changes.
    setAttribute(Qt::WA_StaticContents);
}

void Card::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QSize old = event->oldSize();
    if (!old.isValid() || old.width() != width()) {
        update();
        return;
    }
    // Qt paints what a taller card newly shows; the old bottom edge, its rounded corners and outline
    // included, has to be painted again too, as does the new one of a shorter card.
    const int edge = int(std::ceil(m_radius + (m_outline ? m_outline->width : 0))) + 1;
    const int top = qMin(old.height(), height()) - edge;
    update(0, top, width(), qMax(old.height(), height()) - top);
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
