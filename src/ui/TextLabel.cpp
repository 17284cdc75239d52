#include "ui/TextLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTextOption>
#include <cmath>

namespace lullwick {

TextLabel::~TextLabel() = default;

void TextLabel::setEmphasis(int length, QFont::Weight weight)
{
    m_emphasis = length;
    m_emphasisWeight = weight;
    m_shapedText.clear();
    m_layout.reset();
    m_heights = {};
    updateGeometry();
    update();
}

bool TextLabel::drawsItself() const
{
    // Anything QLabel adds around plain text (frames, indents, interaction) stays its own.
    return textFormat() == Qt::PlainText && !(textInteractionFlags() & (Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard | Qt::TextEditable)) &&
           
           frameWidth() == 0 && margin() == 0 && indent() <= 0 && !buddy();
}

QSize TextLabel::extra() const
{
    const QMargins m = contentsMargins();
    return {m.left() + m.right(), m.top() + m.bottom()};
}

void TextLabel::shape() const
{
    // Comparing implicitly shared strings is a pointer check when the text was not replaced.
    if (m_layout && text() == m_shapedText && wordWrap() == m_shapedWrap)
        return;
    m_shapedText = text();
    m_shapedWrap = wordWrap();
    QString shown = m_shapedText;
    shown.replace(u'\n', QChar::LineSeparator);
    m_layout = std::make_unique<QTextLayout>(shown, font(), const_cast<TextLabel *>(this));
    QTextOption option;
    option.setTextDirection(layoutDirection());
    option.setWrapMode(QTextOption::WordWrap);
    if (!m_shapedWrap)
        option.setFlags(QTextOption::IncludeTrailingSpaces);
    m_layout->setTextOption(option);
    m_layout->setCacheEnabled(true);
    if (m_emphasis > 0) {
        QTextCharFormat emphasised;
        emphasised.setFontWeight(m_emphasisWeight);
        m_layout->setFormats({{0, int(qMin<qsizetype>(m_emphasis, shown.size())), emphasised}});
    }
    m_lineWidth = -2;
    m_heights = {};
}

QSize TextLabel::layOut(int width) const
{
    shape();
    if (width == m_lineWidth)
        return m_laidSize;

    // The same line breaking and placing as QPainter::drawText, which QLabel paints with.
    const qreal lineWidth = wordWrap() && width >= 0 ? qreal(width) : qreal(0x01000000);
    const qreal leading = fontMetrics().leading();
    qreal height = -leading;
    qreal widest = 0;
    m_layout->beginLayout();
    for (QTextLine line = m_layout->createLine(); line.isValid(); line = m_layout->createLine()) {
        line.setLineWidth(lineWidth);
        height = std::ceil(height + leading);
        line.setPosition({0, height});
        height += line.ascent() + line.descent();
        widest = qMax(widest, line.naturalTextWidth());
    }
    m_layout->endLayout();
    m_lineWidth = width;
    m_laidHeight = qMax<qreal>(height, 0);
    m_laidSize = {int(std::ceil(widest)), int(std::ceil(m_laidHeight))};
    return m_laidSize;
}

int TextLabel::heightForWidth(int width) const
{
    if (!drawsItself())
        return QLabel::heightForWidth(width);
    shape();
    for (const Entry &entry : m_heights) {
        if (entry.width == width)
            return entry.height;
    }
    const int asked = minimumWidth() > 0 ? qMax(width, minimumWidth()) : width;
    const int height = qMax(layOut(asked - extra().width()).height() + extra().height(), minimumHeight());
    std::move_backward(m_heights.begin(), m_heights.end() - 1, m_heights.end());
    m_heights[0] = {width, height};
    return height;
}

QSize TextLabel::sizeHint() const
{
    if (!drawsItself())
        return QLabel::sizeHint();
    const QSize margins = extra();
    if (!wordWrap())
        return (layOut(-1) + margins).expandedTo(minimumSize());
    // As QLabel: a wrapping text prefers 80 average characters, or a half or a quarter of that
    // when its text is short, so that a short text is not drawn as one very long line.
    const QFontMetrics metrics = fontMetrics();
    int width = qMin(metrics.averageCharWidth() * 80, maximumWidth()) - margins.width();
    if (minimumWidth() > 0)
        width = qMax(width, minimumWidth() - margins.width());
    QSize size = layOut(width);
    if (size.height() < 4 * metrics.lineSpacing() && size.width() > width / 2)
        size = layOut(width / 2);
    if (size.height() < 2 * metrics.lineSpacing() && size.width() > width / 4)
        size = layOut(width / 4);
    return (size + margins).expandedTo(minimumSize());
}

QSize TextLabel::minimumSizeHint() const
{
    if (!drawsItself())
        return QLabel::minimumSizeHint();
    if (!wordWrap())
        return sizeHint();
    // The widest word across, and at most the preferred height down.
    const QSize margins = extra();
    const int oneLine = layOut(QWIDGETSIZE_MAX).height() + margins.height();
    const int narrowest = layOut(0).width() + margins.width();
    return QSize(narrowest, qMin(oneLine, sizeHint().height())).expandedTo(minimumSize());
}

void TextLabel::paintEvent(QPaintEvent *event)
{
    if (!drawsItself())
        return QLabel::paintEvent(event);
    if (text().isEmpty())
        return;
    const QRect area = contentsRect();
    layOut(area.width());
    const Qt::Alignment align = QStyle::visualAlignment(layoutDirection(), alignment());
    qreal y = 0;
    if (align & Qt::AlignBottom)
        y = area.height() - m_laidHeight;
    else if (align & Qt::AlignVCenter)
        y = (area.height() - m_laidHeight) / 2;
    QStyleOption option; // the palette in the widget's state (disabled, inactive), as QLabel paints
    option.initFrom(this);
    QPainter painter(this);
    painter.setPen(option.palette.color(foregroundRole()));
    for (int i = 0; i < m_layout->lineCount(); ++i) {
        const QTextLine line = m_layout->lineAt(i);
        qreal x = 0;
        if (align & Qt::AlignRight)
            x = area.width() - line.horizontalAdvance();
        else if (align & Qt::AlignHCenter)
            x = (area.width() - line.horizontalAdvance()) / 2;
        line.draw(&painter, QPointF(area.x() + x, area.y() + y));
    }
}

void TextLabel::changeEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ContentsRectChange:
    case QEvent::LayoutDirectionChange:
        m_layout.reset();
        m_heights = {};
        break;
    default:
        break;
    }
    QLabel::changeEvent(event);
}

} // namespace lullwick
