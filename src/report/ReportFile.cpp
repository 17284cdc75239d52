#include "report/ReportFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lullwick {

namespace {

QString reason(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/// Writes all of `bytes` to `fd`; the errno of the first failure, or 0.
int writeAll(int fd, const QByteArray &bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return errno;
        done += n;
    }
    return 0;
}

} // namespace

std::optional<QString> ReportFile::replace(const QString &path, const QByteArray &bytes)
{
    const QFileInfo target(path);
    // Hidden, and not ending in the target's suffix: a textfile collector reads "*.prom" only.
    QByteArray temporary = QFile::encodeName(
        target.absoluteDir().filePath(u'.' + target.fileName() + QStringLiteral(".XXXXXX")));
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0)
        return reason(errno);
    int error = writeAll(fd, bytes);
    // A rename only orders the name; without fsync a crash may leave the new name on empty data.
    if (error == 0 && ::fsync(fd) != 0)
        error = errno;
    // mkstemp makes the file 0600; readers such as node_exporter run as another user.
    if (error == 0 && ::fchmod(fd, 0644) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(temporary.constData(), QFile::encodeName(path).constData()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(temporary.constData());
        return reason(error);
    }
    return std::nullopt;
}

} // namespace lullwick
