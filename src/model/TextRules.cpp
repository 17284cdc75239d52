#include "model/TextRules.h"

#include <QStringDecoder>
#include <limits>

namespace lullwick::text {

QStringView trimmed(QStringView s) noexcept
{
    return trimmedBy(s, isBlank);
}

std::optional<qint64> toInt64(QStringView s) noexcept
{
    qsizetype i = 0;
    bool negative = false;
    if (!s.isEmpty() && (s[0] == u'+' || s[0] == u'-')) {
        negative = s[0] == u'-';
        i = 1;
    }
    if (i == s.size())
        return std::nullopt;

    // Accumulate the magnitude unsigned so that the most negative value is reachable.
    const quint64 limit = negative ? quint64(std::numeric_limits<qint64>::max()) + 1
                                   : quint64(std::numeric_limits<qint64>::max());
    quint64 magnitude = 0;
    for (; i < s.size(); ++i) {
        const char16_t c = s[i].unicode();
        if (c < u'0' || c > u'9')
            return std::nullopt;
        const quint64 digit = c - u'0';
        if (magnitude > (limit - digit) / 10)
            return std::nullopt;
        magnitude = magnitude * 10 + digit;
    }
    if (negative)
        return magnitude == limit ? std::numeric_limits<qint64>::min() : -qint64(magnitude);
    return qint64(magnitude);
}

std::optional<QString> decodeUtf8(QByteArrayView bytes)
{
    // Stateless: a sequence cut off at the end is an error, not something to wait for.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString decoded = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return decoded;
}

QString escapedControls(QStringView s, QStringView kept)
{
    const auto isControl = [](char16_t c) { return c < 0x20 || (c >= 0x7f && c <= 0x9f); };
    QString escaped;
    escaped.reserve(s.size());
    for (const QChar c : s) {
        if (isControl(c.unicode()) && !kept.contains(c))
            escaped += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            escaped += c;
    }
    return escaped;
}

} // namespace lullwick::text
