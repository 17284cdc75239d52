#include "FakeToolDir.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <csignal>

using namespace Qt::StringLiterals;

FakeToolDir::FakeToolDir()
{
    m_valid = m_dir.isValid();
    for (const QString &tool : {u"pmset"_s, u"ps"_s, u"log"_s, u"spindump"_s, u"journalctl"_s})
        m_valid =
            m_valid && QFile::link(QStringLiteral(LULLWICK_FAKE_TOOLS_DIR "/") + tool, m_dir.filePath(tool));
    if (!m_valid)
        qFatal("cannot set up the fake tools in %s", qPrintable(m_dir.path()));
}

QByteArray FakeToolDir::read(const QString &name) const
{
    QFile file(m_dir.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool FakeToolDir::waitForStart(const QString &call) const
{
    const auto started = [&](const Call &c) { return c.call == call; };
    for (const QDeadlineTimer deadline(20'000); !deadline.hasExpired(); QThread::msleep(2)) {
        if (std::ranges::any_of(pmsetCalls(), started))
            return true;
    }
    return false;
}

void FakeToolDir::setProcessTable(const QHash<qint64, QString> &table) const
{
    QByteArray lines;
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        lines += QByteArray::number(it.key()) + '\t' + it.value().toUtf8() + '\n';
    write(QStringLiteral("ps.table"), lines);
}

QList<FakeToolDir::Call> FakeToolDir::pmsetCalls() const
{
    QList<Call> calls = toolCalls();
    calls.removeIf(
        [](const Call &c) { return c.call == u"log" || c.call == u"spindump" || c.call == u"journalctl"; });
    return calls;
}

QList<FakeToolDir::Call> FakeToolDir::toolCalls() const
{
    QList<Call> calls;
    // Lines are "start CALL NS PID" and "end CALL NS"; an end belongs to the latest open call of its name.
    for (const QByteArray &line : read(QStringLiteral("calls.log")).split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() < 3)
            continue;
        const QString call = QString::fromUtf8(words[1]);
        const qint64 ns = words[2].toLongLong();
        if (words[0] == "start") {
            calls.append({call, ns, 0, words.value(3).toLongLong()});
            continue;
        }
        const auto open = std::find_if(calls.rbegin(), calls.rend(),
                                       [&](const Call &c) { return c.call == call && c.endNs == 0; });
        if (open != calls.rend())
            open->endNs = ns;
    }
    return calls;
}

QString FakeToolDir::placeProgram(const QString &built) const
{
    const QString copy = m_dir.filePath(QFileInfo(built).fileName());
    const bool placed = QFile::copy(built, copy) &&
                        QFile::link(pmsetPath(), m_dir.filePath(QStringLiteral("lullwick-pmset")));
    return placed ? copy : QString();
}

qint64 FakeToolDir::signalDuringHeldCall(QProcess &program, const QString &path,
                                         const QList<int> &signalsSent) const
{
    hold(QStringLiteral("assertions"));
    program.start(path, {});
    if (!waitForStart(QStringLiteral("assertions")))
        return 0;
    for (const int signal : signalsSent)
        ::kill(pid_t(program.processId()), signal);
    // The held call gives up after 20 s or more: a program that waited for it would miss this.
    if (!program.waitForFinished(10'000))
        return 0;
    return pmsetCalls().constFirst().pid;
}

bool FakeToolDir::processGroupAlive(qint64 pgid)
{
    // Orphans are not always reaped at once here, so a zombie counts as gone.
    for (const QString &entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
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
    QList<qint64> pids;
    for (const QString &line :
         QString::fromLatin1(read(QStringLiteral("ps.log"))).split(u'\n', Qt::SkipEmptyParts))
        pids.append(line.toLongLong());
    return pids;
}
