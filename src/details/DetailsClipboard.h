#pragma once

#include "model/AssertionsSnapshot.h"

#include <QString>
#include <optional>

namespace lullwick {

/// The plain-text copy of the Details page: both pmset texts under their headings.
class DetailsClipboard {
public:
    DetailsClipboard() = delete;

    /// The assertions listing of `snapshot` and the settings text, each under a "=== … ===" heading.
    [[nodiscard]] static QString text(const std::optional<AssertionsSnapshot> &snapshot,
                                      const QString &settingsRaw);
};

} // namespace lullwick
