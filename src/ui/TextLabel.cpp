#include "ui/TextLabel.h"

#include <QEvent>

namespace lullwick {

int TextLabel::heightForWidth(int width) const
{
    // Comparing implicitly shared strings is a pointer check when the text was not replaced.
    if (text() != m_cachedText) {
        m_cache = {};
        m_cachedText = text();
    }
    for (const Entry &entry : m_cache) {
        if (entry.width == width)
            return entry.height;
    }
    const int height = QLabel::heightForWidth(width);
    std::move_backward(m_cache.begin(), m_cache.end() - 1, m_cache.end());
    m_cache[0] = {width, height};
    return height;
}

void TextLabel::changeEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ContentsRectChange:
        m_cache = {};
        break;
    default:
        break;
    }
    QLabel::changeEvent(event);
}

} // namespace lullwick
