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

QString caption(const QLabel&, const QString& text) { return text; }

// An "&" would underline the next letter.
QString caption(const QPushButton&, const QString& text) { return QString(text).replace('&', "&&"); }

} // namespace

template <class Control>
void Elided<Control>::showText(const QString& text)
{
    this->setText(caption(*this, text));
    this->setToolTip(text);
    this->updateGeometry();
}

template <class Control>
QSize Elided<Control>::minimumSizeHint() const
{
    return this->sizeHint().boundedTo({kFewestCharacters * this->fontMetrics().averageCharWidth(), QWIDGETSIZE_MAX});
}

template <>
void ElidedLabel::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    const QString shown = leftToRight(fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    const int start = static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter));
    painter.drawItemText(rect(), start, palette(), isEnabled(), shown, foregroundRole());
}

template <>
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

template class Elided<QLabel>;
template class Elided<QPushButton>;

} // namespace ui
