#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A temporary folder holding links to the fake pmset, ps, log and spindump, and the files that
/// script them.
class FakeToolDir {
public:
    FakeToolDir();

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] QString path() const { return m_dir.path(); }
    [[nodiscard]] QString pmsetPath() const { return m_dir.filePath(QStringLiteral("pmset")); }
    [[nodiscard]] QString psPath() const { return m_dir.filePath(QStringLiteral("ps")); }
    [[nodiscard]] QString logPath() const { return m_dir.filePath(QStringLiteral("log")); }
    [[nodiscard]] QString spindumpPath() const { return m_dir.filePath(QStringLiteral("spindump")); }

    // `call` is "assertions" (pmset -g assertions), "settings" (pmset -g), "log" (the loginwindow
    // query; it fails unless given an output) or "spindump" (its output is the decoded text it writes).
    void setOutput(const QString &call, const QByteArray &bytes) const;
    void setOutputFromFixture(const QString &call, const QString &fixtureName) const;
    void setErrorOutput(const QString &call, const QByteArray &bytes) const;
    void setExitStatus(const QString &call, int status) const;
    void setSleep(const QString &call, double seconds) const;

    /// The PID-to-path table the fake ps answers from.
    void setProcessTable(const QHash<qint64, QString> &table) const;
    /// Bytes the fake ps prints whatever it is asked.
    void setPsOutput(const QByteArray &bytes) const;

    /// One entry per pmset call: (call, start ns, end ns), in the order they were logged.
    struct Call {
        QString call;
        qint64 startNs = 0;
        qint64 endNs = 0;
    };
    [[nodiscard]] QList<Call> pmsetCalls() const;
    /// Like `pmsetCalls`, for every scripted tool ("log" and "spindump" included).
    [[nodiscard]] QList<Call> toolCalls() const;
    /// The output paths spindump was given, in order.
    [[nodiscard]] QStringList spindumpOutputPaths() const;
    /// The process IDs of the fake pmset runs, in start order.
    [[nodiscard]] QList<qint64> pmsetPIDs() const;
    /// Whether any live (not zombie) process is left in the process group `pgid`.
    [[nodiscard]] static bool processGroupAlive(qint64 pgid);
    /// The PIDs the fake ps was asked for, in order.
    [[nodiscard]] QList<qint64> psQueries() const;

private:
    void write(const QString &name, const QByteArray &bytes) const;

    QTemporaryDir m_dir;
    bool m_valid = false;
};
