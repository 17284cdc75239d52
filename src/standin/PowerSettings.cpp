#include "standin/PowerSettings.h"

#include <QFile>

namespace lullwick {

namespace {

std::optional<QString> firstLine(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return QString::fromUtf8(file.readLine()).trimmed();
}

} // namespace

PowerSettings::PowerSettings(QString sysPowerDirectory) : m_directory(std::move(sysPowerDirectory)) {}

SourceResult<QList<Setting>> PowerSettings::sleepStates() const
{
    const std::optional<QString> states = firstLine(m_directory + QStringLiteral("/state"));
    if (!states)
        return SourceResult<QList<Setting>>::absent(m_directory + QStringLiteral("/state cannot be read"));
    QList<Setting> settings{
        {QStringLiteral("SleepStates"), states->isEmpty() ? QStringLiteral("none") : *states}};
    // Either may be missing: a kernel without the choice, or hibernation not built in.
    if (const auto memSleep = firstLine(m_directory + QStringLiteral("/mem_sleep")))
        settings.append({QStringLiteral("MemSleep"), *memSleep});
    if (const auto disk = firstLine(m_directory + QStringLiteral("/disk")))
        settings.append({QStringLiteral("HibernateMode"), *disk});
    return SourceResult<QList<Setting>>::of(std::move(settings));
}

QString PowerSettings::text(const QList<Setting> &systemWide, const QList<Setting> &inUse)
{
    QString out;
    for (const auto &[heading, settings] :
         {std::pair{QStringLiteral("System-wide power settings:"), &systemWide},
          std::pair{QStringLiteral("Currently in use:"), &inUse}}) {
        out += heading + u'\n';
        for (const Setting &setting : *settings)
            out += QStringLiteral(" %1 %2\n").arg(setting.first, -20).arg(setting.second);
    }
    return out;
}

} // namespace lullwick
