#pragma once

#include "ui/NamedColor.h"

#include <QIcon>
#include <QPixmap>
#include <QStringList>
#include <QStringView>
#include <QWidget>

namespace lullwick::Icons {

/// The icon for one of the macOS symbol names ("gearshape", "moon.zzz"…), tinted with `tint`
/// read at paint time from `context`'s window palette (the application's when there is none), so a
/// palette change re-tints it. On Apple builds it is the system symbol of that name; elsewhere a
/// vendored Tabler icon. An unknown name gives a null icon.
[[nodiscard]] QIcon icon(QStringView symbolName, NamedColor::Role tint = NamedColor::Role::primary,
                         const QWidget *context = nullptr);

/// The symbol drawn in `color` into a square pixmap of `size` device-independent pixels at
/// `devicePixelRatio`; null for an unknown name. Cached by name, colour, size and ratio.
[[nodiscard]] QPixmap pixmap(QStringView symbolName, const QColor &color, int size, qreal devicePixelRatio);

/// Every symbol name the program uses; each has an icon.
[[nodiscard]] QStringList symbolNames();

} // namespace lullwick::Icons

namespace lullwick {

/// A symbol icon sized to its font's line height, tinted from the palette each time it paints.
class IconLabel : public QWidget {
    Q_OBJECT
public:
    IconLabel(QString symbolName, NamedColor::Role tint, QWidget *parent = nullptr);

    void setSymbol(QString symbolName, NamedColor::Role tint);
    [[nodiscard]] const QString &symbolName() const { return m_symbol; }
    [[nodiscard]] NamedColor::Role tint() const { return m_tint; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    NamedColor::Role m_tint;
};

} // namespace lullwick
