#include "Fixtures.h"

#include <QFile>

namespace Fixtures {

QByteArray read(const QString &name)
{
    QFile file(QStringLiteral(LULLWICK_FIXTURES_DIR "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing fixture %s", qPrintable(name));
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

void writeDesktopEntry(const QString &folder, const QString &id, const QString &name, const QByteArray &extra,
                       const QByteArray &script)
{
    const QString program = folder + QStringLiteral("/bin-") + id;
    if (!script.isNull()) {
        writeFile(program, "#!/bin/sh\n" + script);
        QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
    }
    writeFile(folder + u'/' + id + QStringLiteral(".desktop"),
              "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=\"" + program.toUtf8() +
                  "\" --from-entry %U\n" + extra);
}

QByteArray generatedAssertions(int count, int createdForPIDs)
{
    static const char *const types[] = {
        "PreventUserIdleSystemSleep",  "PreventSystemSleep", "BackgroundTask", "UserIsActive",
        "PreventUserIdleDisplaySleep", "ExternalMedia"};
    QByteArray out = "Assertion status system-wide:\n"
                     "   BackgroundTask                 1\n"
                     "   PreventUserIdleSystemSleep     1\n"
                     "   UserIsActive                   1\n"
                     "Listed by owning process:\n";
    out.reserve(out.size() + qsizetype(count) * 140);
    for (int i = 0; i < count; ++i) {
        out += "   pid " + QByteArray::number(100 + i) + "(process" + QByteArray::number(i % 97) + "): [0x" +
               QByteArray::number(0x1000 + i, 16) + "] 00:" + QByteArray::number(10 + i % 50) + ":0" +
               QByteArray::number(i % 10) + ' ' + types[i % 6] + " named: \"reason number " +
               QByteArray::number(i) + "\" \n";
        if (i % 4 == 0)
            out += "\tCreated for PID: " + QByteArray::number(5000 + (i / 4) % createdForPIDs) + ". \n";
        if (i % 3 == 0)
            out += "\tTimeout will fire in 3600 secs Action=TimeoutActionRelease\n";
    }
    out +=
        "Kernel Assertions: 0x4=USB\n"
        "   id=500  level=255 0x4=USB mod=1/1/70, 10:00 AM description=com.apple.usb.externaldevice.14100000 "
        "owner=Keyboard\n";
    return out;
}

} // namespace Fixtures
