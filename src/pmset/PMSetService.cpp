#include "pmset/PMSetService.h"

#include "model/TextRules.h"
#include "platform/ChildProcess.h"

namespace lullwick {

PMSetService::PMSetService(QString pmsetPath, QString psPath)
    : m_pmsetPath(std::move(pmsetPath)), m_psPath(std::move(psPath))
{}

PMSetService::~PMSetService() = default;

PMSetService::Result<QString> PMSetService::runPMSet(const QString &pmsetPath, const QStringList &arguments,
                                                     const std::atomic<bool> &stop)
{
    const ChildProcessResult run = ChildProcess::run(pmsetPath, arguments, &stop);
    if (!run.started)
        return PMSetError::makeLaunchFailed(run.launchError);
    if (run.exitStatus != 0)
        return PMSetError::makeNonZeroExit(run.exitStatus,
                                           text::decodeUtf8(run.standardError).value_or(QString()));
    return text::decodeUtf8(run.standardOutput).value_or(QString());
}

QFuture<PMSetService::Result<AssertionsSnapshot>> PMSetService::fetchAssertions()
{
    return m_worker.run([path = m_pmsetPath](const std::atomic<bool> &stop) -> Result<AssertionsSnapshot> {
        Result<QString> output = runPMSet(path, {QStringLiteral("-g"), QStringLiteral("assertions")}, stop);
        if (auto *error = std::get_if<PMSetError>(&output))
            return std::move(*error);
        const QDateTime capturedAt = QDateTime::currentDateTimeUtc();
        return parse(std::get<QString>(output), capturedAt);
    });
}

QFuture<PMSetService::Result<QString>> PMSetService::fetchSettings()
{
    return m_worker.run([path = m_pmsetPath](const std::atomic<bool> &stop) {
        return runPMSet(path, {QStringLiteral("-g")}, stop);
    });
}

QFuture<std::optional<QString>> PMSetService::resolveProcessName(qint64 pid)
{
    return m_worker.run([path = m_psPath, pid](const std::atomic<bool> &stop) -> std::optional<QString> {
        const QStringList arguments{QStringLiteral("-p"), QString::number(pid), QStringLiteral("-o"),
                                    QStringLiteral("comm=")};
        const ChildProcessResult run = ChildProcess::run(path, arguments, &stop);
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
