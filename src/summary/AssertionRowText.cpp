#include "summary/AssertionRowText.h"

#include "model/TextRules.h"
#include "profile/Profile.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

/// Who took a lock, as the stand-in's continuation lines name it: logind's "Who: NAME (uid N)",
/// or the application ID a desktop session was given ("Application: ID").
struct Holder {
    QString name;
    bool isApplication = false;
};

std::optional<Holder> holderOf(const Assertion &assertion)
{
    if (!assertion.extras)
        return std::nullopt;
    static constexpr QStringView who = u"Who: ", application = u"Application: ", uid = u" (uid ";
    for (QStringView line : QStringView(*assertion.extras).tokenize(u'\n')) {
        const bool isApplication = line.startsWith(application);
        if (!isApplication && !line.startsWith(who))
            continue;
        QStringView name = line.sliced(isApplication ? application.size() : who.size());
        // A name may itself hold " (uid ": the stand-in's own comes last.
        if (const qsizetype at = name.lastIndexOf(uid); !isApplication && at >= 0 && name.endsWith(u')'))
            name = name.first(at);
        name = text::trimmed(name);
        if (name.isEmpty())
            return std::nullopt;
        return Holder{name.toString(), isApplication};
    }
    return std::nullopt;
}

/// The program a holder's name stands for: an application ID's last part ("org.gnome.Totem"
/// gives Totem), or a name of one word; nothing for a description such as "Video Player".
std::optional<QString> programOf(const QString &holder)
{
    if (holder.contains(u' '))
        return std::nullopt;
    return holder.sliced(holder.lastIndexOf(u'.') + 1);
}

} // namespace

AssertionRowText AssertionRowText::make(const Assertion &assertion, const ResolvedNames &names)
{
    const Profile &profile = Profile::current();
    const ProcessCatalog &catalog = profile.catalog();
    const std::optional<ProcessInfo> own = catalog.info(assertion.processName);
    AssertionRowText row;
    row.primaryText = own ? own->headline : fallbackReason(assertion);
    row.processSuffix = u" (pid %1)—"_s.arg(assertion.pid) + profile.describe(assertion.kind);
    row.createdForPID = assertion.createdForPID();
    row.ownCallToAction = own ? own->callToAction : std::nullopt;
    row.revealPID = row.createdForPID.value_or(assertion.pid);

    std::optional<ProcessInfo> createdFor;
    if (row.createdForPID) {
        const auto name = names.constFind(*row.createdForPID);
        if (name == names.cend()) {
            row.createdForLine = u"Created for pid %1"_s.arg(*row.createdForPID);
        } else {
            // Concatenated, not arg()-chained: a process name may itself contain "%2".
            row.createdForLine =
                u"Created for "_s + *name + u" (pid "_s + QString::number(*row.createdForPID) + u')';
            createdFor = catalog.info(*name);
        }
    }

    const Words::Holders &holders = profile.words().holders;
    if (holders.quote.isEmpty()) {
        // The Mac's rows: the created-for process's entry, else the own.
        row.title = createdFor ? createdFor->headline : row.primaryText;
        const std::optional<ProcessInfo> &explaining = createdFor ? createdFor : own;
        if (explaining && explaining->explanation != row.primaryText)
            row.explanation = explaining->explanation;
        row.callToAction =
            createdFor && createdFor->callToAction ? createdFor->callToAction : row.ownCallToAction;
        return row;
    }

    // Linux: the lock says who took it and why, in words written for people.
    const std::optional<Holder> holder = holderOf(assertion);
    if (holder)
        row.holder = holder->name;
    const bool proxy = own && own->proxy;
    // A proxy names the application it holds for only by the name the application gave.
    if (proxy && !createdFor && holder) {
        if (const std::optional<QString> program = programOf(holder->name))
            createdFor = catalog.info(*program);
    }
    const QString reason = text::trimmed(assertion.namedReason.value_or(QString())).toString();
    const bool heldForAnother = row.createdForPID || (holder && holder->isApplication);
    if (createdFor)
        row.title = createdFor->headline;
    else if (proxy && heldForAnother && !reason.isEmpty() && Assertion::looksLikeFriendlyReason(reason))
        row.title = reason;
    else
        row.title = row.primaryText;

    // A proxy's own explanation says how the lock came about; the program it acts for says what
    // to do.
    const std::optional<ProcessInfo> &explaining = proxy ? own : createdFor ? createdFor : own;
    if (explaining && explaining->explanation != row.title)
        row.explanation = explaining->explanation;
    row.callToAction =
        createdFor && createdFor->callToAction ? createdFor->callToAction : row.ownCallToAction;
    if (!explaining) {
        // A holder nobody describes is still explained by what its kind of lock does.
        const auto kind = holders.kindTexts.constFind(assertion.kind.typeWord());
        if (kind != holders.kindTexts.cend()) {
            row.explanation = kind->explanation;
            row.callToAction = row.ownCallToAction = kind->callToAction;
        }
    }

    // The holder's own words, unless the title says them already.
    const auto said = [&row](const QString &words) { return row.title.contains(words, Qt::CaseInsensitive); };
    std::optional<QString> who;
    if (holder && holder->name.compare(assertion.processName, Qt::CaseInsensitive) != 0)
        who = holder->name;
    if ((who && !said(*who)) || (!reason.isEmpty() && !said(reason))) {
        if (!reason.isEmpty())
            row.quote = who ? holders.quote.arg(reason, *who) : holders.reasonOnly.arg(reason);
        else
            row.quote = holders.holderOnly.arg(*who);
    }
    return row;
}

QString AssertionRowText::fallbackReason(const Assertion &assertion)
{
    std::optional<QString> candidate;
    if (assertion.extras) {
        static constexpr QStringView marker = u"Localized=";
        for (QStringView line : QStringView(*assertion.extras).tokenize(u'\n')) {
            const qsizetype at = line.indexOf(marker);
            if (at < 0)
                continue;
            // Only the first line with the marker counts, even when its value is blank.
            const QStringView value = text::trimmed(line.sliced(at + marker.size()));
            if (!value.isEmpty())
                candidate = value.toString();
            break;
        }
    }
    if (!candidate && assertion.namedReason && !assertion.namedReason->isEmpty())
        candidate = assertion.namedReason;
    if (candidate && Assertion::looksLikeFriendlyReason(*candidate))
        return *candidate;
    return Profile::current().describe(assertion.kind);
}

bool AssertionRowText::heldKnown(const QString &timeHeld)
{
    const QString &unknown = Profile::current().words().holders.unknownHeld;
    return unknown.isEmpty() || timeHeld != unknown;
}

QString AssertionRowText::heldText(const QString &timeHeld)
{
    return heldKnown(timeHeld) ? u"Held "_s + prettyDuration(timeHeld) : QString();
}

QString AssertionRowText::prettyDuration(const QString &timeHeld)
{
    QList<qint64> parts;
    for (QStringView piece : QStringView(timeHeld).tokenize(u':', Qt::SkipEmptyParts)) {
        if (const auto number = text::toInt64(piece))
            parts.append(*number);
    }
    if (parts.size() != 3)
        return timeHeld;
    const qint64 h = parts[0], m = parts[1], s = parts[2];
    if (h >= 1)
        return u"%1h %2m"_s.arg(h).arg(m);
    if (m < 1)
        return u"%1s"_s.arg(s);
    return u"%1m %2s"_s.arg(m).arg(s);
}

} // namespace lullwick
