#pragma once

#include <QClipboard>
#include <QLineEdit>

#include <functional>

namespace ui
{

/// The part of a text that a one-line box takes: the text up to its first line end, with blanks for tabs.
QString oneLine(const QString& text);

/// A text box of one line. A text that is pasted, dropped or committed by an input method becomes one line.
class TextBox : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    /// Receives each pasted, dropped or committed text that has several lines or tabs. Returns true if it used the text
    /// elsewhere; the box then takes nothing.
    std::function<bool(const QString& text)> takenElsewhere;

    /// Tints the box and marks its corner, because there is a remark on its text.
    void setRemarked(bool remarked);

signals:
    void clipboardSilent(); // the program that holds the clipboard did not answer a paste or the menu

public slots:
    void paste(); // the context menu looks the slot up by name and finds it instead of QLineEdit's

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    bool m_remarked = false;
    QString lineOf(const QString& text);
    void pasteFrom(QClipboard::Mode mode);
};

} // namespace ui
