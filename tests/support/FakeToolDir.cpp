#include "FakeToolDir.h"

#include "Fixtures.h"

#include <QDir>
#include <QFile>

namespace {
const QString fakeToolsDir = QStringLiteral(LULLWICK_FAKE_TOOLS_DIR);
}

FakeToolDir::FakeToolDir()
{
    m_valid = m_dir.isValid();
    for (const char *tool : {"pmset", "ps", "log", "spindump"}) {
        const QString name = QString::fromLatin1(tool);
        m_valid = m_valid && QFile::link(fakeToolsDir + u'/' + name, m_dir.filePath(name));
    }
}

void FakeToolDir::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(m_dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        qFatal("cannot write fake tool file %s", qPrintable(file.fileName()));
}

void FakeToolDir::setOutput(const QString &call, const QByteArray &bytes) const
{
    write(call + QStringLiteral(".out"), bytes);
}

void FakeToolDir::setOutputFromFixture(const QString &call, const QString &fixtureName) const
{
    setOutput(call, Fixtures::read(fixtureName));
}

void FakeToolDir::setErrorOutput(const QString &call, const QByteArray &bytes) const
{
    write(call + QStringLiteral(".err"), bytes);
}

void FakeToolDir::setExitStatus(const QString &call, int status) const
{
    write(call + QStringLiteral(".status"), QByteArray::number(status));
}

void FakeToolDir::setSleep(const QString &call, double seconds) const
{
    write(call + QStringLiteral(".sleep"), QByteArray::number(seconds, 'f', 3));
}

void FakeToolDir::setProcessTable(const QHash<qint64, QString> &table) const
{
    QByteArray lines;
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        lines += QByteArray::number(it.key()) + '\t' + it.value().toUtf8() + '\n';
    write(QStringLiteral("ps.table"), lines);
}

void FakeToolDir::setPsOutput(const QByteArray &bytes) const
{
    write(QStringLiteral("ps.out"), bytes);
}

QList<FakeToolDir::Call> FakeToolDir::pmsetCalls() const
{
    QList<Call> calls = toolCalls();
    calls.removeIf([](const Call &c) { return c.call == u"log" || c.call == u"spindump"; });
    return calls;
}

QStringList FakeToolDir::spindumpOutputPaths() const
{
    QFile file(m_dir.filePath(QStringLiteral("spindump.log")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

QList<FakeToolDir::Call> FakeToolDir::toolCalls() const
{
    QFile file(m_dir.filePath(QStringLiteral("calls.log")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Call> calls;
    // Lines are "start CALL NS" and "end CALL NS"; an end belongs to the latest open call of its name.
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() != 3)
            continue;
        const QString call = QString::fromUtf8(words[1]);
        const qint64 ns = words[2].toLongLong();
        if (words[0] == "start") {
            calls.append({call, ns, 0});
        } else {
            for (qsizetype i = calls.size() - 1; i >= 0; --i) {
                if (calls[i].call == call && calls[i].endNs == 0) {
                    calls[i].endNs = ns;
                    break;
                }
            }
        }
    }
    return calls;
}

QList<qint64> FakeToolDir::pmsetPIDs() const
{
    QFile file(m_dir.filePath(QStringLiteral("pids.log")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<qint64> pids;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty())
            pids.append(line.toLongLong());
    }
    return pids;
}

bool FakeToolDir::processGroupAlive(qint64 pgid)
{
    // Orphans are not always reaped at once here, so a zombie counts as gone.
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(entry));
        if (!stat.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = stat.readAll();
        // "pid (comm) state ppid pgrp ...": the command may hold spaces, so read after its ")".
        const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 2 && fields[2].toLongLong() == pgid && fields[0] != "Z")
            return true;
    }
    return false;
}

QList<qint64> FakeToolDir::psQueries() const
{
    QFile file(m_dir.filePath(QStringLiteral("ps.log")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<qint64> pids;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty())
            pids.append(line.toLongLong());
    }
    return pids;
}
