#include "platform/AppcastFeed.h"

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

/// A run of ASCII digits, or a run of other letters and numbers ("beta", "rc"); anything else
/// ('.', '-', '_', '+') only separates runs.
struct VersionPart {
    QStringView text;
    bool isNumber;
};

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

QList<VersionPart> versionParts(QStringView version)
{
    QList<VersionPart> parts;
    qsizetype i = 0;
    while (i < version.size()) {
        const bool number = isAsciiDigit(version[i]);
        if (!number && !version[i].isLetterOrNumber()) {
            ++i;
            continue;
        }
        qsizetype end = i + 1;
        while (end < version.size() && isAsciiDigit(version[end]) == number &&
               version[end].isLetterOrNumber())
            ++end;
        parts.append({version.sliced(i, end - i), number});
        i = end;
    }
    return parts;
}

/// Compares digit runs of any length by value.
int compareNumbers(QStringView a, QStringView b)
{
    while (a.size() > 1 && a.front() == u'0')
        a = a.sliced(1);
    while (b.size() > 1 && b.front() == u'0')
        b = b.sliced(1);
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
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
    const QList<VersionPart> left = versionParts(a);
    const QList<VersionPart> right = versionParts(b);
    static constexpr VersionPart zero{u"0", true};
    for (qsizetype i = 0; i < qMax(left.size(), right.size()); ++i) {
        const VersionPart &l = i < left.size() ? left[i] : zero;
        const VersionPart &r = i < right.size() ? right[i] : zero;
        int order = 0;
        if (l.isNumber != r.isNumber)
            order = l.isNumber ? 1 : -1; // a pre-release word ranks below any number, even a missing one
        else if (l.isNumber)
            order = compareNumbers(l.text, r.text);
        else
            order = l.text.compare(r.text, Qt::CaseInsensitive);
        if (order != 0)
            return order < 0 ? -1 : 1;
    }
    return 0;
}

} // namespace lullwick
