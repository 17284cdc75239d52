#include "restart/InhibitorEvidence.h"

#include "model/TextRules.h"

namespace lullwick {

namespace {

// Long enough for any real name or reason; short enough that a hostile one stays a line.
constexpr qsizetype maxField = 200;
// Past this, the findings would list nothing a person could act on anyway.
constexpr qsizetype maxRecords = 256;

qint64 pidOf(QStringView field)
{
    const std::optional<qint64> pid = text::toInt64(field);
    return pid && *pid > 0 ? *pid : 0;
}

} // namespace

QString InhibitorEvidence::line(const QStringList &fields)
{
    QStringList cleaned;
    cleaned.reserve(fields.size());
    for (const QString &field : fields)
        cleaned.append(text::singleLine(field, maxField));
    return cleaned.join(u'\t') + u'\n';
}

InhibitorEvidence InhibitorEvidence::parse(QByteArrayView output)
{
    InhibitorEvidence evidence;
    // Invalid UTF-8 turns into replacement characters; the rest of the record stays readable.
    const QString text = QString::fromUtf8(output);
    for (QStringView record : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        QStringList fields;
        for (QStringView field : record.split(u'\t'))
            fields.append(text::singleLine(field, maxField));
        const QString &kind = fields.constFirst();
        if (kind == u"shutdown-lock" && fields.size() == 6) {
            if (evidence.shutdownLocks.size() < maxRecords)
                evidence.shutdownLocks.append({fields[1], fields[2], fields[3], pidOf(fields[4]), fields[5]});
        } else if (kind == u"logout-inhibitor" && fields.size() == 5) {
            if (evidence.logoutInhibitors.size() < maxRecords)
                evidence.logoutInhibitors.append({fields[1], fields[2], pidOf(fields[3]), fields[4]});
        } else if (kind == u"package-transaction" && fields.size() == 2) {
            if (evidence.packageTransactions.size() < maxRecords)
                evidence.packageTransactions.append(fields[1]);
        } else if (kind == u"inhibit-delay-max" && fields.size() == 2) {
            const std::optional<qint64> seconds = text::toInt64(fields[1]);
            if (seconds && *seconds >= 0)
                evidence.inhibitDelayMaxSeconds = seconds;
        }
    }
    return evidence;
}

} // namespace lullwick
