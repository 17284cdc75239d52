// Reading of the `pmset -g assertions` listing.

#include "pmset/PMSetParser.h"

#include "model/TextRules.h"
#include "pmset/PartialAssertion.h"

namespace lullwick {

namespace {

constexpr QStringView systemWideHeader = u"Assertion status system-wide:";
constexpr QStringView perProcessHeader = u"Listed by owning process:";
constexpr QStringView kernelHeader = u"Kernel Assertions:";
constexpr QStringView noTimeoutHeader = u"No timeout-based assertions";
constexpr QStringView perProcessPrefix = u"   pid ";

enum class Section : quint8 { none, systemWide, perProcess, ignored };

/// The section a header line starts; `none` when the line is not a header.
Section sectionStartedBy(QStringView line)
{
    // Headers start in the first column; most lines are indented, so one character decides.
    if (line.isEmpty() || text::isBlank(line.front()))
        return Section::none;
    if (line.startsWith(systemWideHeader))
        return Section::systemWide;
    if (line.startsWith(perProcessHeader))
        return Section::perProcess;
    if (line.startsWith(kernelHeader) || line.startsWith(noTimeoutHeader))
        return Section::ignored;
    return Section::none;
}

/// Words separated by runs of U+0020 joined with single spaces (tabs stay inside words).
QString joinedWords(QStringView s)
{
    if (!s.contains(u"  "))
        return s.toString();
    QString joined;
    joined.reserve(s.size());
    for (QStringView word : s.tokenize(u' ', Qt::SkipEmptyParts)) {
        if (!joined.isEmpty())
            joined.append(u' ');
        joined.append(word);
    }
    return joined;
}

std::optional<SystemWideCount> parseCounterLine(QStringView line)
{
    const QStringView t = text::trimmed(line);
    // Trimmed, the text ends in a non-blank, so the last word runs from after the last space.
    const qsizetype lastSpace = t.lastIndexOf(u' ');
    if (lastSpace < 0)
        return std::nullopt;
    const auto count = text::toInt64(t.sliced(lastSpace + 1));
    if (!count)
        return std::nullopt;
    QStringView name = t.first(lastSpace);
    while (!name.isEmpty() && name.back() == u' ')
        name.chop(1);
    if (name.isEmpty()) // cannot happen after trimming, but keeps the two-word rule explicit
        return std::nullopt;
    return SystemWideCount{joinedWords(name), *count};
}

std::optional<PartialAssertion> parsePerProcessLine(QStringView line)
{
    const QStringView trimmedLine = text::trimmed(line);
    if (!trimmedLine.startsWith(u"pid "))
        return std::nullopt;
    const QStringView rest = trimmedLine.sliced(4);

    const qsizetype colon = rest.indexOf(u':');
    const qsizetype open = rest.indexOf(u'(');
    const qsizetype close = rest.indexOf(u')');
    if (colon < 0 || open < 0 || close < 0 || !(open < close) || !(close < colon))
        return std::nullopt;

    const auto pid = text::toInt64(text::trimmed(rest.first(open)));
    if (!pid)
        return std::nullopt;

    const QStringView t = text::trimmed(rest.sliced(colon + 1));
    const qsizetype bracketOpen = t.indexOf(u'[');
    const qsizetype bracketClose = t.indexOf(u']');
    if (bracketOpen < 0 || bracketClose < 0 || !(bracketOpen < bracketClose))
        return std::nullopt;

    const QStringView u = text::trimmed(t.sliced(bracketClose + 1));

    // Held time, type word, then whatever follows the space that ends the type word.
    QStringView words[2];
    int wordCount = 0;
    qsizetype pos = 0;
    while (wordCount < 2) {
        while (pos < u.size() && u[pos] == u' ')
            ++pos;
        if (pos == u.size())
            break;
        const qsizetype end = u.indexOf(u' ', pos);
        words[wordCount++] = u.sliced(pos, (end < 0 ? u.size() : end) - pos);
        pos = end < 0 ? u.size() : end + 1;
    }
    if (wordCount < 2)
        return std::nullopt;
    const QStringView remainder = u.sliced(pos);

    PartialAssertion partial;
    partial.pid = *pid;
    partial.processName = rest.sliced(open + 1, close - open - 1).toString();
    partial.assertionID = t.sliced(bracketOpen + 1, bracketClose - bracketOpen - 1).toString();
    partial.timeHeld = words[0].toString();
    partial.rawType = words[1].toString();

    static constexpr QStringView namedMarker = u"named: \"";
    if (const qsizetype marker = remainder.indexOf(namedMarker); marker >= 0) {
        const qsizetype nameStart = marker + namedMarker.size();
        if (const qsizetype quote = remainder.indexOf(u'"', nameStart); quote >= 0)
            partial.namedReason = remainder.sliced(nameStart, quote - nameStart).toString();
    }
    return partial;
}

} // namespace

AssertionsSnapshot PMSetParser::parse(const QString &output, const QDateTime &capturedAt)
{
    AssertionsSnapshot snapshot;
    snapshot.capturedAt = capturedAt;
    snapshot.rawOutput = output;
    // Growing the list record by record costs more than this one scan for an upper bound.
    snapshot.assertions.reserve(QStringView(output).count(u"\n   pid ") + 1);

    Section section = Section::none;
    // Kept as a flag beside a value rather than an optional: GCC's -O2 flow analysis reports
    // a false "may be used uninitialized" for an optional of this record.
    PartialAssertion current;
    bool pending = false;
    const auto flushCurrent = [&] {
        if (pending)
            snapshot.assertions.append(std::move(current).materialize());
        pending = false;
    };

    // Only a line feed ends a line; a carriage return stays part of its line.
    for (QStringView line : QStringView(output).tokenize(u'\n')) {
        if (const Section started = sectionStartedBy(line); started != Section::none) {
            if (started != Section::systemWide) // an assertion under assembly stays pending there
                flushCurrent();
            section = started;
            continue;
        }

        switch (section) {
        case Section::none:
        case Section::ignored:
            break;
        case Section::systemWide:
            if (auto count = parseCounterLine(line))
                snapshot.systemWideCounts.append(std::move(*count));
            break;
        case Section::perProcess:
            if (line.startsWith(perProcessPrefix)) {
                flushCurrent();
                if (std::optional<PartialAssertion> parsed = parsePerProcessLine(line)) {
                    current = std::move(*parsed);
                    pending = true;
                }
            } else if (pending) {
                if (const QStringView extra = text::trimmed(line); !extra.isEmpty())
                    current.appendExtra(extra);
            }
            break;
        }
    }
    flushCurrent();
    return snapshot;
}

} // namespace lullwick
