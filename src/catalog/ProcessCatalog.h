#pragma once

#include "catalog/ProcessInfo.h"

#include <QStringView>
#include <optional>

namespace lullwick {

class Profile;

/// Built-in plain-language explanations of processes that commonly hold power assertions, from
/// the current profile's catalog.
class ProcessCatalog {
public:
    ProcessCatalog() = delete;

    /// The entry a process name matches, ignoring letter case; a key may be continued by "-" or "_".
    static std::optional<ProcessInfo> info(QStringView name);
    /// The same, in the catalog of `profile`.
    static std::optional<ProcessInfo> info(QStringView name, const Profile &profile);
};

} // namespace lullwick
