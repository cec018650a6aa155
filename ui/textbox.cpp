#include "ui/textbox.h"

#include "ui/clipboard.h"
#include "ui/remark.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>

#include <utility>

namespace ui
{

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

// The toolkit's own paste would ask a program that does not respond several times.
void TextBox::pasteFrom(QClipboard::Mode mode)
{
    if (isReadOnly())
        return;
    if (const std::optional<QString> text = askedText(mode))
        insert(lineOf(*text));
    else
        emit clipboardSilent();
}

void TextBox::paste() { pasteFrom(QClipboard::Clipboard); }

// A box without a change to undo leaves the key to the window's menu.
bool TextBox::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->matches(QKeySequence::Undo) && !isUndoAvailable()) ||
            (key->matches(QKeySequence::Redo) && !isRedoAvailable())) {
            event->ignore();
            return false;
        }
    }
    return QLineEdit::event(event);
}

void TextBox::setRemarked(bool remarked)
{
    if (remarked == std::exchange(m_remarked, remarked))
        return;
    setPalette({}); // follows the desktop again
    if (remarked) {
        QPalette tinted = palette();
        tinted.setColor(QPalette::Base, remarkGround(tinted.color(QPalette::Base)));
        setPalette(tinted);
    }
}

void TextBox::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (!m_remarked)
        return;
    QPainter painter(this);
    paintRemarkCorner(painter, rect(), palette().color(QPalette::Text));
}

void TextBox::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Paste))
        return QLineEdit::keyPressEvent(event);
    const bool selection = event->modifiers() & Qt::ControlModifier && event->modifiers() & Qt::ShiftModifier;
    pasteFrom(selection ? QClipboard::Selection : QClipboard::Clipboard);
}

// The toolkit's menu looks into the clipboard three times, and each look at a program that hangs costs a time-out.
void TextBox::contextMenuEvent(QContextMenuEvent* event)
{
    if (isReadOnly() || askedText())
        QLineEdit::contextMenuEvent(event);
    else
        emit clipboardSilent();
}

// The mouse press has already placed the caret.
void TextBox::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection())
        return QLineEdit::mouseReleaseEvent(event);
    deselect();
    pasteFrom(QClipboard::Selection);
}

// The box takes the focus, so that Esc discards the text.
void TextBox::dropEvent(QDropEvent* event)
{
    setFocus();
    const QString text = event->mimeData()->text();
    if (isReadOnly() || oneLine(text) == text)
        return QLineEdit::dropEvent(event);
    event->setDropAction(Qt::CopyAction); // a move would also remove the part that the box does not take
    QDragLeaveEvent end;
    QLineEdit::dragLeaveEvent(&end); // removes the caret that shows the drop position
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    insert(lineOf(text));
    event->accept();
}

void TextBox::inputMethodEvent(QInputMethodEvent* event)
{
    event->setCommitString(lineOf(event->commitString()), event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(event);
}

} // namespace ui
