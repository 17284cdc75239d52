#include "ui/TextLabel.h"

#include <QEvent>
#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>
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

void TextLabel::setFill(NamedColor::Role role, qreal opacity, qreal radius)
{
    m_fill = Fill{role, opacity, radius};
    update();
}

bool TextLabel::drawsItself() const
{
    // Anything QLabel adds around plain text (frames, indents, selection, right-to-left placing)
    // stays its own, and so does an empty label, which QLabel sizes as a widget without text.
    constexpr Qt::TextInteractionFlags selection =
        Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard | Qt::TextEditable;
    if (textFormat() != Qt::PlainText || (textInteractionFlags() & selection) || frameWidth() != 0 ||
        margin() != 0 || indent() > 0 || buddy())
        return false;
    shape();
    return !m_shapedText.isEmpty() && !m_shapedRightToLeft;
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
    m_shapedRightToLeft = m_shapedText.isRightToLeft();
    QString shown = m_shapedText;
    shown.replace(u'\n', QChar::LineSeparator);
    m_layout = std::make_unique<QTextLayout>(shown, font(), const_cast<TextLabel *>(this));
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
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
    m_heights.clear();

    const auto [height, widest] = placeLines(unbroken);
    m_naturalHeight = m_laidHeight = height;
    m_natural = m_laidSize = {int(std::ceil(widest)), int(std::ceil(height))};
    m_lineWidth = -1;
    m_layoutBroken = false;

    // The pieces of the line between its break opportunities, measured on the unbroken line: the
    // widest is the narrowest the text can be, and adding them up breaks the line at any width.
    // A text of several lines is broken by QTextLayout instead.
    m_widestWord = 0;
    m_pieces.clear();
    m_lines.clear();
    m_breaksItself = false;
    if (!m_shapedWrap)
        return;
    m_breaksItself = m_layout->lineCount() == 1;
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, shown);
    qsizetype start = 0;
    for (qsizetype end = breaks.toNextBoundary(); end > 0; end = breaks.toNextBoundary()) {
        qsizetype last = end;
        while (last > start && shown.at(last - 1).isSpace())
            --last;
        const QTextLine line = m_layout->lineForTextPosition(int(start));
        const qreal from = line.cursorToX(int(start));
        const qreal to = last > start ? line.cursorToX(int(last)) : from;
        m_widestWord = qMax(m_widestWord, int(std::ceil(std::abs(to - from))));
        m_pieces.append({int(start), int(end - start), from, to});
        start = end;
    }
}

QList<qreal> TextLabel::lineTops(qsizetype count) const
{
    // As placeLines: each line starts on a whole pixel, a leading below the one before.
    const QTextLine unbroken = m_layout->lineAt(0);
    const qreal lineHeight = unbroken.ascent() + unbroken.descent();
    const qreal leading = fontMetrics().leading();
    QList<qreal> tops;
    qreal height = -leading;
    for (qsizetype i = 0; i < count; ++i) {
        height = std::ceil(height + leading);
        tops << height;
        height += lineHeight;
    }
    tops << height; // where the last line ends
    return tops;
}

QSize TextLabel::layOut(int width) const
{
    shape();
    // Lines that fit unbroken stay as they are, so most labels are laid out only once.
    const bool fits = !m_shapedWrap || width < 0 || width >= m_natural.width();
    const int key = fits ? -1 : width;
    if (key == m_lineWidth)
        return m_laidSize;
    m_lineWidth = key;
    m_lines.clear();
    if (fits) {
        // The text layout still holds the unbroken lines, unless it broke them since.
        if (m_layoutBroken) {
            placeLines(unbroken);
            m_layoutBroken = false;
        }
        m_laidHeight = m_naturalHeight;
        return m_laidSize = m_natural;
    }
    if (!m_breaksItself) {
        const auto [height, widest] = placeLines(qreal(width));
        m_layoutBroken = true;
        m_laidHeight = height;
        return m_laidSize = {int(std::ceil(widest)), int(std::ceil(height))};
    }

    // Greedily, as QTextLayout wraps at word boundaries: a piece joins the line while the line's
    // visible text still fits; a piece wider than the width gets a line of its own.
    m_lines.clear();
    qreal widest = 0;
    for (qsizetype i = 0; i < m_pieces.size(); ++i) {
        if (!m_lines.isEmpty() && m_pieces[i].end - m_pieces[m_lines.last().first].start <= width) {
            m_lines.last().last = i;
            continue;
        }
        m_lines.append({i, i});
    }
    for (const Line &line : std::as_const(m_lines))
        widest = qMax(widest, m_pieces[line.last].end - m_pieces[line.first].start);
    m_laidHeight = lineTops(m_lines.size()).last();
    return m_laidSize = {int(std::ceil(widest)), int(std::ceil(m_laidHeight))};
}

int TextLabel::heightForWidth(int width) const
{
    if (!drawsItself())
        return QLabel::heightForWidth(width);
    shape();
    return m_heights.at(width, [this](int asked) {
        if (minimumWidth() > 0)
            asked = qMax(asked, minimumWidth());
        return qMax(layOut(asked - extra().width()).height() + extra().height(), minimumHeight());
    });
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
    if (m_fill) {
        // Colours are read here, from the current palette, so a palette change needs no bookkeeping.
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addRoundedRect(QRectF(rect()), m_fill->radius, m_fill->radius);
        painter.fillPath(path,
                         NamedColor::resolve(m_fill->role, NamedColor::basePalette(this), m_fill->opacity));
    }
    if (!drawsItself())
        return QLabel::paintEvent(event);
    const QRect area = contentsRect();
    layOut(area.width());
    const Qt::Alignment align = QStyle::visualAlignment(Qt::LeftToRight, alignment());
    qreal y = 0;
    if (align & Qt::AlignBottom)
        y = area.height() - m_laidHeight;
    else if (align & Qt::AlignVCenter)
        y = (area.height() - m_laidHeight) / 2;
    QStyleOption option; // the palette in the widget's state (disabled, inactive), as QLabel paints
    option.initFrom(this);
    QPainter painter(this);
    painter.setPen(option.palette.color(foregroundRole()));
    if (m_lines.isEmpty()) {
        for (int i = 0; i < m_layout->lineCount(); ++i) {
            const QTextLine line = m_layout->lineAt(i);
            qreal x = 0;
            if (align & Qt::AlignRight)
                x = area.width() - line.horizontalAdvance();
            else if (align & Qt::AlignHCenter)
                x = (area.width() - line.horizontalAdvance()) / 2;
            line.draw(&painter, QPointF(area.x() + x, area.y() + y));
        }
        return;
    }
    // Each broken line is its stretch of the shaped unbroken line, moved to where it belongs.
    const QList<qreal> tops = lineTops(m_lines.size());
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const Piece &first = m_pieces[m_lines[i].first];
        const Piece &last = m_pieces[m_lines[i].last];
        const qreal advance = last.end - first.start;
        qreal x = 0;
        if (align & Qt::AlignRight)
            x = area.width() - advance;
        else if (align & Qt::AlignHCenter)
            x = (area.width() - advance) / 2;
        const QPointF at(area.x() + x - first.start, area.y() + y + tops[i]);
        for (const QGlyphRun &run : m_layout->glyphRuns(first.from, last.from + last.length - first.from))
            painter.drawGlyphRun(at, run);
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
        m_heights.clear();
        break;
    default:
        break;
    }
    QLabel::changeEvent(event);
}

} // namespace lullwick
