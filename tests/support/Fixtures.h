#pragma once

#include <QByteArray>
#include <QString>

/// Captured tool output kept under tests/fixtures, and files a test writes for itself.
namespace Fixtures {

[[nodiscard]] QByteArray read(const QString &name);
[[nodiscard]] inline QString readText(const QString &name)
{
    return QString::fromUtf8(read(name));
}

/// Writes `bytes` to the file at `path`, replacing it; the test cannot go on without it.
void writeFile(const QString &path, const QByteArray &bytes = {});

/// A `pmset -g assertions` listing with `count` per-process lines, each followed by
/// continuation lines; every fourth assertion is created for one of `createdForPIDs` PIDs.
[[nodiscard]] QByteArray generatedAssertions(int count, int createdForPIDs = 8);

} // namespace Fixtures
