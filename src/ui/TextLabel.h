#pragma once

#include <QLabel>

namespace lullwick {

/// A label that remembers its height for the last widths it was asked about. QLabel lays its text
/// out again on every such question, and a layout asks each label several times per pass, so a
/// page of hundreds of wrapping labels would re-lay all of their text whenever any one changed.
/// The heights are forgotten when the text, font, style or margins change; set word wrap and the
/// text format before the label is first laid out.
class TextLabel : public QLabel {
    Q_OBJECT
public:
    explicit TextLabel(QWidget *parent = nullptr) : QLabel(parent) {}

    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Entry {
        int width = -1;
        int height = 0;
    };
    mutable std::array<Entry, 8> m_cache{}; // a layout asks at its width, its minimum width and more
    mutable QString m_cachedText;           ///< the text the cache was filled for; setText is not virtual
};

} // namespace lullwick
