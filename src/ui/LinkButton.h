#pragma once

#include "ui/NamedColor.h"

#include <QAbstractButton>

namespace lullwick {

/// A button drawn as a link: an optional symbol icon and its text in the accent colour, underlined
/// while hovered. Its accessible name is its text.
class LinkButton : public QAbstractButton {
    Q_OBJECT
public:
    LinkButton(const QString &text, const QString &symbolName = {}, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_symbol;
};

} // namespace lullwick
