#include "app/tablefile.h"

#include "app/safefile.h"
#include "imports/encoding.h"

#include <QCoreApplication>
#include <QFile>

namespace app
{
namespace
{

QString tr(const char* text) { return QCoreApplication::translate("app::TableFile", text); }

TableText checked(std::string_view text)
{
    if (const std::string complaint = imports::complaintAboutSize(text); !complaint.empty())
        return {{}, QString::fromStdString(complaint)};
    return {imports::withPlainLineEnds(text), {}};
}

} // namespace

TableText readTableFile(const QString& path)
{
    constexpr qint64 kMostFileBytes = 2 * imports::kMostBytes; // as UTF-16
    if (const QString reason = notAFile(path); !reason.isEmpty())
        return {{}, reason};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    const QByteArray bytes = file.read(kMostFileBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return {{}, file.errorString()};
    const std::string_view read(bytes.data(), static_cast<std::size_t>(bytes.size()));
    if (bytes.size() > kMostFileBytes)
        return checked(read);
    const auto text = imports::decodedText(read);
    if (!text)
        return {{},
                tr("It is not a text. Save the table as CSV or as text, or copy its cells and choose \"Paste "
                   "Samples...\".")};
    return checked(*text);
}

TableText tableOf(const QString& clipboardText)
{
    if (clipboardText.trimmed().isEmpty())
        return {{}, tr("The clipboard holds no text.\r\nCopy the cells of the table first.")};
    return checked(clipboardText.toStdString());
}

} // namespace app
