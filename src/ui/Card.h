#pragma once

#include "ui/NamedColor.h"

#include <QWidget>
#include <optional>

class QVBoxLayout;

namespace lullwick {

/// A rounded rectangle filled with a named colour at an opacity, painted (never style-sheeted) so
/// that its colours follow the palette. Holds its content in a column with `padding` all round.
class Card : public QWidget {
    Q_OBJECT
public:
    Card(NamedColor::Role fill, qreal opacity, int padding = 14, qreal radius = 10,
         QWidget *parent = nullptr);

    /// The column that holds the card's content.
    [[nodiscard]] QVBoxLayout *column() const { return m_column; }

    /// Also outline the card with a line of `role` at `opacity`, `width` pixels wide.
    void setOutline(NamedColor::Role role, qreal opacity, qreal width = 1);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Outline {
        NamedColor::Role role;
        qreal opacity;
        qreal width;
    };

    NamedColor::Role m_fill;
    qreal m_opacity;
    qreal m_radius;
    std::optional<Outline> m_outline;
    QVBoxLayout *m_column;
};

} // namespace lullwick
