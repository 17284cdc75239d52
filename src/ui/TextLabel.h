#pragma once

#include <QLabel>
#include <QTextLayout>
#include <memory>

namespace lullwick {

/// A plain-text label that shapes its text as seldom as it can. QLabel shapes the whole text again
/// for every size question (its size hints alone ask five times) and once more to paint, and a
/// page of hundreds of wrapping labels asks many such questions per layout pass: shaping is most
/// of what a page costs to build. This label lays its text out once on one unbroken line, answers
/// the size hints from that, and breaks it into lines again only for a width that the line does
/// not fit; it paints the lines it last broke. Lines are placed as QLabel places them.
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
    /// The horizontal and vertical room the contents margins take.
    [[nodiscard]] QSize extra() const;

    struct Entry {
        int width = -1;
        int height = 0;
    };
    mutable std::unique_ptr<QTextLayout> m_layout; ///< the shaped text; null until first asked
    mutable QString m_shapedText;                  ///< the text `m_layout` holds
    mutable bool m_shapedWrap = false;             ///< whether it was shaped to wrap
    mutable QSize m_natural;                       ///< the size of the unbroken lines
    mutable qreal m_naturalHeight = 0;             ///< their height before rounding
    mutable int m_widestWord = 0;                  ///< the narrowest the text can be broken to
    mutable int m_lineWidth = -1;                  ///< the width the lines are broken at; -1 unbroken
    mutable QSize m_laidSize;                      ///< the size of those lines
    mutable qreal m_laidHeight = 0;                ///< their height before rounding, to place them
    mutable std::array<Entry, 4> m_heights{};      ///< a layout asks again at the same widths
    int m_emphasis = 0;
    QFont::Weight m_emphasisWeight = QFont::Medium;
};

} // namespace lullwick
