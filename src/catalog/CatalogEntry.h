#pragma once

#include "catalog/ProcessInfo.h"

#include <QList>
#include <utility>

namespace lullwick {

/// One row of a process catalog: a lower-cased process name and what to say about it.
struct CatalogEntry {
    QString key;
    ProcessInfo info;

    /// An entry whose key is kept lower-cased, so a lookup needs to lower only the name.
    static CatalogEntry make(QString key, ProcessInfo info)
    {
        return {std::move(key).toLower(), std::move(info)};
    }
};

/// The catalog of processes that hold power assertions on a Mac.
[[nodiscard]] const QList<CatalogEntry> &macCatalog();
/// The catalog of processes that hold sleep inhibitors on a Linux desktop.
[[nodiscard]] const QList<CatalogEntry> &linuxCatalog();

} // namespace lullwick
