#include "app/sessionfile.h"

#include "app/sessiontext.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace app
{
namespace
{

constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF"; // in UTF-8

QString tr(const char* text) { return QCoreApplication::translate("app::SessionFile", text); }

/// Why a path cannot hold a session whatever its permissions are: a pipe would wait for its other end, and saving
/// would put a file in the place of a device. Empty for a regular file and for a name that is still free.
QString notAFile(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile() ? tr("Not a regular file") : QString();
}

/// An editor may have put the mark before the text; it is not part of it.
void removeByteOrderMark(QByteArray& bytes)
{
    if (bytes.startsWith(kByteOrderMark))
        bytes.remove(0, kByteOrderMark.size());
}

/// Every byte is a character of Latin-1, so that saving loses none of a text that is not in the system's encoding.
QString decoded(const QByteArray& bytes)
{
    QStringDecoder decode(QStringDecoder::System, QStringDecoder::Flag::Stateless);
    const QString text = decode(bytes);
    return decode.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace

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
    // Flushed here: commit() would not notice that the disk has no room for what is still buffered.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        return file.errorString();
    return {};
}

} // namespace app
