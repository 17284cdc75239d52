#pragma once

#include "model/RestartAnalysis.h"
#include "platform/DateFormat.h"

#include <QString>
#include <optional>

namespace lullwick {

/// The Restart tab as plain text for the clipboard.
class RestartClipboard {
public:
    RestartClipboard() = delete;

    /// The heading, check time, verdict and every finding; a fixed line when there is no analysis.
    /// `dates` picks the locale and time zone of the check time (the user's own by default).
    [[nodiscard]] static QString text(const std::optional<RestartAnalysis> &analysis,
                                      const DateFormat::Setting &dates = {});
};

} // namespace lullwick
