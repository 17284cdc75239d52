#include "report/ReportMetrics.h"

#include "model/RestartFinding.h"
#include "model/TextRules.h"
#include "profile/Profile.h"
#include "report/ReportOptions.h"

#include <QSet>
#include <array>

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

/// A label value as the exposition format wants it: backslash, double quote and line feed escaped.
QString escaped(QStringView value)
{
    QString out;
    out.reserve(value.size());
    for (QChar c : value) {
        if (c == u'\\')
            out += u"\\\\"_s;
        else if (c == u'"')
            out += u"\\\""_s;
        else if (c == u'\n')
            out += u"\\n"_s;
        else
            out += c;
    }
    return out;
}

using Labels = QList<std::pair<QString, QString>>;

/// Collects the families in order; a family without samples is left out whole.
class Exposition {
public:
    void family(const char *name, const char *help)
    {
        m_name = QString::fromLatin1(name);
        m_header = u"# HELP "_s + m_name + u' ' + QString::fromLatin1(help) + u"\n# TYPE "_s + m_name +
                   u" gauge\n"_s;
    }
    void sample(const Labels &labels, qint64 value)
    {
        m_text += std::exchange(m_header, {}) + m_name;
        if (!labels.isEmpty()) {
            QStringList pairs;
            for (const auto &[label, text] : labels)
                pairs.append(label + u"=\""_s + escaped(text) + u'"');
            m_text += u'{' + pairs.join(u',') + u'}';
        }
        m_text += u' ' + QString::number(value) + u'\n';
    }
    [[nodiscard]] QByteArray bytes() const { return m_text.toUtf8(); }

private:
    QString m_name, m_header, m_text;
};

const std::array<QString, 3> severityWords = {word(FindingSeverity::likely), word(FindingSeverity::possible),
                                              word(FindingSeverity::info)};

/// Finding sources by their label value. Sources the table does not know count as "other", so
/// a new source never makes a label value of its own.
struct SourceLabel {
    QString source;
    QString label;
};

QList<SourceLabel> restartSources()
{
    if (Profile::current().kind() == Profile::System::macOS) {
        return {{u"Software update"_s, u"software_update"_s},
                {u"loginwindow log (last 10 min)"_s, u"loginwindow_log"_s},
                {stallReportSource(), u"stall_report"_s},
                {u"Running apps"_s, u"running_apps"_s}};
    }
    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
    return {{words.shutdownLocksSource, u"shutdown_locks"_s},
            {words.unsavedWorkSource, u"unsaved_work"_s},
            {words.softwareUpdatesSource, u"software_updates"_s},
            {words.lastShutdownSource, u"last_shutdown"_s},
            {u"Running apps"_s, u"running_apps"_s}};
}

/// The sleep check's sources; none on macOS, which has no sleep check.
QList<SourceLabel> sleepSources()
{
    if (Profile::current().kind() == Profile::System::macOS)
        return {};
    const Profile::Sleep &words = Profile::current().sleep();
    return {{words.targetsSource, u"sleep_targets"_s},
            {words.abilitySource, u"logind_ability"_s},
            {words.kernelSource, u"kernel"_s},
            {words.lidSource, u"lid_idle"_s},
            {words.desktopSource, u"desktop_suspend"_s},
            {words.wakeSource, u"wake_sources"_s},
            {Profile::current().lastSuspends().source, u"last_suspends"_s}};
}

void countFindings(Exposition &out, const QList<SourceLabel> &sources, const QList<Finding> &findings)
{
    QStringList labels;
    for (const SourceLabel &source : sources)
        labels.append(source.label);
    labels.append(u"other"_s);
    QHash<std::pair<QString, QString>, int> counts;
    for (const Finding &finding : findings) {
        const auto known = std::find_if(sources.cbegin(), sources.cend(),
                                        [&](const SourceLabel &s) { return s.source == finding.source; });
        ++counts[{word(finding.severity), known == sources.cend() ? u"other"_s : known->label}];
    }
    for (const QString &severity : severityWords) {
        for (const QString &source : labels)
            out.sample({{u"severity"_s, severity}, {u"source"_s, source}}, counts.value({severity, source}));
    }
}

/// What a lock holds off, as logind names it: the first that applies of sleep, idle, shutdown,
/// the power keys and the lid, logout; else other.
const std::array<QString, 6> lockWhats = {u"sleep"_s,       u"idle"_s,   u"shutdown"_s,
                                          u"handle-keys"_s, u"logout"_s, u"other"_s};
const std::array<QString, 2> lockModes = {u"block"_s, u"delay"_s};

/// The value of the first "`key`: value" line of the assertion's extras.
QStringView extrasValue(const Assertion &a, QStringView key)
{
    if (!a.extras)
        return {};
    for (QStringView line : QStringView(*a.extras).tokenize(u'\n')) {
        if (line.startsWith(key) && line.sliced(key.size()).startsWith(u':'))
            return text::trimmed(line.sliced(key.size() + 1));
    }
    return {};
}

std::pair<QString, QString> whatAndMode(const Assertion &a)
{
    // The Linux helper's type words (see the stand-in's TypeWords); a Mac assertion goes by what
    // it keeps off, and is held the way a blocking lock is.
    const QString type = a.kind.typeWord();
    const bool delay = type.startsWith(u"Delay"_s) || extrasValue(a, u"Mode") == u"delay";
    const QString mode = delay ? lockModes[1] : lockModes[0];
    if (type == u"PreventShutdown" || type == u"DelayShutdown")
        return {lockWhats[2], mode};
    if (type == u"HandlePowerKeys")
        return {lockWhats[3], mode};
    if (type == u"PreventLogout")
        return {lockWhats[4], mode};
    if (type == u"DelaySleep")
        return {lockWhats[0], mode};
    const SleepKindSet blocks = a.kind.blockedSleepKinds();
    if (blocks.contains(SleepKind::system))
        return {lockWhats[0], mode};
    if (blocks.contains(SleepKind::idleSystem) || blocks.contains(SleepKind::display))
        return {lockWhats[1], mode};
    return {lockWhats[5], mode};
}

