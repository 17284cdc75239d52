#include "platform/linux/DesktopEntry.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>

namespace lullwick {

namespace {

// Programs that only start the real application: a process running one of these says nothing
// about which application it belongs to.
const QSet<QString> launcherNames{
    QStringLiteral("env"),      QStringLiteral("sh"),        QStringLiteral("bash"),
    QStringLiteral("dash"),     QStringLiteral("flatpak"),   QStringLiteral("snap"),
    QStringLiteral("python"),   QStringLiteral("python3"),   QStringLiteral("perl"),
    QStringLiteral("java"),     QStringLiteral("gjs"),       QStringLiteral("node"),
    QStringLiteral("xdg-open"), QStringLiteral("gtk-launch")};

/// Undoes the escapes of a desktop-entry string value: \s \n \t \r \\.
QString unescaped(QStringView value)
{
    QString out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            out.append(value[i]);
            continue;
        }
        switch (value[++i].unicode()) {
        case u's':
            out.append(u' ');
            break;
        case u'n':
            out.append(u'\n');
            break;
        case u't':
            out.append(u'\t');
            break;
        case u'r':
            out.append(u'\r');
            break;
        default:
            out.append(value[i]);
        }
    }
    return out;
}

/// Splits an Exec value into its arguments: blanks separate, double quotes group, and inside
/// quotes a backslash takes the next character literally.
QStringList execArguments(QStringView exec)
{
    QStringList arguments;
    QString current;
    bool inQuotes = false;
    bool inArgument = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar c = exec[i];
        if (inQuotes) {
            if (c == u'\\' && i + 1 < exec.size())
                current.append(exec[++i]);
            else if (c == u'"')
                inQuotes = false;
            else
                current.append(c);
        } else if (c == u' ' || c == u'\t') {
            if (inArgument)
                arguments.append(std::exchange(current, {}));
            inArgument = false;
        } else {
            inArgument = true;
            if (c == u'"')
                inQuotes = true;
            else
                current.append(c);
        }
    }
    if (inArgument)
        arguments.append(current);
    return arguments;
}

QString baseName(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

void addProgram(QStringList &names, const QString &program)
{
    if (program.isEmpty())
        return;
    const QString name = baseName(program);
    if (!name.isEmpty() && !launcherNames.contains(name) && !names.contains(name))
        names.append(name);
    // /usr/bin/foo is often a link to the binary that actually runs, under another name.
    if (program.startsWith(u'/')) {
        const QString resolved = baseName(QFileInfo(program).canonicalFilePath());
        if (!resolved.isEmpty() && !launcherNames.contains(resolved) && !names.contains(resolved))
            names.append(resolved);
    }
}

/// The keys of the main group of the entry at `filePath`; nothing when it can't be read.
std::optional<QHash<QString, QString>> mainGroup(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QString text = QString::fromUtf8(file.readAll());

    QHash<QString, QString> keys;
    bool inMainGroup = false;
    for (QStringView line : QStringView(text).tokenize(u'\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[')) {
            if (inMainGroup)
                break; // the main group is over; actions and other groups don't describe the app
            inMainGroup = line == u"[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (!inMainGroup || equals <= 0)
            continue;
        const QString key = line.first(equals).trimmed().toString();
        if (!keys.contains(key))
            keys.insert(key, unescaped(line.sliced(equals + 1).trimmed()));
    }
    return keys;
}

/// Name[lang_COUNTRY], then Name[lang], then Name.
QString localizedName(const QHash<QString, QString> &keys, QStringView localeName)
{
    const QString language = localeName.first(std::max<qsizetype>(0, localeName.indexOf(u'_'))).toString();
    for (const QString &key : {QStringLiteral("Name[%1]").arg(localeName),
                               QStringLiteral("Name[%1]").arg(language), QStringLiteral("Name")}) {
        if (const auto it = keys.constFind(key); it != keys.cend() && !it->isEmpty())
            return *it;
    }
    return {};
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString &filePath, QString id, QStringView localeName)
{
    const std::optional<QHash<QString, QString>> group = mainGroup(filePath);
    if (!group)
        return std::nullopt;
    const QHash<QString, QString> &keys = *group;

    const auto flag = [&keys](const QString &key) { return keys.value(key) == u"true"; };
    if (keys.value(QStringLiteral("Type")) != u"Application" || flag(QStringLiteral("Hidden")) ||
        flag(QStringLiteral("NoDisplay")) || flag(QStringLiteral("Terminal")))
        return std::nullopt;

    DesktopEntry entry;
    entry.id = std::move(id);
    entry.name = localizedName(keys, localeName);
    QStringList arguments = execArguments(keys.value(QStringLiteral("Exec")));
    // "env NAME=value program ...": the program is the first word that is not an assignment.
    while (!arguments.isEmpty() &&
           (baseName(arguments.front()) == u"env" || arguments.front().contains(u'=')))
        arguments.removeFirst();
    if (!arguments.isEmpty())
        addProgram(entry.programNames, arguments.front());
    addProgram(entry.programNames, keys.value(QStringLiteral("TryExec")));
    return entry;
}

QList<DesktopEntry> DesktopEntry::installed(QStringView localeName)
{
    QList<DesktopEntry> entries;
    QSet<QString> seen;
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        QList<std::pair<QString, QString>> files; // (id, path)
        const QDir root(folder);
        QDirIterator it(folder, {QStringLiteral("*.desktop")}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            // The id is the path below the folder with "/" turned into "-".
            QString id = root.relativeFilePath(path);
            id.chop(int(qstrlen(".desktop")));
            id.replace(u'/', u'-');
            files.append({std::move(id), path});
        }
        std::sort(files.begin(), files.end());
        for (auto &[id, path] : files) {
            if (seen.contains(id))
                continue;
            seen.insert(id);
            if (std::optional<DesktopEntry> entry = read(path, id, localeName))
                entries.append(std::move(*entry));
        }
    }
    return entries;
}

std::optional<DesktopEntry::Launch> DesktopEntry::launch(const QString &id, const QStringList &folders)
{
    std::optional<QHash<QString, QString>> keys;
    for (const QString &folder : folders) {
        if ((keys = mainGroup(folder + u'/' + id + QStringLiteral(".desktop"))))
            break;
    }
    // Settings pages are entries hidden from menus (NoDisplay); Hidden means deleted.
    if (!keys || keys->value(QStringLiteral("Type")) != u"Application" ||
        keys->value(QStringLiteral("Hidden")) == u"true")
        return std::nullopt;

    QStringList arguments;
    for (const QString &argument : execArguments(keys->value(QStringLiteral("Exec")))) {
        // Field codes stand for files, URLs and the entry's icon or name: none are passed here.
        if (argument.size() == 2 && argument.front() == u'%' && argument.back() != u'%')
            continue;
        arguments.append(QString(argument).replace(QStringLiteral("%%"), QStringLiteral("%")));
    }
    if (arguments.isEmpty())
        return std::nullopt;
    // A program named without a folder is taken from the system's own program folders only.
    static const QStringList programFolders{QStringLiteral("/usr/local/bin"), QStringLiteral("/usr/bin"),
                                            QStringLiteral("/bin"), QStringLiteral("/usr/games")};
    QString program = arguments.takeFirst();
    if (!program.startsWith(u'/'))
        program = QStandardPaths::findExecutable(program, programFolders);
    const QFileInfo file(program);
    if (program.isEmpty() || !file.isFile() || !file.isExecutable())
        return std::nullopt;
    return Launch{localizedName(*keys, QLocale::system().name()), program, arguments};
}

} // namespace lullwick
