#include "ui/SelectableText.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextDocument>

namespace lullwick {

SelectableText::SelectableText(QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    // Transparent, so the page (or a card) shows through like a label's background.
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            [this] { updateGeometry(); });
}

int SelectableText::heightForWidth(int width) const
{
    // Lay out a copy at the asked width: the shown document keeps the width it is shown at.
    const int margins = contentsMargins().left() + contentsMargins().right();
    if (document()->textWidth() == width - margins)
        return int(std::ceil(document()->size().height())) + contentsMargins().top() +
               contentsMargins().bottom();
    std::unique_ptr<QTextDocument> copy(document()->clone());
    copy->setTextWidth(width - margins);
    return int(std::ceil(copy->size().height())) + contentsMargins().top() + contentsMargins().bottom();
}

QSize SelectableText::sizeHint() const
{
    const int width = std::max(QTextEdit::sizeHint().width(), 200);
    return {width, heightForWidth(this->width() > 0 ? this->width() : width)};
}

QSize SelectableText::minimumSizeHint() const
{
    return {50, fontMetrics().height()};
}

void SelectableText::resizeEvent(QResizeEvent *event)
{
    QTextEdit::resizeEvent(event);
    updateGeometry();
}

} // namespace lullwick
