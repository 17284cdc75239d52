#pragma once

#include "Fixtures.h"

#include <QByteArray>
#include <QFile>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class QProcess;

/// A temporary folder holding links to the fake pmset, ps, log, spindump and journalctl, and the
/// files that script them. A test cannot go on without it, so one that cannot be made ends the test.
class FakeToolDir {
public:
    FakeToolDir();

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] QString path() const { return m_dir.path(); }
    [[nodiscard]] QString pmsetPath() const { return m_dir.filePath(QStringLiteral("pmset")); }
    [[nodiscard]] QString psPath() const { return m_dir.filePath(QStringLiteral("ps")); }
    [[nodiscard]] QString logPath() const { return m_dir.filePath(QStringLiteral("log")); }
    [[nodiscard]] QString spindumpPath() const { return m_dir.filePath(QStringLiteral("spindump")); }
    [[nodiscard]] QString journalctlPath() const { return m_dir.filePath(QStringLiteral("journalctl")); }

    // `call` is "assertions" (pmset -g assertions), "settings" (pmset -g), "log" (the loginwindow
    // query; it fails unless given an output), "spindump" (its output is the decoded text it writes) or
    // "journalctl" (the previous boot's entries; it fails unless given an output).
    void setOutput(const QString &call, const QByteArray &bytes) const { write(call + ".out", bytes); }
    void setOutputFromFixture(const QString &call, const QString &fixture) const
    {
        setOutput(call, Fixtures::read(fixture));
    }
    void setErrorOutput(const QString &call, const QByteArray &bytes) const { write(call + ".err", bytes); }
    void setExitStatus(const QString &call, int status) const { write(call + ".status", status); }
    void setSleep(const QString &call, double seconds) const
    {
        write(call + ".sleep", QByteArray::number(seconds, 'f', 3));
    }
    /// spindump also leaves a file holding `bytes` beside its output.
    void setSpindumpExtraFile(const QByteArray &bytes) const
    {
        write(QStringLiteral("spindump.extra"), bytes);
    }
    /// spindump makes a folder, holding a file, where its output file should be.
    void setSpindumpMakesFolder() const { write(QStringLiteral("spindump.folder"), QByteArray()); }
    /// After writing its output, the call kills itself with `signal`.
    void setKilledBy(const QString &call, int signal) const { write(call + ".signal", signal); }

    /// The call reads a line of its standard input first; `lineRead` gives it.
    void readInput(const QString &call) const { write(call + ".input", "(not read)"); }
    [[nodiscard]] QByteArray lineRead(const QString &call) const { return read(call + ".input"); }

    /// Holds the call, once started, until release(); a held call gives up after about 20 s.
    void hold(const QString &call) const { write(call + ".hold", QByteArray()); }
    void release(const QString &call) const { QFile::remove(m_dir.filePath(call + ".hold")); }
    /// Blocks the calling thread, without running its event loop, until the call has started.
    [[nodiscard]] bool waitForStart(const QString &call) const;

    /// The PID-to-path table the fake ps answers from.
    void setProcessTable(const QHash<qint64, QString> &table) const;
    /// Bytes the fake ps prints whatever it is asked.
    void setPsOutput(const QByteArray &bytes) const { write(QStringLiteral("ps.out"), bytes); }

    /// One entry per pmset call, in the order they were started; `endNs` is 0 while it runs.
    struct Call {
        QString call;
        qint64 startNs = 0;
        qint64 endNs = 0;
        qint64 pid = 0;
    };
    [[nodiscard]] QList<Call> pmsetCalls() const;
    /// Like `pmsetCalls`, for every scripted tool ("log" and "spindump" included).
    [[nodiscard]] QList<Call> toolCalls() const;
    /// The output paths spindump was given, in order.
    [[nodiscard]] QStringList spindumpOutputPaths() const
    {
        return QString::fromUtf8(read(QStringLiteral("spindump.log"))).split(u'\n', Qt::SkipEmptyParts);
    }
    /// Copies the built program `built` here, beside a `lullwick-pmset` link to the fake pmset, where
    /// the program looks for its pmset; the copy's path, or nothing when it could not be placed.
    [[nodiscard]] QString placeProgram(const QString &built) const;
    /// Starts `program` with the assertions call held, sends it `signals` in order once that call
    /// runs, and waits for the program to end; the held call's PID, or 0 when it never started or
    /// the program did not end.
    [[nodiscard]] qint64 signalDuringHeldCall(QProcess &program, const QString &path,
                                              const QList<int> &signalsSent) const;

    /// Whether any live (not zombie) process is left in the process group `pgid`.
    [[nodiscard]] static bool processGroupAlive(qint64 pgid);
    /// The PIDs the fake ps was asked for, in order.
    [[nodiscard]] QList<qint64> psQueries() const;

private:
    void write(const QString &name, const QByteArray &bytes) const
    {
        Fixtures::writeFile(m_dir.filePath(name), bytes);
    }
    void write(const QString &name, int number) const { write(name, QByteArray::number(number)); }
    /// The file's bytes, or none when a tool has not written it.
    [[nodiscard]] QByteArray read(const QString &name) const;

    QTemporaryDir m_dir;
    bool m_valid = false;
};
