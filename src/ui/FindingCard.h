#pragma once

#include "model/Finding.h"
#include "ui/Card.h"

namespace lullwick {

/// One finding as a card: the severity's icon and tag beside the title, the detail as selectable
/// text, the advice, anything the page adds below it (`extra`, may be null), and the source.
class FindingCard : public Card {
    Q_OBJECT
public:
    explicit FindingCard(const Finding &finding, QWidget *extra = nullptr, QWidget *parent = nullptr);

    /// The icon that marks a finding of `severity`, and its colour.
    [[nodiscard]] static QString symbol(FindingSeverity severity);
    [[nodiscard]] static NamedColor::Role color(FindingSeverity severity);
};

} // namespace lullwick
