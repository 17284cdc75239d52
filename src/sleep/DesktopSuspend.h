#pragma once

#include "model/Finding.h"
#include "sleep/SleepContext.h"

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <atomic>
#include <optional>

namespace lullwick {

/// The desktop's automatic suspend where the computer is now (plugged in or on battery), and the
/// lid action of desktops that handle the lid themselves. GNOME, Budgie, Cinnamon and MATE are
/// read with gsettings; KDE Plasma (5 and 6) and Xfce from their files.
class DesktopSuspend {
public:
    /// Where the desktop's settings are: the gsettings tool, the user's configuration folder, and
    /// the desktop (XDG_CURRENT_DESKTOP's names, KDE_SESSION_VERSION).
    struct Setup {
        QString gsettingsPath = QStringLiteral("/usr/bin/gsettings");
        QString configDir; ///< XDG_CONFIG_HOME, else ~/.config
        QStringList desktops;
        QString kdeSessionVersion;
        /// This session's: from the environment.
        [[nodiscard]] static Setup ofSession();
    };

    /// What a desktop does on its own after a time without input, on one kind of power.
    struct Policy {
        bool sleeps = false;
        bool hibernates = false; ///< instead of suspending
        qint64 seconds = 0;
        bool operator==(const Policy &) const = default;
    };
    /// One desktop's settings as read: the policy plugged in and on battery, the lid actions.
    struct Settings {
        QString desktop; ///< its name for people: "GNOME", "KDE Plasma"…
        std::optional<Policy> pluggedIn, onBattery;
        std::optional<QString> lidPluggedIn, lidOnBattery; ///< "suspend", "nothing"…
    };

    DesktopSuspend() = delete;

    /// The settings of the session's desktop; nothing when it is none of those known, or they
    /// can't be read. A gsettings run may take 2 s at most.
    [[nodiscard]] static std::optional<Settings> read(const Setup &setup, const std::atomic<bool> &stop);
    /// `possible` when the desktop never suspends on its own here, `info` with the time when it does;
    /// `possible` when a desktop that handles the lid does nothing on closing it.
    [[nodiscard]] static QList<Finding> findings(const Settings &settings, const SleepContext &context);

    /// `gsettings list-recursively` output: key → value, strings unquoted and numbers without their
    /// type, for the lines of `schema`.
    [[nodiscard]] static QHash<QString, QString> parseGSettings(QByteArrayView output, const QString &schema);
    /// A KDE configuration file: "[Group][Sub]" → key → value.
    [[nodiscard]] static QHash<QString, QHash<QString, QString>> parseKConfig(QByteArrayView text);
    /// Xfce's power manager channel: property → value, for the properties under xfce4-power-manager.
    [[nodiscard]] static QHash<QString, QString> parseXfconf(QByteArrayView xml);
};

} // namespace lullwick
