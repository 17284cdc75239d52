#include "ui/ScrollPage.h"

#include "ui/SteadyScrollBar.h"

#include <QScrollArea>
#include <QVBoxLayout>

namespace lullwick::ScrollPage {

QVBoxLayout *setUp(QScrollArea *area)
{
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBar(new SteadyScrollBar(Qt::Vertical));
    area->viewport()->setBackgroundRole(QPalette::Window);
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(20, 20, 20, 20);
    column->setSpacing(18);
    area->setWidget(page);
    return column;
}

} // namespace lullwick::ScrollPage
