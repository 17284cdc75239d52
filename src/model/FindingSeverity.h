#pragma once

#include <QString>
#include <optional>

namespace lullwick {

/// How strongly a finding points at the cause it names. Ordered by raw value: info < possible < likely.
enum class FindingSeverity : quint8 { likely = 3, possible = 2, info = 1 };

/// The severity's raw value: 3, 2 or 1.
[[nodiscard]] constexpr int rawValue(FindingSeverity severity)
{
    return int(severity);
}

/// The severity whose raw value is `value`; nothing outside 1 to 3.
[[nodiscard]] std::optional<FindingSeverity> severityFromRawValue(int value);

/// The severity's tag and clipboard label: "Likely", "Possible" or "For reference".
[[nodiscard]] QString label(FindingSeverity severity);

/// The severity's word in JSON and metrics: "likely", "possible" or "info".
[[nodiscard]] QString word(FindingSeverity severity);

} // namespace lullwick
