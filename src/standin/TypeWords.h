#pragma once

#include <QString>
#include <QStringList>

namespace lullwick {

/// The assertion type word written for each kind of Linux sleep inhibitor.
class TypeWords {
public:
    TypeWords() = delete;

    /// A systemd-logind lock, from its `what` list and its mode.
    [[nodiscard]] static QString forLogindLock(QStringView what, QStringView mode);
    /// A GNOME session manager inhibitor, from its flags.
    [[nodiscard]] static QString forGnomeFlags(quint32 flags);
    /// A KDE power policy agent inhibition.
    [[nodiscard]] static QString forKdeInhibition();
    /// GNOME inhibitor flags in words, e.g. "logout, idle".
    [[nodiscard]] static QString gnomeFlagNames(quint32 flags);
    /// Every word the mapping can give, in the order the system-wide counters list them.
    [[nodiscard]] static QStringList all();
};

} // namespace lullwick
