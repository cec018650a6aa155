#pragma once

#include <QLabel>
#include <QPushButton>

namespace ui
{

/// A control of one line whose text is cut short with "..." where it has too little room. The tooltip and screen
/// readers have the whole text.
template <class Control>
class Elided final : public Control
{
public:
    using Control::Control;
    void showText(const QString& text);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

using ElidedLabel = Elided<QLabel>;
using ElidedButton = Elided<QPushButton>;

} // namespace ui
