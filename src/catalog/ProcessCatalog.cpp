#include "catalog/ProcessCatalog.h"

namespace lullwick {

namespace {

// Process names often carry a variant suffix (mdworker_shared, mdworker-x); only these two
// characters may continue a key.
bool continuesKey(QChar c)
{
    return c == u'-' || c == u'_';
}

} // namespace

std::optional<ProcessInfo> ProcessCatalog::info(QStringView name) const
{
    // toLower() on the fresh temporary converts in place, so this is normally the call's only allocation.
    const QString lower = name.toString().toLower();
    // A name the kernel cut short ("unattended-upgr") stands for any key it begins.
    const bool maybeCut = m_truncatedNameLength > 0 && lower.size() == m_truncatedNameLength;

    // An exact match always wins; then a key the cut name begins; otherwise the longest key that
    // the name continues, so a name such as mds_stores_x gets "mds_stores" rather than "mds"
    // whatever the table order.
    const CatalogEntry *cutMatch = nullptr;
    const CatalogEntry *prefixMatch = nullptr;
    for (const CatalogEntry &e : *m_entries) {
        if (lower == e.key)
            return e.info;
        const qsizetype n = e.key.size();
        if (maybeCut && !cutMatch && n > lower.size() && e.key.startsWith(lower))
            cutMatch = &e;
        if (lower.size() > n && continuesKey(lower.at(n)) && lower.startsWith(e.key) &&
            (!prefixMatch || n > prefixMatch->key.size()))
            prefixMatch = &e;
    }
    if (cutMatch)
        return cutMatch->info;
    if (prefixMatch)
        return prefixMatch->info;
    return std::nullopt;
}

} // namespace lullwick
