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

QString singleLine(QStringView s, qsizetype maxLength)
{
    // Whatever could start a new line, or turn the rest of one around, in a title or a list.
    const auto breaksTheLine = [](QChar c) {
        const char16_t u = c.unicode();
        return c.category() == QChar::Other_Control || u == 0x2028 || u == 0x2029 ||
               (u >= 0x202A && u <= 0x202E) || (u >= 0x2066 && u <= 0x2069);
    };
    QString out;
    out.reserve(qMin(s.size(), maxLength + 1));
    bool pendingSpace = false;
    for (QChar c : s) {
        if (isBlank(c) || breaksTheLine(c)) {
            pendingSpace = !out.isEmpty();
            continue;
        }
        if (pendingSpace)
            out.append(u' ');
        pendingSpace = false;
        out.append(c);
        if (out.size() > maxLength)
            break;
    }
    if (out.size() > maxLength) {
        out.truncate(maxLength);
        // Never leave half of a surrogate pair behind.
        if (!out.isEmpty() && out.back().isHighSurrogate())
            out.chop(1);
        out.append(u'…');
    }
    return out;
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
