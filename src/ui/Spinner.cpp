#include "ui/Spinner.h"

#include <QPainter>
#include <QTimerEvent>

namespace lullwick {

namespace {
constexpr int spokes = 8;
constexpr int frameMs = 100;
} // namespace

Spinner::Spinner(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(tr("Busy"));
}

QSize Spinner::sizeHint() const
{
    const int side = fontMetrics().height();
    return {side, side};
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(width(), height());
    painter.translate(width() / 2.0, height() / 2.0);
    QColor color = palette().color(QPalette::WindowText);
    QPen pen(color, side / 9.0, Qt::SolidLine, Qt::RoundCap);
    for (int i = 0; i < spokes; ++i) {
        // The newest spoke is darkest; the others fade behind it as the ring turns.
        const int age = (m_step - i + spokes) % spokes;
        color.setAlphaF(1.0 - age * 0.8 / spokes);
        pen.setColor(color);
        painter.setPen(pen);
        painter.save();
        painter.rotate(i * 360.0 / spokes);
        painter.drawLine(QPointF(0, -side * 0.22), QPointF(0, -side * 0.42));
        painter.restore();
    }
}

void Spinner::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    m_step = (m_step + 1) % spokes;
    update();
}

void Spinner::showEvent(QShowEvent *)
{
    m_timer.start(frameMs, this);
}

void Spinner::hideEvent(QHideEvent *)
{
    m_timer.stop();
}

} // namespace lullwick
