#include "profile/Words.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// On Linux a lock's holder and reason are written by the program for people ("Backing up home"),
// so a row quotes them as they are.
Words::Holders linuxHolderWords()
{
    Words::Holders h;
    h.quote = u"“%1” — %2"_s;
    h.reasonOnly = u"“%1”"_s;
    h.holderOnly = u"Asked for by %1"_s;
    // What the stand-in writes when logind does not say when a lock was taken.
    h.unknownHeld = u"unknown"_s;
    h.kindTexts = {
        {u"DelaySleep"_s,
         {u"A delay lock never stops the computer from sleeping. When a suspend is asked for, "
          u"systemd-logind tells the program and waits until it lets go—a few seconds at most "
          u"(InhibitDelayMaxSec)—so it can finish something first, such as saving state or closing a "
          u"connection."_s,
          u"Nothing to do: suspend goes ahead on its own once the program is ready or the time is up."_s}},
        {u"DelayShutdown"_s,
         {u"A delay lock never stops a shutdown or restart. systemd-logind tells the program that the "
          u"computer is about to go down and waits until it lets go—a few seconds at most "
          u"(InhibitDelayMaxSec)—so it can finish something first. Sleep is not affected."_s,
          u"Nothing to do: the shutdown goes ahead on its own once the program is ready or the time is "
          u"up."_s}},
    };
    return h;
}

} // namespace lullwick
