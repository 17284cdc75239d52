#pragma once

#include "model/AssertionsSnapshot.h"
#include "platform/DateFormat.h"
#include "sleep/SleepCheck.h"
#include "summary/ResolvedNames.h"

#include <QString>
#include <optional>

namespace lullwick {

/// The plain-text report of the Summary page: each sleep kind with the assertions that block it.
class SummaryClipboard {
public:
    SummaryClipboard() = delete;

    /// The report of `snapshot`, "(no snapshot)" without one. The capture time is written for
    /// `dates` (the user's locale and time zone unless a test pins them). With the sleep check's
    /// findings (a Linux system), the verdict and the findings follow the capture time.
    [[nodiscard]] static QString text(const std::optional<AssertionsSnapshot> &snapshot,
                                      const ResolvedNames &names, const DateFormat::Setting &dates = {},
                                      const std::optional<SleepFindings> &sleep = std::nullopt);
};

} // namespace lullwick
