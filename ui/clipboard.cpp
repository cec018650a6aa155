#include "ui/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

namespace ui
{

void copyText(const QString& text) { QGuiApplication::clipboard()->setText(text); }

void copyImage(const QImage& image) { QGuiApplication::clipboard()->setImage(image); }

QString clipboardText() { return QGuiApplication::clipboard()->text(); }

} // namespace ui
