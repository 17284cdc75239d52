#pragma once

#include <QLabel>
#include <QTextLayout>
#include <memory>

namespace lullwick {

/// A plain-text label that shapes its text once and keeps it. QLabel shapes the whole text again
/// for every size question (its size hint alone asks three times) and once more to paint, and a
/// page of hundreds of wrapping labels asks many such questions per layout pass; shaping is most of
/// what a page costs to build. This label answers them all by breaking the kept, shaped text into
/// lines at the asked width, and paints those same lines. Its lines and sizes match QLabel's.
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
    /// Shapes the text again if it was replaced since.
    void shape() const;
    /// The text broken into lines at `width` (unbounded when negative); returns its size.
    QSize layOut(int width) const;
    /// The horizontal and vertical room the contents margins take.
    [[nodiscard]] QSize extra() const;

    struct Entry {
        int width = -1;
        int height = 0;
    };
    mutable std::unique_ptr<QTextLayout> m_layout; ///< the shaped text; null until first asked
    mutable QString m_shapedText;                  ///< the text `m_layout` holds
    mutable bool m_shapedWrap = false;             ///< whether it was shaped to wrap
    mutable int m_lineWidth = -2;                  ///< the width its lines are broken at
    mutable QSize m_laidSize;                      ///< the size of those lines
    mutable qreal m_laidHeight = 0;                ///< their height before rounding, to place them
    mutable std::array<Entry, 8> m_heights{};      ///< a layout asks at its width, its minimum and more
    int m_emphasis = 0;
    QFont::Weight m_emphasisWeight = QFont::Medium;
};

} // namespace lullwick
