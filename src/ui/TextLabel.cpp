#include "ui/TextLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTextBoundaryFinder>
#include <QTextOption>
#include <cmath>

namespace lullwick {

namespace {
constexpr qreal unbroken = 0x01000000; // the line width QPainter::drawText lays unwrapped text out at
} // namespace

TextLabel::~TextLabel() = default;

void TextLabel::setEmphasis(int length, QFont::Weight weight)
{
    m_emphasis = length;
    m_emphasisWeight = weight;
    m_layout.reset();
    updateGeometry();
    update();
}

bool TextLabel::drawsItself() const
{
    // Anything QLabel adds around plain text (frames, indents, selection) stays its own.
    constexpr Qt::TextInteractionFlags selection =
        Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard | Qt::TextEditable;
    return textFormat() == Qt::PlainText && !(textInteractionFlags() & selection) && frameWidth() == 0 &&
           margin() == 0 && indent() <= 0 && !buddy();
}

QSize TextLabel::extra() const
{
    const QMargins m = contentsMargins();
    return {m.left() + m.right(), m.top() + m.bottom()};
}

std::pair<qreal, qreal> TextLabel::placeLines(qreal lineWidth) const
{
    // The same line breaking and placing as QPainter::drawText, which QLabel paints with.
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
    return {qMax<qreal>(height, 0), widest};
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
    m_heights = {};

    const auto [height, widest] = placeLines(unbroken);
    m_naturalHeight = m_laidHeight = height;
    m_natural = m_laidSize = {int(std::ceil(widest)), int(std::ceil(height))};
    m_lineWidth = -1;

    // The widest unbreakable run, measured on the unbroken lines: what the text needs at the least.
    m_widestWord = 0;
    if (!m_shapedWrap)
        return;
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, shown);
    qsizetype start = 0;
    for (qsizetype end = breaks.toNextBoundary(); end > 0; end = breaks.toNextBoundary()) {
        qsizetype last = end;
        while (last > start && shown.at(last - 1).isSpace())
            --last;
        if (last > start) {
            const QTextLine line = m_layout->lineForTextPosition(int(start));
            const qreal width = std::abs(line.cursorToX(int(last)) - line.cursorToX(int(start)));
            m_widestWord = qMax(m_widestWord, int(std::ceil(width)));
        }
        start = end;
    }
}

QSize TextLabel::layOut(int width) const
{
    shape();
    // Lines that fit unbroken stay as they are, so most labels are laid out only once.
    const bool fits = !m_shapedWrap || width < 0 || width >= m_natural.width();
    const int key = fits ? -1 : width;
    if (key == m_lineWidth)
        return m_laidSize;
    const auto [height, widest] = placeLines(fits ? unbroken : qreal(width));
    m_laidHeight = height;
    m_laidSize = {int(std::ceil(widest)), int(std::ceil(height))};
    m_lineWidth = key;
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
    shape();
    const QSize margins = extra();
    if (!m_shapedWrap)
        return (m_natural + margins).expandedTo(minimumSize());
    // A wrapping text prefers at most 80 average characters across, as QLabel's does; the height
    // there is estimated from the unbroken lines, since layouts ask wrapping labels for their
    // height at the width they give them.
    const int preferred = qMin(fontMetrics().averageCharWidth() * 80, maximumWidth()) - margins.width();
    if (m_natural.width() <= preferred)
        return (m_natural + margins).expandedTo(minimumSize());
    const int lines = int(std::ceil(qreal(m_natural.width()) / qMax(preferred, 1)));
    return QSize(preferred + margins.width(), lines * fontMetrics().lineSpacing() + margins.height())
        .expandedTo(minimumSize());
}

QSize TextLabel::minimumSizeHint() const
{
    if (!drawsItself())
        return QLabel::minimumSizeHint();
    shape();
    if (!m_shapedWrap)
        return sizeHint();
    // The widest word across and one line down, as QLabel's.
    return (QSize(m_widestWord, m_natural.height()) + extra()).expandedTo(minimumSize());
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
    case QEvent::LayoutDirectionChange:
        m_layout.reset();
        break;
    case QEvent::ContentsRectChange:
        m_heights = {};
        break;
    default:
        break;
    }
    QLabel::changeEvent(event);
}

} // namespace lullwick
