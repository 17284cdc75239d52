#pragma once

#include "standin/InhibitorLine.h"

#include <QList>
#include <QString>

namespace lullwick {

/// Writes inhibitors in the text format of `pmset -g assertions`, as the program reads it.
class AssertionListing {
public:
    AssertionListing() = delete;

    /// The system-wide counters for every type word, then one per-process line for each inhibitor
    /// with its continuation lines. Well formed also when `lines` is empty.
    [[nodiscard]] static QString text(const QList<InhibitorLine> &lines);

    /// Hours, minutes and seconds ("01:05:00"); hours may pass 99. "unknown" when not known.
    [[nodiscard]] static QString heldTime(std::optional<qint64> seconds);
};

} // namespace lullwick
