#include "model/AssertionKind.h"

#include "platform/Profile.h"

#include <array>

namespace lullwick {

namespace {

using S = SleepKind;

struct KnownKind {
    QStringView typeWord;
    SleepKindSet blocks;
};

// Indexed by AssertionKind::Case.
constexpr std::array<KnownKind, AssertionKind::knownCaseCount> knownKinds{{
    {u"PreventUserIdleSystemSleep", {S::idleSystem}},
    {u"PreventSystemSleep", {S::idleSystem, S::system, S::display}},
    {u"PreventUserIdleDisplaySleep", {S::idleSystem, S::display}},
    {u"PreventDiskIdle", {}},
    {u"UserIsActive", {}},
    {u"SystemIsActive", {S::idleSystem}},
    {u"NoIdleSleepAssertion", {S::idleSystem}},
    {u"NoDisplaySleepAssertion", {S::idleSystem, S::display}},
    {u"DenySystemSleep", {S::idleSystem, S::system, S::display}},
    {u"BackgroundTask", {S::idleSystem}},
    {u"ApplePushServiceTask", {S::idleSystem}},
    {u"InteractivePushServiceTask", {S::idleSystem}},
    {u"SoftwareUpdateTask", {S::idleSystem}},
    {u"MaintenanceWake", {S::idleSystem}},
    {u"NetworkClientActive", {S::idleSystem}},
    {u"ExternalMedia", {}},
    {u"DisplayWake", {}},
    {u"RequiresDisplayAudio", {}},
    {u"AwakeOnReservePower", {}},
    {u"InternalPreventSleep", {}},
    {u"InternalPreventDisplaySleep", {}},
}};

} // namespace

AssertionKind AssertionKind::makeOther(QString rawType)
{
    AssertionKind kind(other);
    kind.m_otherText = std::move(rawType);
    return kind;
}

AssertionKind AssertionKind::fromRawType(QStringView rawType)
{
    for (int i = 0; i < knownCaseCount; ++i) {
        if (knownKinds[i].typeWord == rawType)
            return AssertionKind(Case(i));
    }
    return makeOther(rawType.toString());
}

QString AssertionKind::typeWord() const
{
    return m_case == other ? m_otherText : knownKinds[m_case].typeWord.toString();
}

QString AssertionKind::humanDescription() const
{
    return Profile::current().describe(*this);
}

SleepKindSet AssertionKind::blockedSleepKinds() const
{
    return m_case == other ? SleepKindSet{} : knownKinds[m_case].blocks;
}

} // namespace lullwick
