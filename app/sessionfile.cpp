#include "app/sessionfile.h"

#include "app/safefile.h"
#include "app/sessiontext.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringDecoder>

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
    return replaceFile(path, bytes);
}

} // namespace app
