#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace lullwick::DateFormat {

/// Which locale and time zone to format for; empty members mean the user's own.
struct Setting {
    QByteArray localeId;   ///< e.g. "en_US"
    QByteArray timeZoneId; ///< e.g. "UTC"
};

/// The complete date with the standard time, e.g. "Monday, March 4, 2024 at 3:04:05 PM" in US English.
[[nodiscard]] QString completeDateTime(const QDateTime &instant, const Setting &setting = {});

/// The standard time of day alone, e.g. "3:04:05 PM" in US English.
[[nodiscard]] QString standardTime(const QDateTime &instant, const Setting &setting = {});

} // namespace lullwick::DateFormat
