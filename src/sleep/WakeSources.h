#pragma once

#include "model/Finding.h"
#include "sleep/SystemFiles.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

namespace lullwick {

/// What may wake the computer: the ACPI devices enabled in /proc/acpi/wakeup, the devices whose
/// power/wakeup is "enabled" under /sys/bus/{usb,pci,i2c,platform}/devices, named as a person
/// knows them, and the wake-up sources of /sys/class/wakeup that have fired, most recent first.
class WakeSources {
public:
    WakeSources() = delete;

    /// One enabled row of /proc/acpi/wakeup.
    struct AcpiRow {
        QString device;    ///< e.g. "XHC0"
        QString sysfsNode; ///< e.g. "pci:0000:0d:00.3"; empty when the row has none
        bool operator==(const AcpiRow &) const = default;
    };
    /// One device allowed to wake the computer.
    struct Device {
        QString name; ///< "USB controller", "Logitech USB Receiver"…
        QString path; ///< its sysfs node, with its ACPI name if it has one: "/sys/… (XHC0)"
        bool operator==(const Device &) const = default;
    };

    /// The enabled rows of a /proc/acpi/wakeup listing (tabs or spaces between its columns).
    [[nodiscard]] static QList<AcpiRow> enabledAcpiRows(QByteArrayView text);
    /// What a PCI class code ("0x0c0330") is called: "USB controller", "network card"…
    [[nodiscard]] static QString pciClassName(const QString &classCode);
    /// The devices that may wake the computer, each once, named.
    [[nodiscard]] static QList<Device> devices(const SystemFiles &files);
    /// At most one finding for the devices, one for the sources that woke it.
    [[nodiscard]] static QList<Finding> findings(const SystemFiles &files);
};

} // namespace lullwick
