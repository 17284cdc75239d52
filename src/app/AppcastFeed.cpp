#include "app/AppcastFeed.h"

#include <QXmlStreamReader>

namespace lullwick {

namespace {

// Appcast readers agree on this namespace for the version fields.
const QString updateNamespace = QStringLiteral("http://www.andymatuschak.org/xml-namespaces/sparkle");

struct ItemFields {
    QString shortVersion, version, link, enclosureUrl;
};

std::optional<AppcastItem> finish(const ItemFields &f)
{
    const QString version = !f.shortVersion.isEmpty() ? f.shortVersion : f.version;
    const QUrl page(!f.link.isEmpty() ? f.link : f.enclosureUrl);
    if (version.isEmpty() || !page.isValid() || page.isRelative())
        return std::nullopt;
    return AppcastItem{version, page};
}

} // namespace

std::optional<QList<AppcastItem>> AppcastFeed::parse(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    QList<AppcastItem> items;
    std::optional<ItemFields> item;
    bool sawRss = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            const bool ours = reader.namespaceUri() == updateNamespace;
            const auto name = reader.name();
            if (name == u"rss" && reader.namespaceUri().isEmpty()) {
                sawRss = true;
            } else if (name == u"item" && !ours) {
                item = ItemFields{};
            } else if (item && name == u"enclosure") {
                const QXmlStreamAttributes attributes = reader.attributes();
                item->enclosureUrl = attributes.value(QLatin1StringView("url")).toString().trimmed();
                if (item->shortVersion.isEmpty())
                    item->shortVersion =
                        attributes.value(updateNamespace, QLatin1StringView("shortVersionString"))
                            .toString()
                            .trimmed();
                if (item->version.isEmpty())
                    item->version =
                        attributes.value(updateNamespace, QLatin1StringView("version")).toString().trimmed();
            } else if (item && ours && name == u"shortVersionString") {
                item->shortVersion = reader.readElementText().trimmed();
            } else if (item && ours && name == u"version") {
                item->version = reader.readElementText().trimmed();
            } else if (item && !ours && name == u"link") {
                item->link = reader.readElementText().trimmed();
            }
        } else if (reader.isEndElement() && reader.name() == u"item" && item) {
            if (auto finished = finish(*item))
                items.append(*std::move(finished));
            item.reset();
        }
    }
    if (reader.hasError() || !sawRss || items.isEmpty())
        return std::nullopt;
    return items;
}

AppcastItem AppcastFeed::newest(const QList<AppcastItem> &items)
{
    AppcastItem best = items.value(0);
    for (const AppcastItem &item : items) {
        if (compareVersions(item.version, best.version) > 0)
            best = item;
    }
    return best;
}

int AppcastFeed::compareVersions(QStringView a, QStringView b)
{
    const QList<QStringView> left = a.split(u'.');
    const QList<QStringView> right = b.split(u'.');
    for (qsizetype i = 0; i < qMax(left.size(), right.size()); ++i) {
        const QStringView l = i < left.size() ? left[i] : QStringView(u"0");
        const QStringView r = i < right.size() ? right[i] : QStringView(u"0");
        bool lNumber = false, rNumber = false;
        const qulonglong ln = l.toULongLong(&lNumber), rn = r.toULongLong(&rNumber);
        if (lNumber && rNumber) {
            if (ln != rn)
                return ln < rn ? -1 : 1;
        } else if (const int text = l.compare(r); text != 0) {
            return text < 0 ? -1 : 1;
        }
    }
    return 0;
}

} // namespace lullwick
