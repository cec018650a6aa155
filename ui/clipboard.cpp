#include "ui/clipboard.h"

#include "ui/prompter.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace ui
{
namespace
{

// The toolkit waits for the program that holds the clipboard for 1 s under Wayland and for 5 s under X11.
constexpr qint64 kTimeOut = 1000; // ms

QString tr(const char* text) { return QCoreApplication::translate("ui::Clipboard", text); }

// Every request to a program that does not respond costs a time-out, and the clipboard's own text() makes up to three
// requests.
QString textOf(QClipboard::Mode mode)
{
    const QMimeData* held = QGuiApplication::clipboard()->mimeData(mode);
    const QStringList formats = held ? held->formats() : QStringList();
    for (const char* format : {"text/plain;charset=utf-8", "text/plain"})
        if (formats.contains(format))
            return QString::fromUtf8(held->data(format));
    return {};
}

} // namespace

void copyText(const QString& text) { QGuiApplication::clipboard()->setText(text); }

void copyImage(const QImage& image) { QGuiApplication::clipboard()->setImage(image); }

std::optional<QString> askedText(QClipboard::Mode mode)
{
    QElapsedTimer waited;
    waited.start();
    const QString text = textOf(mode);
    if (text.isEmpty() && waited.elapsed() >= kTimeOut)
        return std::nullopt;
    return text;
}

void tellOfSilentClipboard(Prompter& prompter)
{
    prompter.message(tr("The program that holds the clipboard does not answer.\r\nNothing was pasted."));
}

std::optional<QString> pastedText(Prompter& prompter)
{
    std::optional<QString> text = askedText();
    if (!text)
        tellOfSilentClipboard(prompter);
    return text;
}

} // namespace ui
