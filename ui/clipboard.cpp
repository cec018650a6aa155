#include "ui/clipboard.h"

#include "ui/prompter.h"

#include <QClipboard>
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

} // namespace

void copyText(const QString& text) { QGuiApplication::clipboard()->setText(text); }

void copyImage(const QImage& image) { QGuiApplication::clipboard()->setImage(image); }

// Every question to a program that hangs costs a time-out, and the clipboard's own text() asks up to three.
QString clipboardText()
{
    const QMimeData* held = QGuiApplication::clipboard()->mimeData();
    const QStringList formats = held ? held->formats() : QStringList();
    for (const char* format : {"text/plain;charset=utf-8", "text/plain"})
        if (formats.contains(format))
            return QString::fromUtf8(held->data(format));
    return {};
}

std::optional<QString> pastedText(Prompter& prompter)
{
    QElapsedTimer waited;
    waited.start();
    const QString text = clipboardText();
    if (!text.isEmpty() || waited.elapsed() < kTimeOut)
        return text;
    prompter.message(tr("The program that holds the clipboard does not answer.\r\nNothing was pasted."));
    return std::nullopt;
}

} // namespace ui
