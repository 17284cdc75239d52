#include "sleep/LastSuspends.h"

#include "model/TextRules.h"
#include "platform/ChildProcess.h"
#include "platform/DateFormat.h"
#include "platform/JournalJson.h"
#include "profile/Profile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

constexpr qsizetype maxLineBytes = 64 * 1024; // a real entry of these fields is far shorter
constexpr qsizetype maxAttempts = 5;          // the recent attempts; older ones are history
constexpr qsizetype maxItems = 64;            // tasks, devices, sources kept per cause
constexpr qsizetype maxListed = 6;            // lines a finding lists
constexpr double quickWakeSeconds = 60;
constexpr int nameLength = 64;

// Where an attempt has got to: logind asked, systemd-sleep went to sleep, the kernel suspended.
enum Layer { request = 0, sleeper = 1, kernel = 2 };

struct Attempt {
    int boot = 0;
    qsizetype firstEvent = 0;
    int opened = -1; ///< the highest layer opened
    bool sleepOpened = false, sleepClosed = false, kernelOpened = false, kernelClosed = false;
    bool hibernate = false, failed = false, returned = false, reachedSleep = false;
    bool namedDevice = false, wakeup = false;
    qint64 sleptAt = -1, kernelSleptAt = -1, wokeAt = -1, kernelWokeAt = -1; ///< µs since the epoch
    qint64 beganAt = -1, lastSeenAt = -1;
    double suspendedFor = -1;

    [[nodiscard]] bool closed() const { return sleepOpened ? sleepClosed : kernelClosed; }
    [[nodiscard]] bool suspend() const { return (sleepOpened || kernelOpened) && !hibernate; }
    [[nodiscard]] bool wentWell() const
    {
        return suspend() && !failed && (returned || (kernelClosed && !sleepOpened));
    }
    [[nodiscard]] double seconds() const
    {
        if (suspendedFor >= 0)
            return suspendedFor;
        const qint64 from = sleptAt >= 0 ? sleptAt : kernelSleptAt;
        const qint64 to = returned && wokeAt >= 0 ? wokeAt : kernelWokeAt;
        return from >= 0 && to >= from ? double(to - from) / 1e6 : -1;
    }
};

struct Task {
    QString name;
    qint64 pid = 0;
    bool waiting = false; ///< uninterruptible sleep: stuck on a file or device
};

struct Device {
    QString device, driver, step, error;
};

// Every cause seen, each with the attempt it was seen in so that old ones can be dropped.
template <typename T> struct Seen {
    qsizetype attempt; ///< -1: before any attempt of its boot
    int boot;
    qsizetype event; ///< its place among the entries that meant something
    T what;
};

struct Causes {
    QList<Seen<Task>> tasks;
    QList<Seen<double>> freezerSeconds;
    QList<Seen<QString>> userSlice;
    QList<Seen<Device>> devices;
    QList<Seen<Device>> nvidiaDevices;
    QList<Seen<bool>> devicesUnnamed;
    QList<Seen<bool>> nvidiaHandshake;
    QList<Seen<QPair<QString, QString>>> nvidiaUnits; ///< unit, what went wrong (by rank below)
    QList<Seen<QString>> wakeupSources;
    QList<Seen<bool>> wakeupAborts;
    QList<Seen<QString>> masked;
    QList<Seen<bool>> lockdown;
};

struct Entry {
    QString message, unit;
    QByteArray boot, cursor;
    qint64 realtime = -1;
    enum From { other, kernelLog, sleepTool, logind, root } from = other;
};

