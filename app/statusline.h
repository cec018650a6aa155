#pragma once

#include "ui/elided.h"

namespace app
{

/// The line at the foot of the main window: at its start the samples that the analyses read, at its end the verdict on
/// the last analysis or calculation, which is a button.
class StatusLine : public QWidget
{
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    void showSamples(const QString& text);
    /// opens: what a press opens, for the tooltip and for screen readers. A warning has an icon.
    void showVerdict(const QString& text, const QString& opens, bool warns);

signals:
    void verdictPressed(); // by a click, Enter, the space bar or a screen reader

private:
    ui::ElidedLabel* m_samples;
    ui::ElidedButton* m_verdict;
};

} // namespace app
