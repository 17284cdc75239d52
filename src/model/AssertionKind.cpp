#include "model/AssertionKind.h"

#include <array>

namespace lullwick {

namespace {

using S = SleepKind;

struct KnownKind {
    QStringView typeWord;
    QStringView name;
    SleepKindSet blocks;
    QStringView description;
};

constexpr QStringView keepAwake = u"Keeping the Mac awake while otherwise idle.";
constexpr QStringView keepDisplay = u"Keeping the display from sleeping when otherwise idle.";
constexpr QStringView preventAll =
    u"Preventing all system sleep, including when plugged in. (Released on battery.)";

// Indexed by AssertionKind::Case: pmset's word, the program's own name, what it blocks, what it does.
constexpr std::array<KnownKind, AssertionKind::knownCaseCount> knownKinds{{
    {u"PreventUserIdleSystemSleep", u"preventUserIdleSystemSleep", {S::idleSystem}, keepAwake},
    {u"PreventSystemSleep", u"preventSystemSleep", {S::idleSystem, S::system, S::display}, preventAll},
    {u"PreventUserIdleDisplaySleep",
     u"preventUserIdleDisplaySleep",
     {S::idleSystem, S::display},
     keepDisplay},
    {u"PreventDiskIdle",
     u"preventDiskIdle",
     {},
     u"Keeping a disk spun up; doesn’t affect system or display sleep."},
    {u"UserIsActive",
     u"userIsActive",
     {},
     u"User is currently active (recent keyboard or mouse input). Times out after a few minutes."},
    {u"SystemIsActive",
     u"systemIsActive",
     {S::idleSystem},
     u"System reports it’s active right now; can revert sleep in progress."},
    {u"NoIdleSleepAssertion", u"noIdleSleepLegacy", {S::idleSystem}, keepAwake},
    {u"NoDisplaySleepAssertion", u"noDisplaySleepLegacy", {S::idleSystem, S::display}, keepDisplay},
    {u"DenySystemSleep", u"denySystemSleepLegacy", {S::idleSystem, S::system, S::display}, preventAll},
    {u"BackgroundTask",
     u"backgroundTask",
     {S::idleSystem},
     u"Running a background task. Holds idle sleep only while plugged in."},
    {u"ApplePushServiceTask",
     u"applePushServiceTask",
     {S::idleSystem},
     u"Apple Push Notification Service activity. Holds idle sleep only while plugged in."},
    {u"InteractivePushServiceTask",
     u"interactivePushServiceTask",
     {S::idleSystem},
     u"Delivering an interactive push notification. Brief; AC-only."},
    {u"SoftwareUpdateTask",
     u"softwareUpdateTask",
     {S::idleSystem},
     u"macOS software update is running. Holds idle sleep only while plugged in."},
    {u"MaintenanceWake",
     u"maintenanceWake",
     {S::idleSystem},
     u"System is in DarkWake to do maintenance. AC-only."},
    {u"NetworkClientActive",
     u"networkClientActive",
     {S::idleSystem},
     u"A network client connection is active (file sharing, screen sharing, SMB, etc.)."},
    {u"ExternalMedia",
     u"externalMedia",
     {},
     u"External storage is mounted. Informational on modern macOS — does not prevent sleep on its own."},
    {u"DisplayWake", u"displayWake", {}, u"Display is awake to show a notification."},
    {u"RequiresDisplayAudio",
     u"requiresDisplayAudio",
     {},
     u"Audio is playing through the display (HDMI/DisplayPort). Screensaver may run; the panel stays "
     u"powered."},
    {u"AwakeOnReservePower", u"awakeOnReservePower", {}, u"Held awake even on reserve battery."},
    {u"InternalPreventSleep",
     u"internalPreventSleep",
     {},
     u"Short-lived powerd proxy while transitioning sleep state."},
    {u"InternalPreventDisplaySleep",
     u"internalPreventDisplaySleep",
     {},
     u"Short-lived powerd proxy while transitioning display sleep state."},
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

QString AssertionKind::humanDescription() const
{
    if (m_case == other)
        return QStringLiteral("Assertion: ") + m_otherText + u'.';
    return knownKinds[m_case].description.toString();
}

SleepKindSet AssertionKind::blockedSleepKinds() const
{
    return m_case == other ? SleepKindSet{} : knownKinds[m_case].blocks;
}

} // namespace lullwick
