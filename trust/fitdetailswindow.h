#pragma once

#include "trust/detailstext.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTableWidget;

namespace trust
{

class ResidualPlot;

/// Shows fit details in tables; it calculates nothing.
class FitDetailsWindow : public QWidget
{
    Q_OBJECT

public:
    FitDetailsWindow();

    void showDetails(const FitDetails& details, const FitLabels& labels);

private:
    void layOut();
    void showTables(const DetailsText& text);

    QLabel *m_heading, *m_verdict, *m_remarks;
    QTableWidget *m_constants, *m_figures, *m_correlations;
    QLabel* m_residualsCaption;
    QTableWidget* m_residuals;
    ResidualPlot* m_plot;
    QPushButton *m_copy, *m_close;
    DetailsText m_text;
};

} // namespace trust
