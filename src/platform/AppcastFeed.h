#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

namespace lullwick {

/// One release offered by an update feed.
struct AppcastItem {
    QString version;   ///< the version people read, e.g. "1.2.0"
    QUrl downloadPage; ///< where the user gets it
};

/// The update feed: RSS items that each carry a version and a link.
class AppcastFeed {
public:
    AppcastFeed() = delete;

    /// The items of an RSS appcast, or nothing when the text is not a feed with at least one
    /// versioned item.
    [[nodiscard]] static std::optional<QList<AppcastItem>> parse(const QByteArray &xml);

    /// The item with the highest version.
    [[nodiscard]] static AppcastItem newest(const QList<AppcastItem> &items);

    /// -1, 0 or 1 as `a` is older than, the same as or newer than `b`. Number parts compare by
    /// value ("1.10" is newer than "1.9"; "1.0" equals "1"); a word after them marks a pre-release,
    /// older than the release itself ("1.2.0-beta" < "1.2.0", "1.10rc1" < "1.10").
    [[nodiscard]] static int compareVersions(QStringView a, QStringView b);
};

} // namespace lullwick
