#include "ui/elided.h"

#include <QStylePainter>

namespace ui
{
namespace
{

constexpr int kFewestCharacters = 6; // that stay in view

int leastWidth(const QWidget& widget) { return kFewestCharacters * widget.fontMetrics().averageCharWidth(); }

} // namespace

void ElidedLabel::showText(const QString& text)
{
    setText(text);
    setToolTip(text);
}

QSize ElidedLabel::minimumSizeHint() const { return {leastWidth(*this), QLabel::minimumSizeHint().height()}; }

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    const int start = static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter));
    painter.drawItemText(rect(), start, palette(), isEnabled(), shown, foregroundRole());
}

} // namespace ui
