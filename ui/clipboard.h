#pragma once

#include <QClipboard>
#include <QString>

#include <optional>

class QImage;

/// The system clipboard. Writing clears what it held.
namespace ui
{

class Prompter;

void copyText(const QString& text);
void copyImage(const QImage& image);

/// The text from the program that holds the clipboard, which is asked once. nullopt if it does not answer.
std::optional<QString> askedText(QClipboard::Mode mode = QClipboard::Clipboard);
void tellOfSilentClipboard(Prompter& prompter);

/// The text to paste. nullopt if the program that holds the clipboard does not answer, and the user has been told.
std::optional<QString> pastedText(Prompter& prompter);

} // namespace ui