/// The held time "h:mm:ss" in seconds; nothing for "unknown" or anything else.
std::optional<qint64> heldSeconds(const QString &timeHeld)
{
    const QList<QStringView> parts = QStringView(timeHeld).split(u':');
    if (parts.size() != 3)
        return std::nullopt;
    qint64 seconds = 0;
    for (QStringView part : parts) {
        const std::optional<qint64> n = text::toInt64(part);
        if (!n || *n < 0 || *n > 100'000'000)
            return std::nullopt;
        seconds = seconds * 60 + *n;
    }
    return seconds;
}

/// Who holds the assertion, as a person knows it: the process it was created for, when named,
/// else its own process. Never the reason, which is free text, nor a PID.
QString holderName(const Assertion &a, const ResolvedNames &names)
{
    const std::optional<qint64> createdFor = a.createdForPID();
    const QString name = createdFor && names.contains(*createdFor) ? names.value(*createdFor) : a.processName;
    QStringView holder = text::trimmed(name);
    if (holder.size() > ReportMetrics::maxHolderLength)
        holder = text::trimmed(holder.first(ReportMetrics::maxHolderLength));
    // Line feeds are the format's to escape; other control characters are shown, not sent.
    return text::escapedControls(holder, u"\n");
}

void readingFamilies(Exposition &out, const AssertionsSnapshot &snapshot, const ResolvedNames &names)
{
    out.family("lullwick_reading_timestamp_seconds",
               "When the sleep locks were read, in seconds since the epoch.");
    out.sample({}, snapshot.capturedAt.toSecsSinceEpoch());

    std::array<QList<Assertion>, 3> blockers;
    for (SleepKind kind : allSleepKinds)
        blockers[size_t(kind)] = snapshot.blockers(kind);
    const auto kindLabel = [](SleepKind kind) { return Labels{{u"kind"_s, ReportOptions::word(kind)}}; };

    out.family("lullwick_sleep_blocked", "Whether something keeps this kind of sleep off (1) or not (0).");
    for (SleepKind kind : allSleepKinds)
        out.sample(kindLabel(kind), blockers[size_t(kind)].isEmpty() ? 0 : 1);
    out.family("lullwick_sleep_blockers", "How many locks keep this kind of sleep off.");
    for (SleepKind kind : allSleepKinds)
        out.sample(kindLabel(kind), blockers[size_t(kind)].size());
    out.family("lullwick_sleep_blocked_since_timestamp_seconds",
               "When the longest-held lock that keeps this kind of sleep off was taken, in seconds since "
               "the epoch; absent when no blocking lock says how long it has been held.");
    for (SleepKind kind : allSleepKinds) {
        std::optional<qint64> longest;
        for (const Assertion &a : blockers[size_t(kind)]) {
            if (const std::optional<qint64> held = heldSeconds(a.timeHeld))
                longest = std::max(longest.value_or(0), *held);
        }
        if (longest)
            out.sample(kindLabel(kind), snapshot.capturedAt.toSecsSinceEpoch() - *longest);
    }

    QHash<std::pair<QString, QString>, int> locks;
    for (const Assertion &a : snapshot.assertions)
        ++locks[whatAndMode(a)];
    out.family("lullwick_locks", "Locks held, by what they hold off and their mode.");
    for (const QString &what : lockWhats) {
        for (const QString &mode : lockModes)
            out.sample({{u"what"_s, what}, {u"mode"_s, mode}}, locks.value({what, mode}));
    }

    out.family("lullwick_blocker_info", "The holders that keep each kind of sleep off, by process name; at "
                                        "most ten per kind, the others counted in lullwick_sleep_blockers.");
    for (SleepKind kind : allSleepKinds) {
        QStringList holders;
        for (const Assertion &a : blockers[size_t(kind)]) {
            const QString holder = holderName(a, names);
            if (!holders.contains(holder) && holders.size() < ReportMetrics::maxHoldersPerKind)
                holders.append(holder);
        }
        for (const QString &holder : holders)
            out.sample({{u"kind"_s, ReportOptions::word(kind)}, {u"holder"_s, holder}}, 1);
    }
}

} // namespace

QByteArray ReportMetrics::text(const Input &input)
{
    Exposition out;
    out.family("lullwick_up",
               "Whether the sleep locks could be read (1), or pmset or its helper failed (0).");
    out.sample({}, input.snapshot ? 1 : 0);
    out.family("lullwick_build_info", "The version of lullwick-report that wrote these metrics.");
    out.sample({{u"version"_s, input.version}}, 1);
    if (input.snapshot)
        readingFamilies(out, *input.snapshot, input.names);
    if (input.restart) {
        out.family("lullwick_restart_analysis_timestamp_seconds",
                   "When the restart analysis ran, in seconds since the epoch.");
        out.sample({}, input.restart->ranAt.toSecsSinceEpoch());
        out.family("lullwick_restart_findings",
                   "Findings of what may hold up a restart, by severity and by the source that found them.");
        countFindings(out, restartSources(), input.restart->findings);
    }
    if (input.sleepFindings) {
        out.family(
            "lullwick_sleep_findings",
            "Findings of why the computer may not sleep, by severity and by the source that found them.");
        countFindings(out, sleepSources(), *input.sleepFindings);
    }
    return out.bytes();
}

} // namespace lullwick
