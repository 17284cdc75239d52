#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

namespace lullwick::NamedColor {

/// The named colours: text levels, the system hues and the accent.
enum class Role : quint8 { primary, secondary, tertiary, orange, green, red, blue, accent };

/// Whether `palette` is a dark one, judged from its window colour (Qt 6.4 has no colour scheme hint).
[[nodiscard]] bool isDark(const QPalette &palette);

/// The colour of `role` in `palette`: text levels from its window text, hues in their dark variants
/// when the palette is dark, the accent from its highlight.
[[nodiscard]] QColor resolve(Role role, const QPalette &palette);

/// `role` resolved in `palette`, at `opacity` (0 to 1) of its own alpha.
[[nodiscard]] QColor resolve(Role role, const QPalette &palette, qreal opacity);

/// The palette the named colours of `widget` are read from: its window's (the application's for a
/// window), so that a coloured parent never tints its children's colours.
[[nodiscard]] QPalette basePalette(const QWidget *widget);

/// Keeps the text colour of `widget` (window text, text, button text) at `role`, re-read whenever
/// its palette or parent changes. Binding again replaces the role.
void bindForeground(QWidget *widget, Role role);

} // namespace lullwick::NamedColor
