#pragma once

#include <QLabel>
#include <QPushButton>

/// Controls of one line whose text is cut short with "..." where it has too little room. The tooltip and screen readers
/// have the whole text.
namespace ui
{

class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;
    void showText(const QString& text);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

class ElidedButton : public QPushButton
{
public:
    using QPushButton::QPushButton;
    void showText(const QString& text);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ui
