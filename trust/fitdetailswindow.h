#pragma once

#include "trust/detailstext.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTabWidget;
class QTableWidget;

namespace trust
{

class ErrorsChoice;
class PrintPage;
class ProfilePage;
class SeriesPlot;

/// Shows fit details in tables, on pages for the fit, the fit under the assumption about errors, the samples and the
/// constants ready to print; it calculates nothing.
class FitDetailsWindow : public QWidget
{
    Q_OBJECT

public:
    FitDetailsWindow();

    void showDetails(const FitDetails& details, const FitLabels& labels);
    /// What is chosen and typed about errors. complaint: why it cannot be used; empty if it can.
    void showSettings(const ErrorSettings& settings, const QString& complaint);

signals:
    void errorsChanged(const noise::Errors& errors);
    void typedErrorsChanged(const noise::TypedErrors& typed);

private:
    void layOut();
    QWidget* fitPage();
    QWidget* samplesPage();
    void showErrors(const FitDetails& details);
    void showTables(const DetailsText& text);

    QLabel *m_heading, *m_verdict, *m_remarks;
    ErrorsChoice* m_errors;
    QLabel* m_assumption;
    QTabWidget* m_pages;
    QTableWidget *m_constants, *m_figures, *m_correlations;
    QLabel* m_residualsCaption;
    QTableWidget* m_residuals;
    SeriesPlot* m_plot;
    ProfilePage* m_profiles;
    QTableWidget* m_leftOut;
    PrintPage* m_print;
    QPushButton *m_copy, *m_close;
    DetailsText m_text;
};

} // namespace trust
