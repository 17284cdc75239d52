#include "sleep/WakeSources.h"

#include "model/TextRules.h"
#include "profile/Profile.h"
#include "sleep/SleepContext.h"

#include <algorithm>

namespace lullwick {

namespace {

constexpr qsizetype maxName = 60;
constexpr qsizetype maxListed = 12;
constexpr qsizetype maxRows = 256;

QString pciNode(const QString &address)
{
    return QStringLiteral("/sys/bus/pci/devices/") + address;
}

/// A USB device by its product and maker strings; an interface or hub port has none.
QString usbName(const SystemFiles &files, const QString &node)
{
    const QString product = files.firstLine(node + QStringLiteral("/product"), maxName).value_or(QString());
    if (product.isEmpty())
        return {};
    const QString maker =
        files.firstLine(node + QStringLiteral("/manufacturer"), maxName).value_or(QString());
    return maker.isEmpty() || product.contains(maker, Qt::CaseInsensitive) ? product : maker + u' ' + product;
}

QString platformName(const QString &device)
{
    const Profile::Sleep &words = Profile::current().sleep();
    // The ACPI ids of the power button, lid and keyboard controller's ports.
    if (device.startsWith(u"PNP0C0C") || device.startsWith(u"LNXPWRBN"))
        return words.powerButton;
    if (device.startsWith(u"PNP0C0D"))
        return words.lidDevice;
    if (device.startsWith(u"i8042") || device.startsWith(u"PNP0303"))
        return words.keyboard;
    return device;
}

/// Devices that wake the computer only when asked to: the power button, the lid, alarms.
bool wakesOnPurpose(const QString &entry)
{
    return entry.startsWith(u"PNP0C0C") || entry.startsWith(u"LNXPWRBN") || entry.startsWith(u"PNP0C0D") ||
           entry.startsWith(u"alarmtimer") || entry.startsWith(u"rtc") || entry.startsWith(u"PNP0B00");
}

} // namespace

QList<WakeSources::AcpiRow> WakeSources::enabledAcpiRows(QByteArrayView bytes)
{
    // "Device<TAB>S-state<TAB>  Status   Sysfs node" then "XHC0<TAB>  S4<TAB>*enabled   pci:0000:0d:00.3".
    QList<AcpiRow> rows;
    const QString text = QString::fromUtf8(bytes);
    for (QStringView line : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        QList<QStringView> words;
        for (QStringView w : line.tokenize(u' ', Qt::SkipEmptyParts)) {
            for (QStringView part : w.tokenize(u'\t', Qt::SkipEmptyParts))
                words.append(part);
        }
        if (words.size() < 3 || (words[2] != u"*enabled" && words[2] != u"enabled"))
            continue;
        rows.append(
            {text::singleLine(words[0], 16), words.size() > 3 ? text::singleLine(words[3], 64) : QString()});
        if (rows.size() >= maxRows)
            break;
    }
    return rows;
}

QString WakeSources::pciClassName(const QString &classCode)
{
    const Profile::Sleep &words = Profile::current().sleep();
    bool ok = false;
    const uint code = classCode.toUInt(&ok, 16);
    if (!ok)
        return words.someDevice;
    switch (code >> 8) { // class and subclass
    case 0x0c03:
        return words.usbController;
    case 0x0200:
        return words.networkCard;
    case 0x0280:
        return words.wirelessCard;
    case 0x0604:
        return words.pciBridge;
    default:
        return words.someDevice;
    }
}

QList<WakeSources::Device> WakeSources::devices(const SystemFiles &files)
{
    QList<Device> found;
    QStringList seen; // sysfs paths already named
    const auto add = [&](const QString &name, const QString &path, const QString &acpiName) {
        if (!seen.contains(path) && found.size() < maxRows) {
            seen.append(path);
            found.append({name, acpiName.isEmpty() ? path : path + QStringLiteral(" (") + acpiName + u')'});
        }
    };
    if (const std::optional<QByteArray> acpi = files.read(QStringLiteral("/proc/acpi/wakeup"))) {
        for (const AcpiRow &row : enabledAcpiRows(*acpi)) {
            if (row.sysfsNode.startsWith(u"pci:")) {
                const QString node = pciNode(row.sysfsNode.sliced(4));
                const QString kind =
                    pciClassName(files.firstLine(node + QStringLiteral("/class"), 16).value_or(QString()));
                add(kind, node, row.device);
            } else {
                add(platformName(row.device), QStringLiteral("/proc/acpi/wakeup"), row.device);
            }
        }
    }
    for (const QString &bus :
         {QStringLiteral("usb"), QStringLiteral("pci"), QStringLiteral("i2c"), QStringLiteral("platform")}) {
        const QString folder = QStringLiteral("/sys/bus/") + bus + QStringLiteral("/devices/");
        for (const QString &entry : files.entries(folder)) {
            const QString node = folder + entry;
            // USB root hubs ("usb1") stand for their controller, listed under pci; interfaces
            // ("1-2:1.0") for their device.
            if ((bus == u"usb" && (entry.startsWith(u"usb") || entry.contains(u':'))) ||
                (bus == u"platform" && wakesOnPurpose(entry)))
                continue;
            if (files.firstLine(node + QStringLiteral("/power/wakeup"), 16) != u"enabled")
                continue;
            QString name;
            if (bus == u"usb")
                name = usbName(files, node);
            else if (bus == u"pci")
                name = pciClassName(files.firstLine(node + QStringLiteral("/class"), 16).value_or(QString()));
            else if (bus == u"i2c")
                name = files.firstLine(node + QStringLiteral("/name"), maxName).value_or(QString());
            else
                name = platformName(entry);
            add(name.isEmpty() ? text::singleLine(entry, maxName) : name, node, {});
        }
    }
    // What a person recognises first; bridges and devices without a name last.
    const Profile::Sleep &words = Profile::current().sleep();
    std::stable_sort(found.begin(), found.end(), [&words](const Device &a, const Device &b) {
        const auto vague = [&words](const Device &d) {
            return d.name == words.pciBridge || d.name == words.someDevice;
        };
        return !vague(a) && vague(b);
    });
    return found;
}

QList<Finding> WakeSources::findings(const SystemFiles &files)
{
    const Profile::Sleep &words = Profile::current().sleep();
    QList<Finding> found;
    const QList<Device> all = devices(files);
    if (!all.isEmpty()) {
        // The title names what a person recognises; bridges and unnamed devices only count.
        QStringList clear, vague, lines;
        for (const Device &d : all) {
            QStringList &names = d.name == words.pciBridge || d.name == words.someDevice ? vague : clear;
            if (!names.contains(d.name))
                names.append(d.name);
            if (lines.size() < maxListed)
                lines.append(d.name + QStringLiteral(" — ") + d.path);
        }
        const qsizetype vagueCount = std::count_if(all.cbegin(), all.cend(), [&words](const Device &d) {
            return d.name == words.pciBridge || d.name == words.someDevice;
        });
        QString title;
        if (clear.isEmpty())
            title = SleepContext::names(vague);
        else if (vagueCount == 0)
            title = SleepContext::names(clear);
        else
            title = words.namesMore.arg(clear.join(QStringLiteral(", ")), QString::number(vagueCount));
        if (all.size() > maxListed)
            lines.append(Profile::current().restartEvidence().moreLine.arg(all.size() - maxListed));
        found.append(Finding::make(FindingSeverity::info, words.wakeSource, words.wakeTitle.arg(title),
                                   words.wakeDetail + QStringLiteral("\n\n") + lines.join(u'\n'),
                                   words.wakeAdvice));
    }

    // The sources that woke the computer or stopped a suspend, most recent first.
    struct Woke {
        QString name;
        qint64 count = 0;
        qint64 lastChange = 0;
    };
    QList<Woke> woke;
    const QString folder = QStringLiteral("/sys/class/wakeup/");
    for (const QString &entry : files.entries(folder)) {
        const QString node = folder + entry;
        const std::optional<qint64> count =
            text::toInt64(files.firstLine(node + QStringLiteral("/wakeup_count"), 24).value_or(QString()));
        if (!count || *count <= 0)
            continue;
        const qint64 last =
            text::toInt64(files.firstLine(node + QStringLiteral("/last_change_ms"), 24).value_or(QString()))
                .value_or(0);
        QString name = files.firstLine(node + QStringLiteral("/name"), maxName).value_or(QString());
        if (name.isEmpty())
            name = text::singleLine(entry, maxName);
        // A PCI device's source is named by its address: say what it is.
        if (const std::optional<QString> pciClass =
                files.firstLine(pciNode(name) + QStringLiteral("/class"), 16))
            name = pciClassName(*pciClass) + QStringLiteral(" (") + name + u')';
        woke.append({platformName(name), *count, last});
    }
    if (!woke.isEmpty()) {
        std::stable_sort(woke.begin(), woke.end(),
                         [](const Woke &a, const Woke &b) { return a.lastChange > b.lastChange; });
        QStringList names, lines;
        for (const Woke &w : woke) {
            names.append(w.name);
            if (lines.size() < maxListed)
                lines.append(w.count == 1 ? words.wokeOnce.arg(w.name)
                                          : words.wokeTimes.arg(w.name, QString::number(w.count)));
        }
        if (woke.size() > maxListed)
            lines.append(Profile::current().restartEvidence().moreLine.arg(woke.size() - maxListed));
        found.append(Finding::make(
            FindingSeverity::info, words.wakeSource, words.wokeTitle.arg(SleepContext::names(names)),
            words.wokeDetail + QStringLiteral("\n\n") + lines.join(u'\n'), words.wakeAdvice));
    }
    return found;
}

} // namespace lullwick
