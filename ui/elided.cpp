#include "ui/elided.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace ui
{
namespace
{

constexpr int kFewestCharacters = 18; // that stay in view

/// On a right-to-left desktop, "7 of 7 samples" without the marks would appear as "of 7 samples 7".
QString leftToRight(const QString& text)
{
    constexpr QChar kMark(0x200e);
    return kMark + text + kMark;
}

QSize leastSize(const QWidget& widget)
{
    return widget.sizeHint().boundedTo({kFewestCharacters * widget.fontMetrics().averageCharWidth(), QWIDGETSIZE_MAX});
}

} // namespace

void ElidedLabel::showText(const QString& text)
{
    setText(text);
    setToolTip(text);
}

QSize ElidedLabel::minimumSizeHint() const { return leastSize(*this); }

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    const QString shown = leftToRight(fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    const int start = static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter));
    painter.drawItemText(rect(), start, palette(), isEnabled(), shown, foregroundRole());
}

// An "&" would underline the next letter.
void ElidedButton::showText(const QString& text)
{
    setText(QString(text).replace('&', "&&"));
    setToolTip(text);
    updateGeometry();
}

QSize ElidedButton::minimumSizeHint() const { return leastSize(*this); }

void ElidedButton::paintEvent(QPaintEvent*)
{
    QStyleOptionButton button;
    initStyleOption(&button);
    const QRect room = style()->subElementRect(QStyle::SE_PushButtonContents, &button, this);
    const int icon = button.icon.isNull() ? 0 : button.iconSize.width() + 4;
    button.text =
        leftToRight(fontMetrics().elidedText(button.text, Qt::ElideRight, room.width() - icon, Qt::TextShowMnemonic));
    QStylePainter(this).drawControl(QStyle::CE_PushButton, button);
}

} // namespace ui
