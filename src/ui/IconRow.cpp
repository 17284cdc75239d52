#include "ui/IconRow.h"

#include "ui/Icons.h"

#include <QHBoxLayout>
#include <QLabel>

namespace lullwick {

QHBoxLayout *rowLayout(QWidget *row, int spacing)
{
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

QWidget *iconRow(IconLabel *icon, QLabel *label, int spacing)
{
    auto *row = new QWidget;
    QHBoxLayout *layout = rowLayout(row, spacing);
    icon->setFont(label->font());
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(label, 1);
    return row;
}

QWidget *iconRow(const QString &symbol, NamedColor::Role tint, QLabel *label, int spacing)
{
    return iconRow(new IconLabel(symbol, tint), label, spacing);
}

} // namespace lullwick
