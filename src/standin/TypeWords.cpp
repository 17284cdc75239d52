#include "standin/TypeWords.h"

#include <array>

namespace lullwick {

// The program reads these words through its assertion kinds. Two are the words it knows as
// blocking; the rest are words it does not know, which it lists as held but blocking nothing.
//
//   inhibitor                                    word                          sleep kept off
//   logind block/block-weak, what has sleep      PreventSystemSleep            idle, all, display
//   logind block/block-weak, what has idle       PreventUserIdleDisplaySleep   idle, display
//   logind block, what has shutdown              PreventShutdown               none
//   logind block, only handle-* keys/lid         HandlePowerKeys               none
//   logind delay, what has sleep (or idle)       DelaySleep                    none
//   logind delay, shutdown only                  DelayShutdown                 none
//   GNOME flags has suspend (4)                  PreventSystemSleep            idle, all, display
//   GNOME flags has idle (8)                     PreventUserIdleDisplaySleep   idle, display
//   GNOME logout (1) / switch-user (2) /         PreventLogout / PreventUserSwitch /
//         automount (16) only                    PreventAutomount              none
//   KDE policy agent inhibition                  PreventUserIdleDisplaySleep   idle, display
//   anything else                                Inhibitor                     none
//
// Blocking idle handling keeps the screen on and stops the automatic suspend; blocking sleep
// refuses every suspend, asked for or not. A delay lock only postpones sleep for a moment, and
// shutdown, logout and key-handling locks leave sleep alone. The first matching row wins, so a
// lock on "idle:sleep" counts as a sleep lock. A KDE inhibition does not say what it holds off;
// in practice it stops PowerDevil's idle actions (dimming, screen off, automatic suspend).
// None of the unknown words contains a word the Details tab colours.

namespace {

const QString preventSystemSleep = QStringLiteral("PreventSystemSleep");
const QString preventIdleAndDisplay = QStringLiteral("PreventUserIdleDisplaySleep");
const QString preventShutdown = QStringLiteral("PreventShutdown");
const QString handlePowerKeys = QStringLiteral("HandlePowerKeys");
const QString delaySleep = QStringLiteral("DelaySleep");
const QString delayShutdown = QStringLiteral("DelayShutdown");
const QString preventLogout = QStringLiteral("PreventLogout");
const QString preventUserSwitch = QStringLiteral("PreventUserSwitch");
const QString preventAutomount = QStringLiteral("PreventAutomount");
const QString inhibitor = QStringLiteral("Inhibitor");

struct GnomeFlag {
    quint32 bit;
    QStringView name;
    const QString &word;
};

// GsmInhibitorFlag, in the order the mapping tries them.
const std::array<GnomeFlag, 5> gnomeFlags{{
    {4, u"suspend", preventSystemSleep},
    {8, u"idle", preventIdleAndDisplay},
    {1, u"logout", preventLogout},
    {2, u"switch-user", preventUserSwitch},
    {16, u"automount", preventAutomount},
}};

} // namespace

QString TypeWords::forLogindLock(QStringView what, QStringView mode)
{
    bool sleep = false, idle = false, shutdown = false, keys = false;
    for (QStringView item : what.tokenize(u':', Qt::SkipEmptyParts)) {
        sleep |= item == u"sleep";
        idle |= item == u"idle";
        shutdown |= item == u"shutdown";
        keys |= item.startsWith(u"handle-");
    }
    // block-weak still blocks; only a privileged caller may override it.
    if (mode == u"block" || mode == u"block-weak") {
        if (sleep)
            return preventSystemSleep;
        if (idle)
            return preventIdleAndDisplay;
        if (shutdown)
            return preventShutdown;
        if (keys)
            return handlePowerKeys;
        return inhibitor;
    }
    if (mode == u"delay") {
        if (sleep || idle)
            return delaySleep;
        if (shutdown)
            return delayShutdown;
    }
    return inhibitor;
}

QString TypeWords::forGnomeFlags(quint32 flags)
{
    for (const GnomeFlag &flag : gnomeFlags) {
        if (flags & flag.bit)
            return flag.word;
    }
    return inhibitor;
}

QString TypeWords::forKdeInhibition()
{
    return preventIdleAndDisplay;
}

QString TypeWords::gnomeFlagNames(quint32 flags)
{
    QStringList names;
    for (const GnomeFlag &flag : gnomeFlags) {
        if (flags & flag.bit)
            names.append(flag.name.toString());
    }
    return names.isEmpty() ? QStringLiteral("nothing") : names.join(QStringLiteral(", "));
}

QStringList TypeWords::all()
{
    return {preventSystemSleep, preventIdleAndDisplay, preventShutdown,   handlePowerKeys,  delaySleep,
            delayShutdown,      preventLogout,         preventUserSwitch, preventAutomount, inhibitor};
}

} // namespace lullwick
