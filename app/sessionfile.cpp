#include "app/sessionfile.h"

#include "app/sessiontext.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace app
{
namespace
{

QString tr(const char* text) { return QCoreApplication::translate("app::SessionFile", text); }

/// Why a path cannot hold a session whatever its permissions are: a pipe would wait for its other end, and saving
/// would put a file in the place of a device. Empty for a regular file and for a name that is still free.
QString notAFile(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile() ? tr("Not a regular file") : QString();
}

} // namespace

SessionFileText readSessionFile(const QString& path)
{
    if (const QString reason = notAFile(path); !reason.isEmpty())
        return {{}, reason};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    QByteArray bytes = file.read(static_cast<qint64>(kSessionFirstLine.size()) + 1);
    if (startsSession({bytes.data(), static_cast<std::size_t>(bytes.size())}))
        bytes += file.read(kMaxSessionBytes - bytes.size());
    if (file.error() != QFileDevice::NoError)
        return {{}, file.errorString()};
    return {QString::fromLocal8Bit(bytes).toStdString(), {}};
}

QString writeSessionFile(const QString& path, std::string_view text)
{
    const QByteArray bytes = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toLocal8Bit();
    if (bytes.size() > kMaxSessionBytes)
        return tr("The session is longer than %1 bytes").arg(kMaxSessionBytes);
    if (const QString reason = notAFile(path); !reason.isEmpty())
        return reason;
    QSaveFile file(path);
    // Flushed here: commit() would not notice that the disk has no room for what is still buffered.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        return file.errorString();
    return {};
}

} // namespace app
