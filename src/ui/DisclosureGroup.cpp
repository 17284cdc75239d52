#include "ui/DisclosureGroup.h"

#include "ui/NamedColor.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QVBoxLayout>

namespace lullwick {

namespace {
constexpr int chevronWidth = 16;
} // namespace

DisclosureHeader::DisclosureHeader(const QString &title, QWidget *parent)
    : QAbstractButton(parent), m_row(new QHBoxLayout(this))
{
    setCheckable(true);
    setChecked(true);
    setText(title);
    setAccessibleName(title);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_row->setContentsMargins(chevronWidth + 4, 2, 2, 2);
    m_row->setSpacing(8);
    connect(this, &QAbstractButton::toggled, this, qOverload<>(&QWidget::update));
}

void DisclosureHeader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette base = NamedColor::basePalette(this);

    // The chevron points right when closed and down when open, like the platform's.
    const qreal cx = chevronWidth / 2.0 + 1;
    const qreal cy = height() / 2.0;
    const qreal s = 3.5;
    QPainterPath chevron;
    if (isChecked()) {
        chevron.moveTo(cx - s, cy - s / 2);
        chevron.lineTo(cx, cy + s / 2);
        chevron.lineTo(cx + s, cy - s / 2);
    } else {
        chevron.moveTo(cx - s / 2, cy - s);
        chevron.lineTo(cx + s / 2, cy);
        chevron.lineTo(cx - s / 2, cy + s);
    }
    painter.setPen(QPen(NamedColor::resolve(NamedColor::Role::secondary, base), 1.6, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(chevron);

    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = base.color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void DisclosureHeader::keyPressEvent(QKeyEvent *event)
{
    // QAbstractButton handles Space; a disclosure row also answers Enter and Return.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

DisclosureGroup::DisclosureGroup(const QString &title, QWidget *parent)
    : QWidget(parent), m_header(new DisclosureHeader(title, this)), m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(6);
    m_column->addWidget(m_header);
    connect(m_header, &QAbstractButton::clicked, this, [this](bool checked) {
        setExpanded(checked);
        Q_EMIT toggled(checked);
    });
}

void DisclosureGroup::setContent(QWidget *content)
{
    delete m_content;
    m_content = content;
    m_column->addWidget(content);
    content->setVisible(isExpanded());
}

bool DisclosureGroup::isExpanded() const
{
    return m_header->isChecked();
}

void DisclosureGroup::setExpanded(bool expanded)
{
    m_header->setChecked(expanded);
    if (m_content)
        m_content->setVisible(expanded);
}

} // namespace lullwick
