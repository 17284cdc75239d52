#pragma once

#include <QWidget>

namespace lullwick {

/// Shows or hides `widget`, unless it already is as asked. Showing a widget, even inside a hidden
/// page, polishes it with all of its children and lays them out at once (QWidget::setVisible), at
/// whatever size it has then; a widget never hidden is shown with its parent anyway.
inline void setShown(QWidget *widget, bool shown)
{
    if (widget->isHidden() == shown)
        widget->setVisible(shown);
}

} // namespace lullwick
