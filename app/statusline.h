#pragma once

#include <QWidget>

namespace ui
{
class ElidedLabel;
}

namespace app
{

/// The line at the foot of the main window. It tells which samples the analyses read.
class StatusLine : public QWidget
{
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void showSamples(const QString& text);

private:
    ui::ElidedLabel* m_samples;
};

} // namespace app
