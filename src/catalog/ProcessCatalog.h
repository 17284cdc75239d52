#pragma once

#include "catalog/CatalogEntry.h"
#include "catalog/ProcessInfo.h"

#include <QList>
#include <QStringView>
#include <optional>

namespace lullwick {

/// Plain-language explanations of processes that commonly hold power assertions: one system's
/// table of entries and how that system cuts process names.
class ProcessCatalog {
public:
    /// `truncatedNameLength`: the kernel's cut-off for process names (a name this long may be the
    /// start of a longer one); 0 where names are kept whole.
    ProcessCatalog(const QList<CatalogEntry> &entries, int truncatedNameLength)
        : m_entries(&entries), m_truncatedNameLength(truncatedNameLength)
    {}

    /// The entry a process name matches, ignoring letter case; a key may be continued by "-" or "_".
    [[nodiscard]] std::optional<ProcessInfo> info(QStringView name) const;

    [[nodiscard]] const QList<CatalogEntry> &entries() const { return *m_entries; }
    [[nodiscard]] int truncatedNameLength() const { return m_truncatedNameLength; }

private:
    const QList<CatalogEntry> *m_entries;
    int m_truncatedNameLength;
};

} // namespace lullwick
