#include "ui/SteadyScrollBar.h"

#include <QStyle>
#include <QStyleOptionSlider>
#include <utility>

namespace lullwick {

SteadyScrollBar::SteadyScrollBar(Qt::Orientation orientation, QWidget *parent)
    : QScrollBar(orientation, parent)
{}

SteadyScrollBar::Look SteadyScrollBar::look() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return {size(), style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this),
            minimum() < maximum()};
}

void SteadyScrollBar::sliderChange(SliderChange change)
{
    const Look now = look();
    const std::optional<Look> before = std::exchange(m_shown, now);
    // A new value always goes through: the bar may do more with it than paint.
    if (change == SliderValueChange || !before || before->size != now.size ||
        before->scrolls != now.scrolls) {
        QScrollBar::sliderChange(change);
        return;
    }
    // Only the handle moved or changed length, if anything: the groove and arrows stay as painted.
    // A little room around it covers what a style draws beside a handle (its shadow or outline).
    if (before->handle != now.handle)
        update(before->handle.united(now.handle).adjusted(-2, -2, 2, 2));
}

} // namespace lullwick
