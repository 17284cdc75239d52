#include "model/AssertionKind.h"

#include <array>

namespace lullwick {

namespace {

using S = SleepKind;

struct KnownKind {
    QStringView typeWord;
    QStringView name;
    SleepKindSet blocks;
};

// Indexed by AssertionKind::Case: pmset's word, the program's own name, what it blocks. What it
// does is the platform profile's to say.
constexpr std::array<KnownKind, AssertionKind::knownCaseCount> knownKinds{{
    {u"PreventUserIdleSystemSleep", u"preventUserIdleSystemSleep", {S::idleSystem}},
    {u"PreventSystemSleep", u"preventSystemSleep", {S::idleSystem, S::system, S::display}},
    {u"PreventUserIdleDisplaySleep", u"preventUserIdleDisplaySleep", {S::idleSystem, S::display}},
    {u"PreventDiskIdle", u"preventDiskIdle", {}},
    {u"UserIsActive", u"userIsActive", {}},
    {u"SystemIsActive", u"systemIsActive", {S::idleSystem}},
    {u"NoIdleSleepAssertion", u"noIdleSleepLegacy", {S::idleSystem}},
    {u"NoDisplaySleepAssertion", u"noDisplaySleepLegacy", {S::idleSystem, S::display}},
    {u"DenySystemSleep", u"denySystemSleepLegacy", {S::idleSystem, S::system, S::display}},
    {u"BackgroundTask", u"backgroundTask", {S::idleSystem}},
    {u"ApplePushServiceTask", u"applePushServiceTask", {S::idleSystem}},
    {u"InteractivePushServiceTask", u"interactivePushServiceTask", {S::idleSystem}},
    {u"SoftwareUpdateTask", u"softwareUpdateTask", {S::idleSystem}},
    {u"MaintenanceWake", u"maintenanceWake", {S::idleSystem}},
    {u"NetworkClientActive", u"networkClientActive", {S::idleSystem}},
    {u"ExternalMedia", u"externalMedia", {}},
    {u"DisplayWake", u"displayWake", {}},
    {u"RequiresDisplayAudio", u"requiresDisplayAudio", {}},
    {u"AwakeOnReservePower", u"awakeOnReservePower", {}},
    {u"InternalPreventSleep", u"internalPreventSleep", {}},
    {u"InternalPreventDisplaySleep", u"internalPreventDisplaySleep", {}},
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

QString AssertionKind::name() const
{
    return m_case == other ? QStringLiteral("other") : knownKinds[m_case].name.toString();
}

SleepKindSet AssertionKind::blockedSleepKinds() const
{
    return m_case == other ? SleepKindSet{} : knownKinds[m_case].blocks;
}

} // namespace lullwick
