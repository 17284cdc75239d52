#include "model/Assertion.h"

#include "model/TextRules.h"

namespace lullwick {

std::optional<qint64> Assertion::createdForPID() const
{
    if (!extras)
        return std::nullopt;

    static constexpr QStringView marker = u"Created for PID:";
    const auto strip = [](QChar c) { return text::isBlank(c) || c == u'.' || c == u','; };

    for (QStringView line : QStringView(*extras).tokenize(u'\n')) {
        const qsizetype at = line.indexOf(marker);
        if (at < 0)
            continue;
        const QStringView value = text::trimmedBy(line.sliced(at + marker.size()), strip);
        if (value.isEmpty())
            continue;
        if (const auto number = text::toInt64(value))
            return number;
    }
    return std::nullopt;
}

bool Assertion::looksLikeFriendlyReason(QStringView text)
{
    return text.contains(u' ') || text.count(u'.') < 2;
}

size_t qHash(const Assertion &a, size_t seed) noexcept
{
    const auto optionalHash = [](const std::optional<QString> &s) { return s ? qHash(*s) : size_t(0x9e37); };
    return qHashMulti(seed, a.id, a.pid, a.processName, a.assertionID, a.timeHeld, a.kind,
                      optionalHash(a.namedReason), optionalHash(a.extras));
}

} // namespace lullwick
