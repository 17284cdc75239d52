#pragma once

#include <QTextEdit>

namespace lullwick {

/// Read-only text that the user can select and copy, by mouse and keyboard. It wraps at its own
/// width and grows to show all of its text (no scroll bars of its own), so it sits in a page that
/// scrolls as a whole. The caller fills it with plain text or a formatted document.
class SelectableText : public QTextEdit {
    Q_OBJECT
public:
    explicit SelectableText(QWidget *parent = nullptr);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
};

} // namespace lullwick
