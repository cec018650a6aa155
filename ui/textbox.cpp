#include "ui/textbox.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpression>

namespace ui
{
namespace
{

QString clipboardText(QClipboard::Mode mode) { return QGuiApplication::clipboard()->text(mode); }

} // namespace

QString oneLine(const QString& text)
{
    static const QRegularExpression lineEnd("[\r\n]");
    QString line = text.left(text.indexOf(lineEnd));
    return line.replace('\t', ' ');
}

QString TextBox::lineOf(const QString& text)
{
    const QString line = oneLine(text);
    return line != text && takenElsewhere && takenElsewhere(text) ? QString() : line;
}

/// False leaves a text that is one line to QLineEdit.
bool TextBox::takeLines(const QString& text)
{
    if (isReadOnly() || oneLine(text) == text)
        return false;
    insert(lineOf(text));
    return true;
}

void TextBox::paste()
{
    if (!takeLines(clipboardText(QClipboard::Clipboard)))
        QLineEdit::paste();
}

void TextBox::keyPressEvent(QKeyEvent* event)
{
    const bool selection = event->modifiers() & Qt::ControlModifier && event->modifiers() & Qt::ShiftModifier;
    if (!event->matches(QKeySequence::Paste) ||
        !takeLines(clipboardText(selection ? QClipboard::Selection : QClipboard::Clipboard)))
        QLineEdit::keyPressEvent(event);
}

// The press has put the caret where the text goes.
void TextBox::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection())
        return QLineEdit::mouseReleaseEvent(event);
    deselect();
    if (!takeLines(clipboardText(QClipboard::Selection)))
        QLineEdit::mouseReleaseEvent(event);
}

// With the focus, so that Esc discards the text.
void TextBox::dropEvent(QDropEvent* event)
{
    setFocus();
    const QString text = event->mimeData()->text();
    if (isReadOnly() || oneLine(text) == text)
        return QLineEdit::dropEvent(event);
    QDragLeaveEvent end;
    QLineEdit::dragLeaveEvent(&end); // takes away the caret that shows where the text would go
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    takeLines(text);
    event->acceptProposedAction();
}

void TextBox::inputMethodEvent(QInputMethodEvent* event)
{
    event->setCommitString(lineOf(event->commitString()), event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(event);
}

} // namespace ui
