#include "report/ReportOptions.h"

#include "profile/Profile.h"

#include <QCommandLineParser>
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

const QString failOptionName = u"fail-if-blocked"_s;
const QString failOptionPrefix = u"--"_s + failOptionName + u'=';

std::optional<ReportOptions::Mode> modeNamed(QStringView name)
{
    using Mode = ReportOptions::Mode;
    for (auto [word, mode] : {std::pair{u"summary", Mode::summary}, std::pair{u"restart", Mode::restart},
                              std::pair{u"details", Mode::details}, std::pair{u"metrics", Mode::metrics}}) {
        if (name == word)
            return mode;
    }
    return std::nullopt;
}

} // namespace

QString ReportOptions::word(SleepKind kind)
{
    switch (kind) {
    case SleepKind::idleSystem:
        return u"idle"_s;
    case SleepKind::system:
        return u"system"_s;
    case SleepKind::display:
        return u"display"_s;
    }
    Q_UNREACHABLE();
}

ReportOptions::Parsed ReportOptions::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(Profile::current().reportDescription());
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption json(u"json"_s, u"Print one JSON document instead of the text."_s);
    const QCommandLineOption failIfBlocked(
        failOptionName, u"Exit with status 1 when something blocks sleep; =idle, =system or =display "
                        u"asks about that kind of sleep alone."_s);
    const QCommandLineOption output(
        u"output"_s,
        u"Write the report to <file> instead of standard output, replacing it whole or not at all."_s,
        u"file"_s);
    parser.addOptions({json, failIfBlocked, output});
    parser.addPositionalArgument(
        u"report"_s,
        u"summary (the default), restart, details, or metrics (for the Prometheus node exporter)."_s,
        u"[summary|restart|details|metrics]"_s);

    // QCommandLineParser has no options whose value may be left out: take the value off here and
    // hand the parser the bare flag.
    QStringList flags;
    std::optional<QString> kindWord;
    bool optionsEnded = false;
    for (const QString &argument : arguments) {
        if (!optionsEnded && argument.startsWith(failOptionPrefix)) {
            kindWord = argument.sliced(failOptionPrefix.size());
            flags.append(u"--"_s + failOptionName);
        } else {
            optionsEnded = optionsEnded || argument == u"--";
            flags.append(argument);
        }
    }

    const auto usageError = [&parser](const QString &error) {
        return Parsed{Action::usageError, {}, error + u"\n\n"_s + parser.helpText()};
    };
    if (!parser.parse(flags))
        return usageError(parser.errorText());
    // --help-all comes with the help option; a program without widgets has no Qt options to add.
    if (parser.isSet(help) || parser.isSet(u"help-all"_s))
        return {Action::showHelp, {}, parser.helpText()};
    if (parser.isSet(version)) {
        return {Action::showVersion,
                {},
                QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion() + u'\n'};
    }

    ReportOptions options;
    options.json = parser.isSet(json);
    const QStringList reports = parser.positionalArguments();
    if (reports.size() > 1)
        return usageError(u"Ask for one report at a time."_s);
    if (!reports.isEmpty()) {
        const std::optional<Mode> mode = modeNamed(reports.first());
        if (!mode)
            return usageError(u"Unknown report: "_s + reports.first());
        options.mode = *mode;
    }
    if (options.json && options.mode == Mode::metrics)
        return usageError(u"The metrics have a format of their own; --json does not apply."_s);
    if (parser.isSet(output)) {
        options.outputFile = parser.value(output);
        if (options.outputFile.isEmpty())
            return usageError(u"--output needs a file name."_s);
    }
    if (parser.isSet(failIfBlocked)) {
        options.failIfBlocked = {SleepKind::idleSystem, SleepKind::system, SleepKind::display};
        if (kindWord) {
            const auto kind = std::find_if(allSleepKinds.cbegin(), allSleepKinds.cend(),
                                           [&](SleepKind k) { return word(k) == *kindWord; });
            if (kind == allSleepKinds.cend())
                return usageError(u"Unknown kind of sleep: "_s + *kindWord);
            options.failIfBlocked = {*kind};
        }
    }
    return {Action::run, options, {}};
}

} // namespace lullwick
