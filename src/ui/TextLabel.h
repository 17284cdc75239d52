#pragma once

#include "ui/HeightCache.h"
#include "ui/NamedColor.h"

#include <QLabel>
#include <QTextLayout>
#include <memory>
#include <optional>

namespace lullwick {

/// A plain-text label that shapes its text once. QLabel shapes the whole text again for every size
/// question (its size hints alone ask five times) and once more to paint, and a page of hundreds
/// of wrapping labels asks many such questions per layout pass: shaping is most of what a page
/// costs to build. This label lays its text out once on one unbroken line and measures where it
/// may break; it answers every size question from those measures, breaks the line at a width by
/// adding them up, and paints each piece of the shaped line where it falls. Lines are broken and
/// placed as QLabel breaks and places them.
///
/// Selectable or rich text is left to QLabel. The text is compared on every question (setText is
/// not virtual), which is a pointer check while the text is not replaced.
class TextLabel : public QLabel {
    Q_OBJECT
public:
    explicit TextLabel(QWidget *parent = nullptr) : QLabel(parent) {}
    ~TextLabel() override;

    /// Draws the first `length` characters in `weight` (a process name before its description).
    void setEmphasis(int length, QFont::Weight weight);
    /// Fills the label behind its text with `role` at `opacity`, in a rectangle with corners of
    /// `radius` (a badge, padded by the contents margins), read from the palette when painted.
    void setFill(NamedColor::Role role, qreal opacity, qreal radius);

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// Whether this label lays out and paints its text itself, rather than QLabel.
    [[nodiscard]] bool drawsItself() const;
    /// Shapes the text again if it was replaced, and lays it out on its unbroken lines.
    void shape() const;
    /// Breaks the lines at `width` (unbroken when negative) and returns their size.
    QSize layOut(int width) const;
    /// Places the lines at `lineWidth`; returns their height before rounding and their widest line.
    std::pair<qreal, qreal> placeLines(qreal lineWidth) const;
    /// The top of each of `count` lines, after the one that holds the whole text.
    [[nodiscard]] QList<qreal> lineTops(qsizetype count) const;
    /// The horizontal and vertical room the contents margins take.
    [[nodiscard]] QSize extra() const;

    /// A stretch of the unbroken line between two places where it may break: a word and the
    /// spaces after it.
    struct Piece {
        int from = 0;    ///< its first character
        int length = 0;  ///< its characters, spaces included
        qreal start = 0; ///< where it starts on the unbroken line
        qreal end = 0;   ///< where its last visible character ends
    };
    /// A broken line: the pieces from `first` up to `last`, inclusive.
    struct Line {
        qsizetype first = 0;
        qsizetype last = 0;
    };
    mutable std::unique_ptr<QTextLayout> m_layout; ///< the shaped text; null until first asked
    mutable QString m_shapedText;                  ///< the text `m_layout` holds
    mutable bool m_shapedWrap = false;             ///< whether it was shaped to wrap
    mutable bool m_shapedRightToLeft = false;      ///< whether it is written right to left
    mutable QSize m_natural;                       ///< the size of the unbroken lines
    mutable qreal m_naturalHeight = 0;             ///< their height before rounding
    mutable int m_widestWord = 0;                  ///< the narrowest the text can be broken to
    mutable QList<Piece> m_pieces;                 ///< where a one-line text may break
    mutable bool m_breaksItself = false;           ///< breaks by its pieces, not by QTextLayout
    mutable QList<Line> m_lines;                   ///< its lines at `m_lineWidth`, when it does
    mutable bool m_layoutBroken = false;           ///< the text layout holds lines broken by width
    mutable int m_lineWidth = -1;                  ///< the width the lines are broken at; -1 unbroken
    mutable QSize m_laidSize;                      ///< the size of those lines
    mutable qreal m_laidHeight = 0;                ///< their height before rounding, to place them
    mutable HeightCache m_heights;
    struct Fill {
        NamedColor::Role role;
        qreal opacity;
        qreal radius;
    };
    std::optional<Fill> m_fill;
    int m_emphasis = 0;
    QFont::Weight m_emphasisWeight = QFont::Medium;
};

} // namespace lullwick
