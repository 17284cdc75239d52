#include "standin/KdePolicyAgentSource.h"

#include "standin/BusCall.h"
#include "standin/TypeWords.h"

#include <QDBusArgument>

namespace lullwick {

namespace {

const QString service = QStringLiteral("org.kde.Solid.PowerManagement.PolicyAgent");

} // namespace

KdePolicyAgentSource::KdePolicyAgentSource(QDBusConnection sessionBus, ProcessNames names)
    : m_bus(std::move(sessionBus)), m_names(std::move(names))
{}

SourceResult<QList<InhibitorLine>> KdePolicyAgentSource::inhibitors(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QList<InhibitorLine>>;
    const BusCall bus(m_bus, service, deadline);
    const SourceResult<QVariantList> list =
        bus.call(QStringLiteral("/org/kde/Solid/PowerManagement/PolicyAgent"), service,
                 QStringLiteral("ListInhibitions"), u"a(ss)");
    if (list.state != list.read)
        return {Result::State(list.state), list.message, {}};
    const SourceResult<qint64> holder = bus.ownerPid();
    if (holder.state != holder.read)
        return {Result::State(holder.state), holder.message, {}};
    const QString holderName = m_names.name(holder.value).value_or(service);

    // The agent keeps no process ID of the application, only the name it gave.
    QList<InhibitorLine> lines;
    const auto argument = list.value.constFirst().value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString application, reason;
        argument.beginStructure();
        argument >> application >> reason;
        argument.endStructure();
        InhibitorLine line;
        line.pid = holder.value;
        line.processName = holderName;
        line.identifier = QStringLiteral("PolicyAgent:%1").arg(lines.size() + 1);
        line.typeWord = TypeWords::forKdeInhibition();
        line.reason = reason;
        line.extras = {QStringLiteral("Application: ") + application};
        lines.append(std::move(line));
    }
    argument.endArray();
    return Result::of(std::move(lines));
}

} // namespace lullwick
