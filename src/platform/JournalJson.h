#pragma once

#include <QByteArrayView>
#include <QJsonValue>
#include <QString>

namespace lullwick::JournalJson {

/// A field of an entry that journalctl printed as JSON: a string, or an array of bytes when the
/// field is not valid UTF-8 (decoded here with replacement characters); anything else is empty.
[[nodiscard]] QString text(const QJsonValue &field);

/// Whether journalctl's standard error says that the system journal may not be read: it then
/// shows the user's own entries, or none at all.
[[nodiscard]] bool accessDenied(QByteArrayView standardError);

} // namespace lullwick::JournalJson
