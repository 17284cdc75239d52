#pragma once

#include "ui/NamedColor.h"

#include <QFlags>
#include <QFont>
#include <QString>

class QLabel;
class QWidget;

namespace lullwick::TextStyle {

/// The macOS text styles, scaled from the application font (whose size stands for body, 13 pt).
enum class Style : quint8 { body, callout, caption, caption2, headline, title3, title2 };

enum class Option : quint16 {
    none = 0,
    selectable = 1 << 0, ///< the user can select and copy the text, by mouse and keyboard
    wrap = 1 << 1,       ///< wraps over as many lines as it needs
    italic = 1 << 2,     ///< italic
    medium = 1 << 3,     ///< medium weight
    semibold = 1 << 4,   ///< semibold weight
    bold = 1 << 5,       ///< bold weight
    monospaced = 1 << 6, ///< the system's fixed-pitch font at the style's size
    plainText = 1 << 7,  ///< never interpreted as rich text (the default for `label`)
};
Q_DECLARE_FLAGS(Options, Option)
Q_DECLARE_OPERATORS_FOR_FLAGS(Options)

/// The font of `style` with the weight, slant and pitch that `options` ask for.
[[nodiscard]] QFont font(Style style, Options options = {});

/// Sets the font, the named text colour (re-read on palette changes), wrapping and selectability
/// of `label` in one call.
void apply(QLabel *label, Style style, NamedColor::Role color = NamedColor::Role::primary,
           Options options = {});

/// A new plain-text label styled as `apply` does.
[[nodiscard]] QLabel *label(const QString &text, Style style,
                            NamedColor::Role color = NamedColor::Role::primary, Options options = {},
                            QWidget *parent = nullptr);

} // namespace lullwick::TextStyle
