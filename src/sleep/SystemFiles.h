#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace lullwick {

/// Reads the files the sleep check looks at, under a root folder ("/" on a real system, a
/// temporary one in tests). Nothing here trusts a file: reads are capped, a FIFO or a device in a
/// file's place never blocks, and listings stop after a few hundred entries.
class SystemFiles {
public:
    explicit SystemFiles(QString rootDir) : m_root(std::move(rootDir)) {}

    /// At most the first 64 KiB of `path` (absolute, below the root); nothing if it can't be read.
    [[nodiscard]] std::optional<QByteArray> read(const QString &path) const;
    /// The file's first line as one clean line of text, at most `maxLength` characters.
    [[nodiscard]] std::optional<QString> firstLine(const QString &path, qsizetype maxLength = 200) const;
    /// Whether `path` is a symbolic link to /dev/null, the way systemd masks a unit.
    [[nodiscard]] bool linksToDevNull(const QString &path) const;
    /// The names in folder `path`, sorted, at most a few hundred.
    [[nodiscard]] QStringList entries(const QString &path) const;
    /// `path` below the root.
    [[nodiscard]] QString under(const QString &path) const;

    /// Whether the computer runs on mains power now: a mains supply online, or no battery at all.
    [[nodiscard]] bool onMainsPower() const;
    /// Whether the computer has a lid switch (an ACPI lid, or an input device named "Lid Switch").
    [[nodiscard]] bool hasLid() const;

private:
    QString m_root;
};

} // namespace lullwick
