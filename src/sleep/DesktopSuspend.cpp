#include "sleep/DesktopSuspend.h"

#include "model/TextRules.h"
#include "platform/ChildProcess.h"
#include "profile/Profile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QXmlStreamReader>

namespace lullwick {

namespace {

using Policy = DesktopSuspend::Policy;
using Settings = DesktopSuspend::Settings;

constexpr int gsettingsLimitMs = 2000;
constexpr qsizetype maxOutput = 64 * 1024;
constexpr qsizetype maxValue = 80;

// The schemas of the desktops that keep their power settings in gsettings.
const QString gnomePower = QStringLiteral("org.gnome.settings-daemon.plugins.power");
const QString cinnamonPower = QStringLiteral("org.cinnamon.settings-daemon.plugins.power");
const QString matePower = QStringLiteral("org.mate.power-manager");

bool among(const QStringList &desktops, std::initializer_list<const char16_t *> names)
{
    return std::any_of(desktops.cbegin(), desktops.cend(), [&](const QString &d) {
        return std::any_of(names.begin(), names.end(), [&](const char16_t *n) {
            return d.compare(QStringView(n), Qt::CaseInsensitive) == 0;
        });
    });
}

std::optional<qint64> number(const QHash<QString, QString> &values, const QString &key)
{
    const auto it = values.constFind(key);
    return it == values.cend() ? std::nullopt : text::toInt64(*it);
}

/// A timeout in seconds and an action word ("suspend", "nothing"…); no timeout read: nothing.
std::optional<Policy> policy(std::optional<qint64> seconds, const std::optional<QString> &action)
{
    if (!seconds || *seconds < 0)
        return std::nullopt;
    const QString what = action.value_or(QStringLiteral("suspend"));
    const bool sleeps =
        *seconds > 0 && (what == u"suspend" || what == u"hibernate" || what == u"hybrid-sleep");
    return Policy{sleeps, sleeps && what == u"hibernate", *seconds};
}

std::optional<QString> value(const QHash<QString, QString> &values, const QString &key)
{
    const auto it = values.constFind(key);
    return it == values.cend() ? std::nullopt : std::optional<QString>(*it);
}

std::optional<Settings> fromGSettings(const DesktopSuspend::Setup &setup, const QString &desktop,
                                      const QString &schema, const std::atomic<bool> &stop)
{
    const ChildProcessResult run =
        ChildProcess::run(setup.gsettingsPath, {QStringLiteral("list-recursively"), schema}, &stop,
                          QDeadlineTimer(gsettingsLimitMs));
    if (!run.started || run.exitStatus != 0)
        return std::nullopt;
    const QHash<QString, QString> v = DesktopSuspend::parseGSettings(run.standardOutput, schema);
    Settings s{desktop, {}, {}, {}, {}};
    if (schema == matePower) {
        // MATE's idle action is always a suspend; 0 seconds is never.
        s.pluggedIn = policy(number(v, QStringLiteral("sleep-computer-ac")),
                             value(v, QStringLiteral("action-sleep-type-ac")));
        s.onBattery = policy(number(v, QStringLiteral("sleep-computer-battery")),
                             value(v, QStringLiteral("action-sleep-type-battery")));
        s.lidPluggedIn = value(v, QStringLiteral("button-lid-ac"));
        s.lidOnBattery = value(v, QStringLiteral("button-lid-battery"));
    } else {
        s.pluggedIn = policy(number(v, QStringLiteral("sleep-inactive-ac-timeout")),
                             value(v, QStringLiteral("sleep-inactive-ac-type")));
        s.onBattery = policy(number(v, QStringLiteral("sleep-inactive-battery-timeout")),
                             value(v, QStringLiteral("sleep-inactive-battery-type")));
        if (schema == cinnamonPower) {
            s.lidPluggedIn = value(v, QStringLiteral("lid-close-ac-action"));
            s.lidOnBattery = value(v, QStringLiteral("lid-close-battery-action"));
        }
    }
    if (!s.pluggedIn && !s.onBattery && !s.lidPluggedIn && !s.lidOnBattery)
        return std::nullopt;
    return s;
}

std::optional<QByteArray> readCapped(const QString &path)
{
    return SystemFiles(QStringLiteral("/")).read(path);
}

std::optional<Settings> fromKde(const DesktopSuspend::Setup &setup)
{
    // Plasma 6 keeps its power settings in powerdevilrc, Plasma 5 in powermanagementprofilesrc.
    const QString six = setup.configDir + QStringLiteral("/powerdevilrc");
    const QString five = setup.configDir + QStringLiteral("/powermanagementprofilesrc");
    const bool plasma6 =
        setup.kdeSessionVersion == u"6" || (setup.kdeSessionVersion != u"5" && QFileInfo::exists(six));
    const std::optional<QByteArray> file = readCapped(plasma6 ? six : five);
    if (!file)
        return std::nullopt;
    const auto groups = DesktopSuspend::parseKConfig(*file);
    Settings s{QStringLiteral("KDE Plasma"), {}, {}, {}, {}};
    const auto profile = [&](const QString &name) -> std::optional<Policy> {
        if (plasma6) {
            // Only values changed from the defaults are written; without them there is no telling.
            const QHash<QString, QString> g =
                groups.value(u'[' + name + QStringLiteral("][SuspendAndShutdown]"));
            const std::optional<qint64> action = number(g, QStringLiteral("AutoSuspendAction"));
            if (!action)
                return std::nullopt;
            if (*action == 0)
                return Policy{};
            const std::optional<qint64> seconds = number(g, QStringLiteral("AutoSuspendIdleTimeoutSec"));
            if (!seconds || (*action != 1 && *action != 2))
                return std::nullopt;
            return policy(seconds, *action == 2 ? QStringLiteral("hibernate") : QStringLiteral("suspend"));
        }
        // Plasma 5 writes a whole profile; an action it leaves out is switched off.
        if (!std::any_of(groups.keyBegin(), groups.keyEnd(),
                         [&](const QString &g) { return g.startsWith(u'[' + name + u']'); }))
            return std::nullopt;
        const auto it = groups.constFind(u'[' + name + QStringLiteral("][SuspendSession]"));
        if (it == groups.cend())
            return Policy{};
        const std::optional<qint64> ms = number(*it, QStringLiteral("idleTime"));
        const qint64 type = number(*it, QStringLiteral("suspendType")).value_or(1);
        // 1: to memory, 2: to disk, 4: hybrid; the rest (shut down, lock…) is no sleep.
        return policy(ms ? std::optional<qint64>(*ms / 1000) : std::nullopt,
                      type == 1   ? QStringLiteral("suspend")
                      : type == 2 ? QStringLiteral("hibernate")
                      : type == 4 ? QStringLiteral("hybrid-sleep")
                                  : QStringLiteral("nothing"));
    };
    s.pluggedIn = profile(QStringLiteral("AC"));
    s.onBattery = profile(QStringLiteral("Battery"));
    if (!s.pluggedIn && !s.onBattery)
        return std::nullopt;
    return s;
}

std::optional<Settings> fromXfce(const DesktopSuspend::Setup &setup)
{
    const std::optional<QByteArray> file = readCapped(
        setup.configDir + QStringLiteral("/xfce4/xfconf/xfce-perchannel-xml/xfce4-power-manager.xml"));
    // A channel never written holds the defaults: never suspend on its own.
    const QHash<QString, QString> v = file ? DesktopSuspend::parseXfconf(*file) : QHash<QString, QString>();
    const auto profile = [&](const QString &on) {
        // Minutes; 14 and less is the settings' "Never". Mode 1 suspends, 2 hibernates.
        const qint64 minutes = number(v, QStringLiteral("inactivity-on-") + on).value_or(14);
        const qint64 mode = number(v, QStringLiteral("inactivity-sleep-mode-on-") + on).value_or(1);
        return policy(minutes <= 14 ? 0 : minutes * 60,
                      mode == 2 ? QStringLiteral("hibernate") : QStringLiteral("suspend"));
    };
    return Settings{
        QStringLiteral("Xfce"), profile(QStringLiteral("ac")), profile(QStringLiteral("battery")), {}, {}};
}

} // namespace

DesktopSuspend::Setup DesktopSuspend::Setup::ofSession()
{
    Setup setup;
    setup.configDir = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (!QDir::isAbsolutePath(setup.configDir))
        setup.configDir = QDir::homePath() + QStringLiteral("/.config");
    setup.desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    setup.kdeSessionVersion = qEnvironmentVariable("KDE_SESSION_VERSION");
    return setup;
}

std::optional<Settings> DesktopSuspend::read(const Setup &setup, const std::atomic<bool> &stop)
{
    const QStringList &d = setup.desktops;
    // Budgie and Cinnamon name GNOME too; their own names come first.
    if (among(d, {u"Budgie"}))
        return fromGSettings(setup, QStringLiteral("Budgie"), gnomePower, stop);
    if (among(d, {u"X-Cinnamon", u"Cinnamon"}))
        return fromGSettings(setup, QStringLiteral("Cinnamon"), cinnamonPower, stop);
    if (among(d, {u"MATE"}))
        return fromGSettings(setup, QStringLiteral("MATE"), matePower, stop);
    if (among(d, {u"KDE"}))
        return fromKde(setup);
    if (among(d, {u"XFCE"}))
        return fromXfce(setup);
    if (among(d, {u"GNOME", u"Unity", u"ubuntu", u"Pantheon"}))
        return fromGSettings(setup, QStringLiteral("GNOME"), gnomePower, stop);
    return std::nullopt;
}

QList<Finding> DesktopSuspend::findings(const Settings &settings, const SleepContext &context)
{
    const Profile::Sleep &words = Profile::current().sleep();
    const QString where = context.pluggedIn ? words.pluggedIn : words.onBattery;
    QList<Finding> found;
    if (const std::optional<Policy> &now = context.pluggedIn ? settings.pluggedIn : settings.onBattery) {
        if (!now->sleeps) {
            found.append(Finding::make(
                FindingSeverity::possible, words.desktopSource, words.neverSuspendsTitle.arg(where),
                words.neverSuspendsDetail.arg(settings.desktop, where), words.neverSuspendsAdvice));
        } else {
            const QString &title = now->hibernates ? words.hibernatesAfterTitle : words.suspendsAfterTitle;
            Finding finding =
                Finding::make(FindingSeverity::info, words.desktopSource,
                              title.arg(settings.desktop, SleepContext::duration(now->seconds), where),
                              words.suspendsAfterDetail.arg(settings.desktop), QString());
            finding.advice.reset();
            found.append(std::move(finding));
        }
    }
    const std::optional<QString> &lid = context.pluggedIn ? settings.lidPluggedIn : settings.lidOnBattery;
    if (context.hasLid && lid && (*lid == u"nothing" || *lid == u"blank"))
        found.append(Finding::make(FindingSeverity::possible, words.desktopSource,
                                   words.desktopLidTitle.arg(settings.desktop, where),
                                   words.desktopLidDetail.arg(settings.desktop, *lid),
                                   words.desktopLidAdvice));
    return found;
}

QHash<QString, QString> DesktopSuspend::parseGSettings(QByteArrayView output, const QString &schema)
{
    QHash<QString, QString> values;
    const QString text = QString::fromUtf8(output.first(qMin(output.size(), maxOutput)));
    for (QStringView line : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        // "SCHEMA KEY VALUE"; the value in GVariant text: 'suspend', uint32 1200, 0, true.
        if (!line.startsWith(schema) || line.size() <= schema.size() || line[schema.size()] != u' ')
            continue;
        line = line.sliced(schema.size() + 1);
        const qsizetype space = line.indexOf(u' ');
        if (space <= 0)
            continue;
        QStringView key = line.first(space);
        QStringView value = line.sliced(space + 1);
        for (QStringView type :
             {u"uint32 ", u"int32 ", u"uint64 ", u"int64 ", u"uint16 ", u"int16 ", u"byte "}) {
            if (value.startsWith(type)) {
                value = value.sliced(type.size());
                break;
            }
        }
        if (value.size() >= 2 && (value.front() == u'\'' || value.front() == u'"') &&
            value.back() == value.front())
            value = value.sliced(1, value.size() - 2);
        values.insert(text::singleLine(key, maxValue), text::singleLine(value, maxValue));
    }
    return values;
}

QHash<QString, QHash<QString, QString>> DesktopSuspend::parseKConfig(QByteArrayView bytes)
{
    QHash<QString, QHash<QString, QString>> groups;
    const QString text = QString::fromUtf8(bytes.first(qMin(bytes.size(), maxOutput)));
    QString group;
    for (QStringView line : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        line = text::trimmed(line);
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            group = line.toString();
            groups[group];
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0 || line.startsWith(u'#'))
            continue;
        // "Key[$i]" marks an immutable key; the name is what counts.
        QStringView key = text::trimmed(line.first(equals));
        if (const qsizetype bracket = key.indexOf(u'['); bracket > 0)
            key = key.first(bracket);
        groups[group].insert(key.toString(), text::singleLine(line.sliced(equals + 1), maxValue));
    }
    return groups;
}

QHash<QString, QString> DesktopSuspend::parseXfconf(QByteArrayView xml)
{
    QHash<QString, QString> values;
    QXmlStreamReader reader(xml.first(qMin(xml.size(), maxOutput)).toByteArray());
    QStringList path;
    while (!reader.atEnd() && !reader.hasError()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && reader.name() == u"property") {
            path.append(reader.attributes().value(QLatin1StringView("name")).toString());
            if (path.size() == 2 && path.constFirst() == u"xfce4-power-manager" && values.size() < 256)
                values.insert(
                    text::singleLine(path.constLast(), maxValue),
                    text::singleLine(reader.attributes().value(QLatin1StringView("value")), maxValue));
        } else if (token == QXmlStreamReader::EndElement && reader.name() == u"property" && !path.isEmpty()) {
            path.removeLast();
        }
    }
    return values;
}

} // namespace lullwick
