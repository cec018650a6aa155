#pragma once

#include <QClipboard>
#include <QLineEdit>

#include <functional>

namespace ui
{

/// The text up to its first line end, with blanks for tabs: what a box of one line takes of it.
QString oneLine(const QString& text);

/// A text box of one line: whatever is pasted, dropped or committed by an input method becomes one line.
class TextBox : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Is offered each such text that is not one line; true: it went elsewhere, and the box takes nothing of it.
    std::function<bool(const QString& text)> takenElsewhere;

signals:
    void clipboardSilent(); // the program that holds the clipboard did not answer a paste

public slots:
    void paste(); // the context menu looks it up by name and so finds it in place of QLineEdit's

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    QString lineOf(const QString& text);
    void pasteFrom(QClipboard::Mode mode);
};

} // namespace ui
