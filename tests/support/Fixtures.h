#pragma once

#include <QByteArray>
#include <QString>

/// Captured tool output and expected copies kept under tests/fixtures, and files a test writes for itself.
namespace Fixtures {

[[nodiscard]] QByteArray read(const QString &name);
[[nodiscard]] inline QString readText(const QString &name)
{
    return QString::fromUtf8(read(name));
}

/// Writes `bytes` to the file at `path`, replacing it; the test cannot go on without it.
void writeFile(const QString &path, const QByteArray &bytes = {});

/// Writes `folder`/`id`.desktop, an application entry named `name` that starts `folder`/bin-`id`
/// with the argument --from-entry and a field code, and has the lines `extra` too. The program is
/// a shell script running `script`; with a null `script` there is none.
void writeDesktopEntry(const QString &folder, const QString &id, const QString &name,
                       const QByteArray &extra = {}, const QByteArray &script = "");

/// A `pmset -g assertions` listing with `count` per-process lines, each followed by
/// continuation lines; every fourth assertion is created for one of `createdForPIDs` PIDs.
[[nodiscard]] QByteArray generatedAssertions(int count, int createdForPIDs = 8);

} // namespace Fixtures
