#include "restart/StallReports.h"

#include "model/RandomUuid.h"
#include "model/TextRules.h"
#include "platform/ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace lullwick {

namespace {

constexpr QStringView monthNames[] = {u"January",   u"February", u"March",    u"April",
                                      u"May",       u"June",     u"July",     u"August",
                                      u"September", u"October",  u"November", u"December"};

} // namespace

std::optional<QString> StallReports::mostRecent(const QString &reportsDir)
{
    const QDir dir(reportsDir);
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
    std::optional<QString> newest;
    for (const QString &name : names) {
        if (!name.toLower().endsWith(u".shutdownstall"))
            continue;
        // UTF-8 bytes sort like code points; QString's own order is by UTF-16 units.
        if (!newest || newest->toUtf8() < name.toUtf8())
            newest = name;
    }
    if (!newest)
        return std::nullopt;
    return dir.filePath(*newest);
}

std::optional<QString> StallReports::dateFromFileName(QStringView fileName)
{
    // Names look like "loginwindow_2024-03-07-101500_Mac.shutdownStall": the date part is the first
    // underscore-separated part that starts with the millennium digit and has hyphens.
    QStringView datePart;
    for (QStringView part : fileName.tokenize(u'_')) {
        if (!part.isEmpty() && part.front() == u'2' && part.contains(u'-')) {
            datePart = part;
            break;
        }
    }
    if (datePart.isEmpty())
        return std::nullopt;
    const QList<QStringView> pieces = datePart.split(u'-');
    if (pieces.size() < 3)
        return std::nullopt;
    const std::optional<qint64> month = text::toInt64(pieces[1]);
    if (!month || *month < 1 || *month > 12)
        return std::nullopt;
    const std::optional<qint64> day = text::toInt64(pieces[2]);
    if (!day)
        return std::nullopt;
    return QStringLiteral("on %1 %2, %3").arg(monthNames[*month - 1], QString::number(*day), pieces[0]);
}

RestartFinding StallReports::finding(const QString &path)
{
    const QString fileName = QFileInfo(path).fileName();
    const QString when = dateFromFileName(fileName).value_or(QStringLiteral("recently"));
    return {
        newRandomUuid(),
        RestartSeverity::possible,
        stallReportSource(),
        QStringLiteral("Your Mac stalled during a shutdown ") + text::escapedControls(when),
        QStringLiteral(
            "macOS writes a “shutdown stall” report when a process hangs the shutdown sequence for "
            "roughly half a minute or more (") +
            text::escapedControls(fileName) +
            QStringLiteral("). If your restarts are slow or look frozen, this is the forensic record of the "
                           "last time it happened — and it names the process that hung, once decoded."),
        QStringLiteral("Use “Decode latest stall report” below to see which process was responsible (it runs "
                       "Apple's spindump tool and may ask for your password).")};
}

std::optional<QString> StallReports::culpritFromSpindump(QStringView text)
{
    static constexpr QStringView marker = u"Process:";
    for (QStringView line : text.tokenize(u'\n')) {
        const QStringView trimmedLine = text::trimmed(line);
        if (!trimmedLine.startsWith(marker))
            continue;
        const QStringView value = text::trimmed(trimmedLine.sliced(marker.size()));
        if (!value.isEmpty())
            return value.toString();
    }
    return std::nullopt;
}

QString StallReports::decodeFileName(const QString &reportPath)
{
    return QStringLiteral("lullwick-stall-%1.txt").arg(qHash(reportPath, 0));
}

std::optional<QString> StallReports::decode(const QString &spindumpPath, const QString &reportPath,
                                            const std::atomic<bool> &stop)
{
    if (stop.load())
        return std::nullopt;
    // The shared temporary folder lets anyone plant a file or a link at a predictable name, so the
    // output goes into a folder of our own, made fresh with owner-only access (mkdtemp). Whatever
    // the tool leaves in it (other files, a folder where the file should be) goes with it, on every
    // way out of here, a hung tool ended by the stop flag included.
    const QTemporaryDir privateDir(QDir::tempPath() + QStringLiteral("/lullwick-XXXXXX"));
    if (!privateDir.isValid())
        return std::nullopt;
    const QString outputPath = privateDir.filePath(decodeFileName(reportPath));

    const ChildProcessResult run = ChildProcess::run(
        spindumpPath,
        {QStringLiteral("-i"), reportPath, QStringLiteral("-o"), outputPath, QStringLiteral("-noBinary")},
        &stop);
    if (!run.started)
        return std::nullopt;
    QFile output(outputPath);
    if (!output.open(QIODevice::ReadOnly))
        return std::nullopt;
    const std::optional<QString> text = text::decodeUtf8(output.readAll());
    output.close();
    if (!text)
        return std::nullopt;
    return culpritFromSpindump(*text);
}

} // namespace lullwick
