#include "app/sessionfile.h"

#include "app/sessiontext.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace app
{
namespace
{

constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF"; // in UTF-8

QString tr(const char* text) { return QCoreApplication::translate("app::SessionFile", text); }

/// Some editors write the mark before the text; it is not part of the text.
void removeByteOrderMark(QByteArray& bytes)
{
    if (bytes.startsWith(kByteOrderMark))
        bytes.remove(0, kByteOrderMark.size());
}

/// Latin-1 has a character for every byte, so saving loses nothing of a text in another encoding than the system's.
QString decoded(const QByteArray& bytes)
{
    QStringDecoder decode(QStringDecoder::System, QStringDecoder::Flag::Stateless);
    const QString text = decode(bytes);
    return decode.hasError() ? QString::fromLatin1(bytes) : text;
}

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

SessionFileText readSessionFile(const QString& path)
{
    if (const QString reason = notAFile(path); !reason.isEmpty())
        return {{}, reason};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    QByteArray bytes = file.read(kByteOrderMark.size() + static_cast<qint64>(kSessionFirstLine.size()) + 1);
    removeByteOrderMark(bytes);
    if (startsSession({bytes.data(), static_cast<std::size_t>(bytes.size())}))
        bytes += file.read(kMaxSessionBytes - bytes.size());
    if (file.error() != QFileDevice::NoError)
        return {{}, file.errorString()};
    return {decoded(bytes).toStdString(), {}};
}

QString writeSessionFile(const QString& path, std::string_view text)
{
    const QByteArray bytes = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toLocal8Bit();
    if (bytes.size() > kMaxSessionBytes)
        return tr("The session is longer than %1 bytes").arg(kMaxSessionBytes);
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