// The kernel's task line after a freezer failure, new ("task:NAME state:D stack:0 pid:12 …") and
// old ("NAME            D    0  1301   1273 0x00000004"): the name is padded or cut to 15 characters.
std::optional<Task> taskLine(const QString &m)
{
    // A name may hold any character but NUL, line breaks too.
    static const QRegularExpression modern(u"task:(.{1,15}?) +state:([A-Za-z])\\b(?:.*? pid: *(\\d+))?"_s,
                                           QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression old(
        u"^(.{15}) ([A-Za-z])(?:  running task    | [0-9a-f]{8,16} )? *\\d+ +(\\d+) +\\d+ 0x[0-9a-f]+"_s,
        QRegularExpression::DotMatchesEverythingOption);
    QRegularExpressionMatch match = modern.match(m);
    if (!match.hasMatch())
        match = old.match(m);
    if (!match.hasMatch())
        return std::nullopt;
    Task task{text::singleLine(match.capturedView(1), 15), text::toInt64(match.capturedView(3)).value_or(0),
              match.capturedView(2) == u"D"};
    if (task.name.isEmpty())
        return std::nullopt;
    return task;
}

// A device whose driver refused to suspend, in the wordings of kernels old and new.
std::optional<Device> deviceFailure(const QString &m)
{
    // 4.x: "PM: Device usb2 failed to suspend async: error -16"
    static const QRegularExpression oldDevice(u"PM: Device (\\S+) failed to ([a-z ]+?): error (-?\\d+)"_s);
    // 5.x and later, through dev_err: "usb usb2: PM: failed to suspend async: error -16"
    static const QRegularExpression devErr(u"^(\\S+) (\\S+): PM: failed to ([a-z ]+?): error (-?\\d+)"_s);
    // A callback's error: "PM: dpm_run_callback(): usb_dev_suspend+0x0/0x20 returns -16", or
    // "xhci_hcd 0000:00:14.0: PM: pci_pm_suspend(): hcd_pci_suspend [usbcore] returns -16".
    static const QRegularExpression callback(u"^(?:(\\S+) (\\S+): )?(?:PM: )?(\\w+)\\(\\): "
                                             u"(\\w+)(?:\\+0x[0-9a-f]+/0x[0-9a-f]+)?(?: \\[(\\w+)\\])? "
                                             u"returns (-?\\d+)"_s);
    if (const QRegularExpressionMatch match = oldDevice.match(m); match.hasMatch())
        return Device{match.captured(1), {}, match.captured(2), match.captured(3)};
    if (const QRegularExpressionMatch match = devErr.match(m); match.hasMatch())
        return Device{match.captured(2), match.captured(1), match.captured(3), match.captured(4)};
    if (const QRegularExpressionMatch match = callback.match(m); match.hasMatch()) {
        const QString module = match.captured(5);
        return Device{match.captured(2), module.isEmpty() ? match.captured(1) : module, match.captured(4),
                      match.captured(6)};
    }
    return std::nullopt;
}

// Vendor kernels put the CPU and the printing task before the text: " (4)[5758:kworker/u16:4]PM: …".
QString withoutVendorPrefix(const QString &m)
{
    static const QRegularExpression prefix(u"^\\s*\\(\\d+\\)\\[\\d+:[^\\]]{0,64}\\]"_s);
    const QRegularExpressionMatch match = prefix.match(m);
    return match.hasMatch() ? m.mid(match.capturedLength()) : m;
}

Entry entryFrom(const QJsonObject &object)
{
    Entry entry;
    entry.message = JournalJson::text(object.value("MESSAGE"_L1));
    entry.unit = JournalJson::text(object.value("UNIT"_L1));
    entry.boot = JournalJson::text(object.value("_BOOT_ID"_L1)).toLatin1();
    entry.realtime = text::toInt64(JournalJson::text(object.value("__REALTIME_TIMESTAMP"_L1))).value_or(-1);
    entry.cursor = JournalJson::text(object.value("__CURSOR"_L1)).left(256).toLatin1();
    // Only fields the journal sets itself say who wrote an entry: anyone may call himself
    // "systemd-logind" in SYSLOG_IDENTIFIER.
    const QString transport = JournalJson::text(object.value("_TRANSPORT"_L1));
    const QString comm = JournalJson::text(object.value("_COMM"_L1));
    const bool byRoot = JournalJson::text(object.value("_UID"_L1)) == u"0";
    if (transport == u"kernel")
        entry.from = Entry::kernelLog;
    else if (byRoot && comm == u"systemd-sleep")
        entry.from = Entry::sleepTool;
    else if (byRoot && comm == u"systemd-logind")
        entry.from = Entry::logind;
    else if (byRoot)
        entry.from = Entry::root;
    return entry;
}

bool isNvidiaUnit(const QString &unit)
{
    return unit.startsWith(u"nvidia-") && unit.endsWith(u".service");
}

// What went wrong with a unit, from the most telling of its messages.
std::optional<QPair<int, QString>> unitTrouble(const QString &m)
{
    static const QRegularExpression executing(u"^Failed to execute (.+)"_s);
    static const QRegularExpression status(u"^Main process exited, code=\\w+, status=(\\S+)"_s);
    static const QRegularExpression result(u"^Failed with result '([^']{1,64})'"_s);
    if (const QRegularExpressionMatch match = executing.match(m); match.hasMatch())
        return qMakePair(3, match.captured(0));
    if (const QRegularExpressionMatch match = status.match(m); match.hasMatch())
        return qMakePair(2, u"status="_s + match.captured(1));
    if (const QRegularExpressionMatch match = result.match(m); match.hasMatch())
        return qMakePair(1, match.captured(0));
    return std::nullopt;
}

class Reader {
public:
    explicit Reader(const LastSuspends::Context &context) : m_context(context) {}

    void add(const Entry &entry)
    {
        if (entry.from == Entry::other || entry.boot.isEmpty())
            return;
        int boot = int(m_boots.indexOf(entry.boot));
        if (boot < 0) {
            if (m_boots.size() >= 64)
                return;
            m_boots.append(entry.boot);
            boot = int(m_boots.size() - 1);
        }
        if (boot != m_boot)
            m_freezerTasks = 0;
        m_boot = boot;
        if (Attempt *attempt = latest(); attempt && entry.realtime >= 0)
            attempt->lastSeenAt = entry.realtime;
        const QString m = entry.from == Entry::kernelLog ? withoutVendorPrefix(entry.message) : entry.message;
        switch (entry.from) {
        case Entry::kernelLog:
            fromKernel(m, entry.realtime);
            break;
        case Entry::sleepTool:
            fromSleep(m, entry.realtime);
            break;
        case Entry::logind:
            fromLogind(m, entry.realtime);
            break;
        case Entry::root:
            fromUnit(m, entry.unit);
            break;
        case Entry::other:
            break;
        }
    }

    QList<Finding> findings() const;
    /// When the latest recent attempt that failed ran, give or take a little: the kernel's
    /// account of it is worth reading whole.
    std::optional<QPair<qint64, qint64>> lastFailure() const;

private:
    struct Recent {
        int current = -1, previous = -1;
        QList<qsizetype> attempts;
        [[nodiscard]] bool isRecent(int boot) const
        {
            return boot >= 0 && (boot == current || boot == previous);
        }
    };
    [[nodiscard]] Recent recent() const;

    Attempt *latest()
    {
        return !m_attempts.isEmpty() && m_attempts.last().boot == m_boot ? &m_attempts.last() : nullptr;
    }
    Attempt &open(int layer, qint64 at)
    {
        Attempt *last = latest();
        if (!last || last->opened >= layer || last->closed()) {
            m_freezerTasks = 0;
            m_attempts.append(Attempt{m_boot, ++m_events});
            last = &m_attempts.last();
            last->beganAt = last->lastSeenAt = at;
        }
        last->opened = qMax(last->opened, layer);
        if (layer == sleeper) {
            last->sleepOpened = true;
            last->sleptAt = at;
        } else if (layer == kernel) {
            last->kernelOpened = true;
            last->kernelSleptAt = at;
        }
        return *last;
    }
    qsizetype attemptIndex() { return latest() ? m_attempts.size() - 1 : -1; }
    template <typename T> void note(QList<Seen<T>> &list, T what)
    {
        ++m_events;
        if (list.size() < maxItems)
            list.append({attemptIndex(), m_boot, m_events, std::move(what)});
    }

    void fromKernel(const QString &m, qint64 at);
    void fromSleep(const QString &m, qint64 at);
    void fromLogind(const QString &m, qint64 at);
    void fromUnit(const QString &m, const QString &unit);

    const LastSuspends::Context &m_context;
    QList<QByteArray> m_boots; ///< in the order first seen
    int m_boot = 0;
    qsizetype m_events = 0;
    int m_freezerTasks = 0; ///< task lines still expected after a freezer failure
    QList<Attempt> m_attempts;
    Causes m_causes;
};

void Reader::fromKernel(const QString &m, qint64 at)
{
    static const QRegularExpression freezer(
        u"^Freezing (?:of tasks|user space processes|remaining freezable tasks) (failed|aborted) after "
        u"(\\d{1,6}(?:\\.\\d+)?) seconds(?: \\((\\d+) tasks refusing)?"_s);
    static const QRegularExpression wakeSource(
        u"(?:^|PM: )(?:last )?active wakeup source: (.+)|pm_system_irq_wakeup: \\d+ triggered (.+)"_s);
    static const QRegularExpression suspendedFor(
        u"^(?:Timekeeping s|S)uspended for (\\d{1,9}(?:\\.\\d+)?) seconds"_s);
    static const QRegularExpression reached(
        u"^(?:ACPI: (?:PM: )?(?:Preparing to enter|Waking up from) system sleep state|ACPI: (?:PM: "
        u")?Low-level "
        u"resume complete|PM: (?:suspend-to-idle|resume from suspend-to-idle|Entering mem sleep|resume "
        u"devices took))"_s);

    Attempt *attempt = latest();
    if (m.startsWith(u"PM: suspend entry")) {
        open(kernel, at);
        return;
    }
    if (m.startsWith(u"PM: hibernation entry")) {
        open(kernel, at).hibernate = true;
        return;
    }
    if (m.startsWith(u"PM: Syncing filesystems") || m.startsWith(u"Filesystems sync") ||
        m.startsWith(u"PM: Preparing system for sleep")) {
        if (!attempt || attempt->closed())
            open(kernel, at);
        return;
    }
    if (m.startsWith(u"PM: suspend exit") || m.startsWith(u"PM: hibernation exit")) {
        if (attempt) {
            attempt->kernelClosed = true;
            attempt->kernelWokeAt = at;
        }
        m_freezerTasks = 0;
        return;
    }
    if (m.startsWith(u"Lockdown: ") && m.contains(u"hibernation is restricted")) {
        note(m_causes.lockdown, true);
        return;
    }
    if (const QRegularExpressionMatch match = freezer.match(m); match.hasMatch()) {
        if (attempt)
            attempt->failed = true;
        if (match.capturedView(1) == u"aborted") {
            if (attempt)
                attempt->wakeup = true;
            note(m_causes.wakeupAborts, true);
            return;
        }
        note(m_causes.freezerSeconds, match.captured(2).toDouble());
        m_freezerTasks =
            int(qBound(qint64(1), text::toInt64(match.capturedView(3)).value_or(maxItems), qint64(maxItems)));
        return;
    }
    if (m_freezerTasks > 0) {
        if (std::optional<Task> task = taskLine(m)) {
            --m_freezerTasks;
            note(m_causes.tasks, std::move(*task));
            return;
        }
    }
    if (m.startsWith(u"PM: Wakeup pending, aborting suspend") || m.startsWith(u"PM: Wakeup event detected")) {
        if (attempt) {
            attempt->failed = true;
            attempt->wakeup = true;
        }
        note(m_causes.wakeupAborts, true);
        return;
    }
    if (const QRegularExpressionMatch match = wakeSource.match(m); match.hasMatch()) {
        // The source is named after every suspend, not only an aborted one: only an abort counts.
        if (attempt && attempt->wakeup)
            note(m_causes.wakeupSources,
                 text::singleLine(match.hasCaptured(1) ? match.capturedView(1) : match.capturedView(2),
                                  nameLength));
        return;
    }
    if (m.contains(u"NVRM: ") && m.contains(u"PreserveVideoMemoryAllocations") &&
        m.contains(u"without driver procfs suspend interface")) {
        if (attempt)
            attempt->failed = true;
        note(m_causes.nvidiaHandshake, true);
        return;
    }
    if (std::optional<Device> device = deviceFailure(m)) {
        if (attempt) {
            attempt->failed = true;
            attempt->namedDevice = true;
        }
        for (QString *field : {&device->device, &device->driver, &device->step, &device->error})
            *field = text::singleLine(*field, nameLength);
        const bool nvidia = device->driver == u"nvidia" || device->step.startsWith(u"nv_");
        note(nvidia ? m_causes.nvidiaDevices : m_causes.devices, std::move(*device));
        return;
    }
    if (m.startsWith(u"PM: Some devices failed to suspend") ||
        m.startsWith(u"PM: late suspend of devices failed") ||
        m.startsWith(u"PM: noirq suspend of devices failed")) {
        if (attempt)
            attempt->failed = true;
        // The same words follow an early wakeup; only alone do they say a device refused.
        if (!attempt || (!attempt->namedDevice && !attempt->wakeup))
            note(m_causes.devicesUnnamed, true);
        return;
    }
    if (const QRegularExpressionMatch match = suspendedFor.match(m); match.hasMatch()) {
        if (attempt) {
            attempt->suspendedFor = match.captured(1).toDouble();
            attempt->reachedSleep = true;
        }
        return;
    }
    if (attempt && reached.match(m).hasMatch())
        attempt->reachedSleep = true;
}

void Reader::fromSleep(const QString &m, qint64 at)
{
    static const QRegularExpression entering(
        u"^(?:Entering sleep state|Performing sleep operation) '([a-z-]+)'"_s);
    static const QRegularExpression freezeFailed(u"^Failed to freeze unit 'user\\.slice'(?:: (.*))?"_s);
    if (const QRegularExpressionMatch match = entering.match(m); match.hasMatch()) {
        open(sleeper, at).hibernate = match.capturedView(1) == u"hibernate";
        return;
    }
    if (m.startsWith(u"Suspending system...") || m.startsWith(u"Suspending system…")) {
        open(sleeper, at);
        return;
    }
    if (m.startsWith(u"Hibernating system")) {
        open(sleeper, at).hibernate = true;
        return;
    }
    Attempt *attempt = latest();
    if (m.startsWith(u"System returned from sleep") || m.startsWith(u"System resumed.")) {
        if (attempt) {
            attempt->sleepClosed = attempt->returned = true;
            attempt->wokeAt = at;
        }
        return;
    }
    if (m.startsWith(u"Failed to put system to sleep") || m.startsWith(u"Failed to suspend system")) {
        if (attempt)
            attempt->sleepClosed = attempt->failed = true;
        return;
    }
    if (const QRegularExpressionMatch match = freezeFailed.match(m); match.hasMatch()) {
        if (attempt)
            attempt->failed = true;
        note(m_causes.userSlice, text::singleLine(match.capturedView(0), 200));
    }
}

void Reader::fromLogind(const QString &m, qint64 at)
{
    static const QRegularExpression masked(
        u"^Unit ([A-Za-z0-9_.@-]{1,64}\\.target) is masked, refusing operation"_s);
    if (m.startsWith(u"The system will suspend now!") || m == u"Suspending..." || m == u"Suspending…") {
        open(request, at);
        return;
    }
    if (const QRegularExpressionMatch match = masked.match(m); match.hasMatch()) {
        if (Attempt *attempt = latest())
            attempt->failed = true;
        note(m_causes.masked, match.captured(1));
    }
}

void Reader::fromUnit(const QString &m, const QString &unit)
{
    if (unit == u"user.slice" && m.startsWith(u"Failed to freeze unit 'user.slice'")) {
        if (Attempt *attempt = latest())
            attempt->failed = true;
        note(m_causes.userSlice, text::singleLine(m, 200));
        return;
    }
    if (!isNvidiaUnit(unit))
        return;
    // systemd starts a unit's messages with the unit's name.
    QString message = m;
    if (message.startsWith(unit + u": "_s))
        message.remove(0, unit.size() + 2);
    if (const std::optional<QPair<int, QString>> trouble = unitTrouble(message)) {
        if (Attempt *attempt = latest())
            attempt->failed = true;
        note(m_causes.nvidiaUnits,
             qMakePair(text::singleLine(unit, nameLength),
                       QString::number(trouble->first) + text::singleLine(trouble->second, 200)));
    }
}

QString namesList(const QStringList &names)
{
    const Profile::LastSuspends &w = Profile::current().lastSuspends();
    if (names.size() < 2)
        return names.value(0);
    return w.namesAnd.arg(names.first(names.size() - 1).join(u", "_s), names.last());
}

QStringList capped(QStringList lines)
{
    if (lines.size() > maxListed) {
        const qsizetype more = lines.size() - maxListed;
        lines.resize(maxListed);
        lines.append(Profile::current().lastSuspends().moreLine.arg(more));
    }
    return lines;
}

QString duration(double seconds)
{
    const Profile::LastSuspends &w = Profile::current().lastSuspends();
    const qint64 whole = qint64(std::llround(seconds));
    if (whole < 60)
        return w.seconds.arg(whole);
    if (whole < 3600)
        return w.minutes.arg(whole / 60);
    if (whole % 3600 < 60)
        return w.hours.arg(whole / 3600);
    return w.hoursMinutes.arg(whole / 3600).arg(whole % 3600 / 60);
}

QString dateOf(qint64 microseconds)
{
    return DateFormat::completeDateTime(QDateTime::fromMSecsSinceEpoch(microseconds / 1000, Qt::UTC));
}

Reader::Recent Reader::recent() const
{
    // Only this boot and the one before it; of those, only the last few attempts.
    Recent r;
    r.current = int(m_boots.indexOf(m_context.currentBoot));
    for (int boot = 0; boot < m_boots.size(); ++boot) {
        if (boot != r.current && (r.current < 0 || boot < r.current))
            r.previous = boot;
    }
    for (qsizetype i = 0; i < m_attempts.size(); ++i) {
        if (r.isRecent(m_attempts[i].boot))
            r.attempts.append(i);
    }
    if (r.attempts.size() > maxAttempts)
        r.attempts = r.attempts.last(maxAttempts);
    return r;
}

std::optional<QPair<qint64, qint64>> Reader::lastFailure() const
{
    const QList<qsizetype> attempts = recent().attempts;
    for (auto it = attempts.crbegin(); it != attempts.crend(); ++it) {
        const Attempt &a = m_attempts[*it];
        if (a.failed && a.beganAt >= 0)
            return qMakePair(a.beganAt - 5'000'000, qMax(a.lastSeenAt, a.beganAt) + 5'000'000);
    }
    return std::nullopt;
}

QList<Finding> Reader::findings() const
{
    const Profile::LastSuspends &w = Profile::current().lastSuspends();
    const Recent r = recent();
    const int previous = r.previous;
    const auto recentBoot = [&](int boot) { return r.isRecent(boot); };
    const QList<qsizetype> &recent = r.attempts;
    const auto counts = [&](qsizetype attempt, int boot, qsizetype event) {
        if (!recentBoot(boot))
            return false;
        if (attempt >= 0)
            return recent.contains(attempt);
        // A cause seen outside any attempt counts unless it is older than the recent attempts.
        return recent.isEmpty() || event >= m_attempts[recent.constFirst()].firstEvent;
    };
    const auto kept = [&](const auto &list) {
        using T = std::decay_t<decltype(list.first().what)>;
        QList<T> out;
        for (const auto &seen : list) {
            if (counts(seen.attempt, seen.boot, seen.event))
                out.append(seen.what);
        }
        return out;
    };

    QList<Finding> found;
    const auto add = [&](FindingSeverity severity, const QString &title, const QString &detail,
                         const QString &advice) {
        found.append(Finding::make(severity, w.source, title, detail, advice));
    };
    const ProcessCatalog &catalog = Profile::current().catalog();

    // A process that would not be frozen.
    const QList<Task> tasks = kept(m_causes.tasks);
    const QList<double> waited = kept(m_causes.freezerSeconds);
    const QList<QString> userSlice = kept(m_causes.userSlice);
    if (!waited.isEmpty() || !userSlice.isEmpty()) {
        QStringList names, lines;
        for (const Task &task : tasks) {
            if (names.contains(task.name))
                continue;
            names.append(task.name);
            QString line =
                w.taskLine.arg(task.name).arg(task.pid) + (task.waiting ? w.taskWaiting : QString());
            if (task.name.size() == catalog.truncatedNameLength()) {
                if (const std::optional<ProcessInfo> info = catalog.info(task.name))
                    line += u"\n"_s + w.cutName.arg(task.name, info->explanation);
            }
            lines.append(line);
        }
        QString detail =
            w.freezerDetail.arg(waited.isEmpty() ? 20.0 : *std::max_element(waited.cbegin(), waited.cend()));
        if (!lines.isEmpty())
            detail += u"\n\n"_s + capped(lines).join(u'\n');
        if (!userSlice.isEmpty())
            detail += u"\n\n"_s + w.freezerUserSlice.arg(userSlice.constFirst());
        add(FindingSeverity::likely,
            names.isEmpty() ? w.freezerTitleUnnamed
                            : w.freezerTitle.arg(namesList(names.first(qMin(names.size(), 3)))),
            detail, w.freezerAdvice);
    }

    // A device that refused.
    const QList<Device> devices = kept(m_causes.devices);
    if (!devices.isEmpty() || !kept(m_causes.devicesUnnamed).isEmpty()) {
        QStringList lines;
        for (const Device &d : devices) {
            const QString who = d.driver.isEmpty() ? d.device : d.device + u" ("_s + d.driver + u')';
            const QString line = w.deviceLine.arg(who, d.step, d.error);
            if (!lines.contains(line))
                lines.append(line);
        }
        QString title = w.deviceTitleUnnamed;
        if (!devices.isEmpty()) {
            const Device &d = devices.constFirst();
            title = d.driver.isEmpty() || d.device.isEmpty()
                        ? w.deviceTitleBare.arg(d.device.isEmpty() ? d.driver : d.device)
                        : w.deviceTitle.arg(d.device, d.driver);
        }
        add(FindingSeverity::likely, title,
            lines.isEmpty() ? w.deviceDetail : w.deviceDetail + u"\n\n"_s + capped(lines).join(u'\n'),
            w.deviceAdvice);
    }

    // NVIDIA's handshake or units.
    const QList<QPair<QString, QString>> units = kept(m_causes.nvidiaUnits);
    const QList<Device> nvidiaDevices = kept(m_causes.nvidiaDevices);
    const bool handshake = !kept(m_causes.nvidiaHandshake).isEmpty();
    if (handshake || !units.isEmpty() || !nvidiaDevices.isEmpty()) {
        QStringList unitNames;
        QList<QPair<int, QString>> worst; // per unit: the most telling trouble
        for (const auto &[unit, trouble] : units) {
            const int rank = trouble.left(1).toInt();
            const qsizetype at = unitNames.indexOf(unit);
            if (at < 0) {
                unitNames.append(unit);
                worst.append({rank, trouble.mid(1)});
            } else if (rank > worst[at].first) {
                worst[at] = {rank, trouble.mid(1)};
            }
        }
        QStringList lines;
        for (qsizetype i = 0; i < unitNames.size(); ++i)
            lines.append(w.unitLine.arg(unitNames[i], worst[i].second));
        for (const Device &d : nvidiaDevices)
            lines.append(w.deviceLine.arg(d.device + u" ("_s + d.driver + u')', d.step, d.error));
        QString detail = handshake || units.isEmpty() ? w.nvidiaHandshakeDetail : w.nvidiaUnitDetail;
        if (handshake && !units.isEmpty())
            detail += u"\n\n"_s + w.nvidiaUnitDetail;
        if (!lines.isEmpty())
            detail += u"\n\n"_s + capped(lines).join(u'\n');
        add(FindingSeverity::likely, w.nvidiaTitle, detail, w.nvidiaAdvice);
    }

    // A wakeup that called a suspend off.
    if (!kept(m_causes.wakeupAborts).isEmpty()) {
        const QList<QString> sources = kept(m_causes.wakeupSources);
        add(FindingSeverity::possible,
            sources.isEmpty() ? w.wakeupTitleUnnamed : w.wakeupTitle.arg(sources.constFirst()),
            w.wakeupDetail, w.wakeupAdvice);
    }

    // A sleep that ended at once, and how the last one went.
    const Attempt *lastSuspend = nullptr;
    const Attempt *quick = nullptr;
    int wentWell = 0;
    for (const qsizetype i : std::as_const(recent)) {
        const Attempt &a = m_attempts[i];
        if (a.opened < sleeper && !a.failed)
            continue; // logind asked, nothing followed in what was read
        lastSuspend = &a;
        if (!a.wentWell())
            continue;
        ++wentWell;
        if (const double s = a.seconds(); s >= 0 && s < quickWakeSeconds)
            quick = &a;
    }
    if (quick) {
        QString detail = w.quickWakeDetail;
        if (!m_context.wakeDevices.isEmpty()) {
            QStringList named;
            for (const QString &device : m_context.wakeDevices)
                named.append(text::singleLine(device, 120));
            detail += u"\n\n"_s + w.quickWakeDevices + u'\n' + capped(named).join(u'\n');
        }
        add(FindingSeverity::possible, w.quickWakeTitle.arg(qMax<qint64>(1, std::llround(quick->seconds()))),
            detail, w.quickWakeAdvice);
    }

    // A previous boot that ended inside a suspend.
    for (qsizetype i = m_attempts.size() - 1; i >= 0 && previous >= 0; --i) {
        const Attempt &a = m_attempts[i];
        if (a.boot != previous)
            continue;
        if (a.suspend() && !a.closed() && !a.failed && (a.sleptAt >= 0 || a.kernelSleptAt >= 0))
            add(FindingSeverity::possible,
                w.stoppedTitle.arg(dateOf(a.sleptAt >= 0 ? a.sleptAt : a.kernelSleptAt)), w.stoppedDetail,
                w.stoppedAdvice);
        break;
    }

    // A refusal over a mask that is gone now (one still there is the sleep check's to name).
    for (const QString &target : kept(m_causes.masked)) {
        if (m_context.maskedNow.contains(target))
            continue;
        add(FindingSeverity::possible, w.maskedTitle.arg(target), w.maskedDetail.arg(target), w.maskedAdvice);
        break;
    }

    if (!kept(m_causes.lockdown).isEmpty())
        add(FindingSeverity::info, w.lockdownTitle, w.lockdownDetail, w.lockdownAdvice);

    if (lastSuspend && lastSuspend != quick && lastSuspend->wentWell() && lastSuspend->seconds() >= 0) {
        const qint64 at = lastSuspend->sleptAt >= 0 ? lastSuspend->sleptAt : lastSuspend->kernelSleptAt;
        add(FindingSeverity::info, w.sleptTitle.arg(duration(lastSuspend->seconds()), dateOf(at)),
            w.sleptDetail.arg(wentWell), w.sleptAdvice);
    }
    return found;
}

// What journalctl is asked to keep of the entries that the field matches leave: what the reader
// understands, nothing more. Every branch starts with a fixed letter or two, which lets the
// pattern skip along a message quickly.
const QString pattern =
    QStringList{
        u"PM: |Freezing|task:|[DRS] +(?:[0-9a-f]{8,16} +)?[0-9]+ +[0-9]+ +[0-9]+ 0x"_s,
        u"wakeup source|ACPI: (?:Pr|Wa|Lo)|uspended for|PreserveVideoMemoryAllocations|hibernation is restricted"_s,
        u"sleep (?:state|operation)|Suspending|Hibernating|System re|will suspend now|is masked"_s,
        u"Failed (?:to (?:put|suspend|freeze|execute)|with result)|Main process exited"_s,
    }
        .join(u'|');

QStringList commonArguments()
{
    return {u"--output=json"_s,    u"--output-fields=MESSAGE,UNIT,_BOOT_ID,_TRANSPORT,_COMM,_UID"_s,
            u"--reverse"_s,        u"--lines=2000"_s,
            u"--no-pager"_s,       u"--case-sensitive=true"_s,
            u"--grep="_s + pattern};
}

// The entries of one or more journalctl outputs (each newest first), each once, oldest first.
// An entry's time orders it; one without a time keeps its place after the one before it.
QList<Entry> entriesOf(const QList<QByteArrayView> &outputs)
{
    QList<Entry> entries;
    QSet<QByteArray> cursors;
    for (const QByteArrayView output : outputs) {
        QList<QByteArrayView> lines;
        for (qsizetype start = 0; start < output.size();) {
            qsizetype end = output.indexOf('\n', start);
            if (end < 0)
                end = output.size();
            const QByteArrayView line = output.sliced(start, end - start);
            start = end + 1;
            if (!line.isEmpty() && line.size() <= maxLineBytes)
                lines.append(line);
        }
        qint64 previous = 0;
        for (auto it = lines.crbegin(); it != lines.crend(); ++it) {
            Entry entry = entryFrom(QJsonDocument::fromJson(it->toByteArray()).object());
            if (entry.from == Entry::other || (!entry.cursor.isEmpty() && cursors.contains(entry.cursor)))
                continue;
            cursors.insert(entry.cursor);
            if (entry.realtime < 0)
                entry.realtime = previous;
            previous = entry.realtime;
            entries.append(std::move(entry));
        }
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &a, const Entry &b) { return a.realtime < b.realtime; });
    return entries;
}

} // namespace

