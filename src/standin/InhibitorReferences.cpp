#include "standin/InhibitorReferences.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace lullwick {

namespace {

/// logind writes WHO and WHY C-escaped, with every byte outside printable ASCII as \xNN.
QString unescaped(QByteArrayView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            bytes += text[i];
            continue;
        }
        const char c = text[++i];
        bool isHex = false;
        if (c == 'x' && i + 2 < text.size()) {
            const int value = text.sliced(i + 1, 2).toByteArray().toInt(&isHex, 16);
            if (isHex) {
                bytes += char(value);
                i += 2;
                continue;
            }
        }
        static constexpr QByteArrayView escapes = "a\ab\bf\fn\nr\rt\tv\v";
        const qsizetype at = escapes.indexOf(c);
        bytes += at >= 0 && at % 2 == 0 ? escapes[at + 1] : c;
    }
    return QString::fromUtf8(bytes);
}

bool sameLock(const LogindLock &a, const LogindLock &b, bool withText)
{
    return a.pid == b.pid && a.uid == b.uid && a.what == b.what && a.mode == b.mode &&
           (!withText || (a.who == b.who && a.why == b.why));
}

} // namespace

InhibitorReferences::InhibitorReferences(QString directory) : m_directory(std::move(directory)) {}

void InhibitorReferences::load()
{
    m_loaded = true;
    const QDir dir(m_directory);
    for (const QString &name : dir.entryList(QDir::Files | QDir::NoDotAndDotDot)) {
        if (name.endsWith(QStringLiteral(".ref")))
            continue;
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue; // not ours to read: the lock just has no reference
        Record record{name, {}, false};
        for (const QByteArray &line : file.readAll().split('\n')) {
            const qsizetype eq = line.indexOf('=');
            const QByteArrayView key = QByteArrayView(line).first(std::max<qsizetype>(eq, 0));
            const QByteArrayView value = QByteArrayView(line).sliced(eq + 1);
            if (key == "WHAT")
                record.lock.what = QString::fromUtf8(value);
            else if (key == "MODE")
                record.lock.mode = QString::fromUtf8(value);
            else if (key == "WHO")
                record.lock.who = unescaped(value);
            else if (key == "WHY")
                record.lock.why = unescaped(value);
            else if (key == "UID")
                record.lock.uid = value.toByteArray().toUInt();
            else if (key == "PID")
                record.lock.pid = value.toByteArray().toUInt();
        }
        m_records.append(std::move(record));
    }
}

std::optional<InhibitorReferences::Reference> InhibitorReferences::take(const LogindLock &lock)
{
    if (!m_loaded)
        load();
    // Exact texts first; should the escaping differ from ours, a lock still finds its record
    // by its holder, user, mode and list.
    for (bool withText : {true, false}) {
        for (Record &record : m_records) {
            if (record.taken || !sameLock(record.lock, lock, withText))
                continue;
            record.taken = true;
            const QFileInfo pipe(QDir(m_directory).filePath(record.id + QStringLiteral(".ref")));
            QDateTime created = pipe.birthTime();
            if (!created.isValid() && pipe.exists())
                created = pipe.metadataChangeTime();
            return Reference{record.id, created};
        }
    }
    return std::nullopt;
}

} // namespace lullwick
