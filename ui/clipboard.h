#pragma once

#include <QString>

class QImage;

/// The system clipboard. Writing clears what it held.
namespace ui
{

void copyText(const QString& text);
void copyImage(const QImage& image);
QString clipboardText(); // empty when the clipboard holds no text

} // namespace ui
