#include "catalog/ProcessCatalog.h"

namespace lullwick {

std::optional<ProcessInfo> ProcessCatalog::info(QStringView)
{
    return std::nullopt;
}

} // namespace lullwick
