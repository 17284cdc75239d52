#include "platform/JournalJson.h"

#include <QByteArray>
#include <QJsonArray>

namespace lullwick::JournalJson {

QString text(const QJsonValue &field)
{
    if (field.isString())
        return field.toString();
    if (!field.isArray())
        return {};
    QByteArray bytes;
    for (const QJsonValue byte : field.toArray()) {
        const int value = byte.toInt(-1);
        if (value < 0 || value > 255)
            return {};
        bytes.append(char(value));
    }
    return QString::fromUtf8(bytes);
}

bool accessDenied(QByteArrayView standardError)
{
    // journalctl's own words, which it does not translate.
    return standardError.contains("not seeing messages from other users and the system") ||
           standardError.contains("insufficient permissions");
}

} // namespace lullwick::JournalJson