QStringList LastSuspends::journalctlArguments()
{
    // The field matches use the journal's indexes; the kernel's everyday messages, which may be
    // thousands a day, are left out but for its errors and notices.
    return QStringList{u"--since=-1d"_s} + commonArguments() +
           QStringList{u"_TRANSPORT=kernel"_s,
                       u"PRIORITY=0"_s,
                       u"PRIORITY=1"_s,
                       u"PRIORITY=2"_s,
                       u"PRIORITY=3"_s,
                       u"PRIORITY=4"_s,
                       u"PRIORITY=5"_s,
                       u"+"_s,
                       u"_COMM=systemd-sleep"_s,
                       u"_COMM=systemd-logind"_s,
                       u"_UID=0"_s,
                       u"+"_s,
                       u"UNIT=nvidia-suspend.service"_s,
                       u"UNIT=nvidia-resume.service"_s,
                       u"UNIT=nvidia-hibernate.service"_s,
                       u"UNIT=nvidia-suspend-then-hibernate.service"_s,
                       u"UNIT=user.slice"_s,
                       u"_UID=0"_s};
}

QStringList LastSuspends::kernelArguments(qint64 from, qint64 to)
{
    const auto at = [](qint64 microseconds) { return u"@"_s + QString::number(microseconds / 1'000'000); };
    return QStringList{u"--since="_s + at(from), u"--until="_s + at(to + 999'999)} + commonArguments() +
           QStringList{u"_TRANSPORT=kernel"_s};
}

LastSuspends::Reading LastSuspends::read(const QString &journalctlPath, const Context &context,
                                         const std::atomic<bool> &stop, QDeadlineTimer deadline)
{
    const ChildProcessResult run = ChildProcess::run(journalctlPath, journalctlArguments(), &stop, deadline);
    if (!run.started)
        return {};
    if (JournalJson::accessDenied(run.standardError))
        return {Access::denied, {}};
    if (run.exitStatus != 0)
        return {};
    // A failed attempt is told whole by the kernel's messages of those few seconds: which task
    // would not freeze, what woke it.
    Reader first(context);
    for (Entry &entry : entriesOf({run.standardOutput}))
        first.add(std::move(entry));
    const std::optional<QPair<qint64, qint64>> failure = first.lastFailure();
    if (!failure)
        return {Access::read, first.findings()};
    const ChildProcessResult kernel =
        ChildProcess::run(journalctlPath, kernelArguments(failure->first, failure->second), &stop, deadline);
    return {Access::read,
            fromJournal(run.standardOutput + (kernel.exitStatus == 0 ? kernel.standardOutput : QByteArray()),
                        context)};
}

QList<Finding> LastSuspends::fromJournal(QByteArrayView jsonLines, const Context &context)
{
    Reader reader(context);
    for (Entry &entry : entriesOf({jsonLines}))
        reader.add(std::move(entry));
    return reader.findings();
}

QByteArray LastSuspends::currentBoot()
{
    QFile file(u"/proc/sys/kernel/random/boot_id"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(64).trimmed().replace('-', QByteArray());
}

} // namespace lullwick
