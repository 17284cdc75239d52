#include "standin/AssertionListing.h"

#include "standin/TypeWords.h"

namespace lullwick {

namespace {

/// Text from the system arrives on one line: a line break would end the line early.
QString oneLine(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control)
            c = u' ';
    }
    return text;
}

/// The reader takes the name up to the first ")" and rejects a ":" before it.
QString processNameText(const QString &name)
{
    QString text = oneLine(name);
    text.replace(u')', u'）');
    text.replace(u':', u'：');
    return text;
}

/// The reader ends the reason at the first straight double quote.
QString reasonText(const QString &reason)
{
    return oneLine(reason).replace(u'"', u'”');
}

/// Only our own line may say whom an inhibitor was created for, not a name or reason an
/// application chose.
QString extraText(const QString &extra)
{
    return oneLine(extra).replace(QStringLiteral("Created for PID:"), QStringLiteral("Created for PID："));
}

} // namespace

QString AssertionListing::heldTime(std::optional<qint64> seconds)
{
    if (!seconds)
        return QStringLiteral("unknown");
    const qint64 s = std::max<qint64>(*seconds, 0);
    return QStringLiteral("%1:%2:%3")
        .arg(s / 3600, 2, 10, QChar(u'0'))
        .arg(s / 60 % 60, 2, 10, QChar(u'0'))
        .arg(s % 60, 2, 10, QChar(u'0'));
}

QString AssertionListing::text(const QList<InhibitorLine> &lines)
{
    QString out = QStringLiteral("Assertion status system-wide:\n");
    for (const QString &word : TypeWords::all()) {
        const auto held = std::count_if(lines.cbegin(), lines.cend(),
                                        [&](const InhibitorLine &line) { return line.typeWord == word; });
        out += QStringLiteral("   %1 %2\n").arg(word, -30).arg(held);
    }
    out += QStringLiteral("Listed by owning process:\n");
    for (const InhibitorLine &line : lines) {
        out +=
            QStringLiteral("   pid %1(%2): [%3] %4 %5 named: \"%6\"\n")
                .arg(QString::number(line.pid), processNameText(line.processName), oneLine(line.identifier),
                     heldTime(line.heldSeconds), line.typeWord, reasonText(line.reason));
        if (line.createdFor)
            out += QStringLiteral("\tCreated for PID: %1\n").arg(*line.createdFor);
        for (const QString &extra : line.extras)
            out += u'\t' + extraText(extra) + u'\n';
    }
    return out;
}

} // namespace lullwick
