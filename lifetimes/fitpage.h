#pragma once

#include "lifetimes/fittext.h"

#include <QWidget>

class QLabel;
class QTableWidget;

namespace lifetimes
{

/// Constants, figures, correlations and residuals of a combined fit.
class FitPage : public QWidget
{
    Q_OBJECT

public:
    explicit FitPage(QWidget* parent = nullptr);

    /// Shows only tables that have rows. warns: the constants are not those of decay analyses.
    void showFit(const FitText& text, bool warns);

private:
    QTableWidget *m_constants, *m_figures, *m_correlations;
    QLabel* m_warning;
    QTableWidget* m_residuals;
};

} // namespace lifetimes
