#include "model/RunningAppInfo.h"

#include <QHashFunctions>

namespace lullwick {

size_t qHash(const RunningAppInfo &app, size_t seed) noexcept
{
    if (app.bundleID)
        return qHashMulti(seed, app.name, 1, *app.bundleID, app.pid);
    return qHashMulti(seed, app.name, 0, app.pid);
}

} // namespace lullwick
