#pragma once

#include "catalog/ProcessInfo.h"

#include <QStringView>
#include <optional>

namespace lullwick {

/// Built-in plain-language explanations of processes that commonly hold power assertions.
class ProcessCatalog {
public:
    ProcessCatalog() = delete;

    /// The entry a process name matches, ignoring letter case; a key may be continued by "-" or "_".
    static std::optional<ProcessInfo> info(QStringView name);
};

} // namespace lullwick
