#pragma once

#include <QString>
#include <optional>

namespace lullwick {

/// One running application that a restart would ask to quit.
struct RunningAppInfo {
    QString name;                    ///< the application's localized name
    std::optional<QString> bundleID; ///< its bundle identifier (on Linux, its desktop-file id), if any
    qint64 pid = 0;

    bool operator==(const RunningAppInfo &) const = default;
    // A hidden friend: a namespace-level overload would hide Qt's qHash(int) from other records.
    friend size_t qHash(const RunningAppInfo &app, size_t seed) noexcept;
};

} // namespace lullwick

Q_DECLARE_TYPEINFO(lullwick::RunningAppInfo, Q_RELOCATABLE_TYPE);
