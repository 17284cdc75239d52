#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

namespace lullwick {

/// An installed application as an XDG desktop entry describes it, reduced to what tells
/// which running processes belong to it.
struct DesktopEntry {
    QString id;               ///< the desktop-file id without ".desktop", e.g. "org.gnome.TextEditor"
    QString name;             ///< the Name in the user's language, or the plain Name
    QStringList programNames; ///< executable names a process of the application runs as

    /// Reads the entry at `filePath`; nothing when it is not an application shown to the user
    /// (hidden, not shown in menus, run in a terminal, or not of type Application).
    [[nodiscard]] static std::optional<DesktopEntry> read(const QString &filePath, QString id,
                                                          QStringView localeName);

    /// Every application entry in the XDG applications folders. Where two folders hold the same
    /// id, the one with precedence wins (a hidden entry there removes the application). Ordered
    /// by folder precedence, then by id.
    [[nodiscard]] static QList<DesktopEntry> installed(QStringView localeName);

    /// How to start an application, from its entry's Exec line.
    struct Launch {
        QString name;          ///< the Name in the user's language
        QString program;       ///< absolute path
        QStringList arguments; ///< without field codes
    };
    /// The entry with desktop-file id `id` in the first of `folders` (applications folders, in
    /// order of precedence) that has one, also when it is kept out of menus; nothing when there
    /// is none, it was deleted (Hidden), or its program is not installed.
    [[nodiscard]] static std::optional<Launch> launch(const QString &id, const QStringList &folders);
};

} // namespace lullwick
