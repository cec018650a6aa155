#include "trust/fitdetailswindow.h"

#include "trust/errorschoice.h"
#include "trust/printpage.h"
#include "trust/profilepage.h"
#include "trust/seriesplot.h"
#include "trust/tableview.h"
#include "ui/clipboard.h"
#include "ui/closing.h"
#include "ui/oldernote.h"
#include "ui/wrappinglabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace trust
{

FitDetailsWindow::FitDetailsWindow()
    : m_heading(ui::wrappingLabel("lblFit", this)), m_verdict(ui::wrappingLabel("lblVerdict", this)),
      m_remarks(ui::wrappingLabel("lblRemarks", this)), m_errors(new ErrorsChoice(this)),
      m_assumption(ui::wrappingLabel("lblAssumption", this)), m_pages(new QTabWidget(this)),
      m_constants(makeTable("grdConstants", tr("Constants"), this)),
      m_figures(makeTable("grdFigures", tr("Figures of the fit"), this)),
      m_correlations(makeTable("grdCorrelations", tr("Correlations of the constants"), this)),
      m_residualsCaption(new QLabel(tr("Resi&duals, also drawn against Q:"), this)),
      m_residuals(makeTable("grdResiduals", tr("Residuals"), this)),
      m_plot(new SeriesPlot("picResiduals", tr("Residual"), SeriesPlot::Range::AroundZero, this)),
      m_profiles(new ProfilePage(this)), m_leftOut(makeTable("grdLeftOut", tr("The fit without each sample"), this)),
      m_print(new PrintPage(this)), m_copy(new QPushButton(tr("&Copy"), this)),
      m_close(new QPushButton(tr("C&lose"), this))
{
    setWindowTitle(tr("Fit Details"));
    m_heading->setText(tr("No analysis has been run yet."));
    m_plot->setAccessibleName(tr("Plot of the residuals; their list holds the same numbers"));
    m_copy->setObjectName("cmdCopyDetails");
    m_copy->setEnabled(false);
    m_close->setObjectName("cmdCloseDetails");
    QFont bold = m_verdict->font();
    bold.setBold(true);
    m_verdict->setFont(bold);
    layOut();
    ui::closeOnEscape(*this);
    m_close->setFocus();
    connect(m_copy, &QPushButton::clicked, this, [this] { ui::copyText(qtText(plainText(m_text))); });
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
    connect(m_errors, &ErrorsChoice::errorsChanged, this, &FitDetailsWindow::errorsChanged);
    connect(m_print, &PrintPage::typedErrorsChanged, this, &FitDetailsWindow::typedErrorsChanged);
}

void FitDetailsWindow::layOut()
{
    m_pages->setObjectName("tabDetails");
    m_pages->addTab(fitPage(), tr("F&it"));
    m_pages->addTab(m_profiles, tr("Fit under the &Assumption"));
    m_pages->addTab(samplesPage(), tr("Samples Left &Out"));
    m_pages->addTab(m_print, tr("To Prin&t"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_copy);
    buttons->addWidget(m_close);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_heading, ui::makeOlderNote(this), m_verdict, m_remarks,
                                                           m_errors, m_assumption})
        layout->addWidget(widget);
    layout->addWidget(m_pages, 1);
    layout->addLayout(buttons);
    showTables({});
    showErrors({});
}

QWidget* FitDetailsWindow::fitPage()
{
    auto* page = new QWidget(this);
    auto* residuals = new QHBoxLayout;
    m_residuals->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents); // all columns, if there is room
    residuals->addWidget(m_residuals);
    residuals->addWidget(m_plot, 1);
    m_residualsCaption->setBuddy(m_residuals);
    auto* layout = new QVBoxLayout(page);
    for (QTableWidget* table : {m_constants, m_figures, m_correlations}) {
        keepAsHighAsRows(*table);
        layout->addWidget(table);
    }
    layout->addWidget(m_residualsCaption);
    layout->addLayout(residuals, 1);
    layout->addStretch();
    return page;
}

QWidget* FitDetailsWindow::samplesPage()
{
    auto* page = new QWidget(this);
    auto* caption = new QLabel(tr("The fit without each sa&mple:"), page);
    caption->setBuddy(m_leftOut);
    auto* meaning = new QLabel(tr("Influence is the largest change of a constant in units of its standard error, "
                                  "outlyingness the drop of the sum of squares."),
                               page);
    meaning->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(caption);
    layout->addWidget(meaning);
    layout->addWidget(m_leftOut, 1);
    return page;
}

/// Shows only tables that have rows.
void FitDetailsWindow::showTables(const DetailsText& text)
{
    const std::pair<QTableWidget*, const TitledRows&> tables[]{{m_constants, text.constants},
                                                               {m_figures, text.figures},
                                                               {m_correlations, text.correlations},
                                                               {m_residuals, text.residuals}};
    for (const auto& [table, rows] : tables) {
        fillTable(*table, rows);
        table->setVisible(!rows.empty());
    }
    for (QWidget* beside : std::initializer_list<QWidget*>{m_residualsCaption, m_plot})
        beside->setVisible(!text.residuals.empty());
}

void FitDetailsWindow::showDetails(const FitDetails& details, const FitLabels& labels)
{
    m_text = detailsText(details, labels);
    m_heading->setText(qtText(m_text.heading));
    m_verdict->setText(qtText(m_text.verdict));
    m_remarks->setText(qtText(m_text.remarks));
    m_remarks->setVisible(!m_text.remarks.empty());
    showTables(m_text);
    showErrors(details);
    if (!details.errors && !m_text.residuals.empty())
        m_text.errors.assumption = m_assumption->text().toStdString(); // why there are none
    QVector<QPointF> points;
    for (std::size_t i = 0; i < std::min(labels.Q.size(), details.residuals.size()); ++i)
        points << QPointF(labels.Q[i], details.residuals[i]);
    m_plot->setSeries({{.points = points}});
    m_copy->setEnabled(true);
}

/// Only ratios have errors.
void FitDetailsWindow::showErrors(const FitDetails& details)
{
    const bool any = details.errors.has_value();
    for (QWidget* widget : std::initializer_list<QWidget*>{m_errors, m_assumption})
        widget->setVisible(!m_text.residuals.empty());
    for (const QWidget* page : std::initializer_list<QWidget*>{m_profiles, m_leftOut->parentWidget(), m_print})
        m_pages->setTabVisible(m_pages->indexOf(page), any);
    if (!any)
        return;
    m_assumption->setText(qtText(m_text.errors.assumption));
    m_profiles->showErrors(*details.errors, m_text.errors);
    fillTable(*m_leftOut, m_text.errors.leftOut);
    m_print->showErrors(m_text.errors);
}

void FitDetailsWindow::showSettings(const ErrorSettings& settings, const QString& complaint)
{
    m_errors->setErrors(settings.errors);
    m_print->setTyped(settings.typed);
    if (!complaint.isEmpty())
        m_assumption->setText(tr("%1 Until then the errors below take all ratios to scatter alike.").arg(complaint));
}

} // namespace trust
