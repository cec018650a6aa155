#pragma once

#include <QString>

#include <optional>

class QImage;

/// The system clipboard. Writing clears what it held.
namespace ui
{

class Prompter;

void copyText(const QString& text);
void copyImage(const QImage& image);
QString clipboardText(); // empty when the clipboard holds no text

/// The text to paste. nullopt when the program that holds the clipboard does not answer, and the user has been told.
std::optional<QString> pastedText(Prompter& prompter);

} // namespace ui
