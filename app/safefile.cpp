#include "app/safefile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace app
{
namespace
{

QString tr(const char* text) { return QCoreApplication::translate("app::SafeFile", text); }

/// Waits until the disk holds an open file or folder. Returns the reason of a failure; empty on success or if the file
/// system cannot wait.
QString waitForDisk(int handle)
{
    int result = 0;
    do
        result = ::fsync(handle);
    while (result != 0 && errno == EINTR);
    if (result == 0 || errno == EINVAL || errno == ENOTSUP)
        return {};
    return QString::fromStdString(std::generic_category().message(errno));
}

/// Waits until the disk holds the name of a file. A folder that may not be listed cannot be waited for.
QString waitForName(const QString& path)
{
    const QString folder = QFileInfo(QFileInfo(path).canonicalFilePath()).path(); // the file behind a link is replaced
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return {};
    const QString error = waitForDisk(handle);
    ::close(handle);
    return error.isEmpty() ? error : tr("The new file is in place, but a power cut may undo that: %1").arg(error);
}

} // namespace

QString notAFile(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile() ? tr("Not a regular file") : QString();
}

QString replaceFile(const QString& path, const QByteArray& bytes)
{
    if (const QString reason = notAFile(path); !reason.isEmpty())
        return reason;
    QSaveFile file(path);
    // Flush and wait here, because commit() does not report a full disk or a write error.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        return file.errorString();
    if (const QString error = waitForDisk(file.handle()); !error.isEmpty())
        return error;
    return file.commit() ? waitForName(path) : file.errorString();
}

} // namespace app
