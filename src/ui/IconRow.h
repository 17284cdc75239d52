#pragma once

#include "ui/NamedColor.h"

#include <QString>

class QHBoxLayout;
class QLabel;
class QWidget;

namespace lullwick {

class IconLabel;

/// A row layout on `row` without margins.
QHBoxLayout *rowLayout(QWidget *row, int spacing);

/// An icon beside a wrapping label, the icon level with the label's first line, in the label's font.
QWidget *iconRow(IconLabel *icon, QLabel *label, int spacing = 6);
/// The same with a new icon of `symbol` in `tint`.
QWidget *iconRow(const QString &symbol, NamedColor::Role tint, QLabel *label, int spacing = 6);

} // namespace lullwick
