#pragma once

#include <QByteArrayView>
#include <QChar>
#include <QString>
#include <QStringView>
#include <optional>

namespace lullwick::text {

/// A blank is a Unicode space separator or a tab; line breaks are not blanks.
[[nodiscard]] inline bool isBlank(QChar c) noexcept
{
    const char16_t u = c.unicode();
    if (u < 0x80)
        return u == u' ' || u == u'\t';
    return c.category() == QChar::Separator_Space;
}

/// The text without blanks at either end.
[[nodiscard]] QStringView trimmed(QStringView s) noexcept;

/// The text without characters at either end for which `strip` holds.
template <typename Predicate> [[nodiscard]] QStringView trimmedBy(QStringView s, Predicate strip) noexcept
{
    qsizetype begin = 0;
    qsizetype end = s.size();
    while (begin < end && strip(s[begin]))
        ++begin;
    while (end > begin && strip(s[end - 1]))
        --end;
    return s.sliced(begin, end - begin);
}

/// Strict signed 64-bit integer: an optional single "+" or "-", then one or more ASCII digits and nothing
/// else.
[[nodiscard]] std::optional<qint64> toInt64(QStringView s) noexcept;

/// The bytes decoded as UTF-8, or nothing when they are not valid UTF-8. A byte-order mark is kept.
[[nodiscard]] std::optional<QString> decodeUtf8(QByteArrayView bytes);

/// Text from outside the program made fit for one line of a finding: control characters, line and
/// paragraph separators and direction overrides become spaces, runs of blanks one space, the ends
/// trimmed, and anything past `maxLength` characters replaced by "…".
[[nodiscard]] QString singleLine(QStringView s, qsizetype maxLength);

/// The text with every control character (C0, DEL, C1) written as a visible escape such as
/// "\x1b", except those in `kept`: what a terminal or a one-line field can show safely.
[[nodiscard]] QString escapedControls(QStringView s, QStringView kept = {});

} // namespace lullwick::text
