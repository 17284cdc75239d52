#include "pmset/PMSetService.h"

#include "model/TextRules.h"
#include "platform/ChildProcess.h"

#include <QtConcurrent/QtConcurrentRun>

namespace lullwick {

PMSetService::PMSetService(QString pmsetPath, QString psPath)
    : m_pmsetPath(std::move(pmsetPath)), m_psPath(std::move(psPath))
{
    // One worker: calls through one instance never overlap and run in the order requested.
    m_pool.setMaxThreadCount(1);
}

PMSetService::~PMSetService()
{
    m_pool.waitForDone();
}

PMSetService::Result<QString> PMSetService::runPMSet(const QString &pmsetPath, const QStringList &arguments)
{
    const ChildProcessResult run = ChildProcess::run(pmsetPath, arguments);
    if (!run.started)
        return PMSetError::makeLaunchFailed(run.launchError);
    if (run.exitStatus != 0)
        return PMSetError::makeNonZeroExit(run.exitStatus,
                                           text::decodeUtf8(run.standardError).value_or(QString()));
    return text::decodeUtf8(run.standardOutput).value_or(QString());
}

QFuture<PMSetService::Result<AssertionsSnapshot>> PMSetService::fetchAssertions()
{
    return QtConcurrent::run(&m_pool, [path = m_pmsetPath]() -> Result<AssertionsSnapshot> {
        Result<QString> output = runPMSet(path, {QStringLiteral("-g"), QStringLiteral("assertions")});
        if (auto *error = std::get_if<PMSetError>(&output))
            return std::move(*error);
        const QDateTime capturedAt = QDateTime::currentDateTimeUtc();
        return parse(std::get<QString>(output), capturedAt);
    });
}

QFuture<PMSetService::Result<QString>> PMSetService::fetchSettings()
{
    return QtConcurrent::run(&m_pool,
                             [path = m_pmsetPath] { return runPMSet(path, {QStringLiteral("-g")}); });
}

QFuture<std::optional<QString>> PMSetService::resolveProcessName(qint64 pid)
{
    return QtConcurrent::run(&m_pool, [path = m_psPath, pid]() -> std::optional<QString> {
        const QStringList arguments{QStringLiteral("-p"), QString::number(pid), QStringLiteral("-o"),
                                    QStringLiteral("comm=")};
        const ChildProcessResult run = ChildProcess::run(path, arguments);
        if (!run.started)
            return std::nullopt;
        const std::optional<QString> output = text::decodeUtf8(run.standardOutput);
        if (!output)
            return std::nullopt;
        // ps ends its line with a line feed; any surrounding white space is not part of the name.
        QStringView name = QStringView(*output).trimmed();
        if (name.isEmpty())
            return std::nullopt;
        while (name.size() > 1 && name.endsWith(u'/'))
            name.chop(1);
        if (name == u"/")
            return name.toString();
        return name.sliced(name.lastIndexOf(u'/') + 1).toString();
    });
}

} // namespace lullwick
