#include "trust/fitdetailswindow.h"

#include "trust/residualplot.h"
#include "trust/tableview.h"
#include "ui/clipboard.h"
#include "ui/closing.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace trust
{
namespace
{

QLabel* namedLabel(const char* name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    return label;
}

} // namespace

FitDetailsWindow::FitDetailsWindow()
    : m_heading(namedLabel("lblFit", this)), m_verdict(namedLabel("lblVerdict", this)),
      m_remarks(namedLabel("lblRemarks", this)), m_constants(makeTable("grdConstants", tr("Constants"), this)),
      m_figures(makeTable("grdFigures", tr("Figures of the fit"), this)),
      m_correlations(makeTable("grdCorrelations", tr("Correlations of the constants"), this)),
      m_residualsCaption(new QLabel(tr("&Residuals, also drawn against Q:"), this)),
      m_residuals(makeTable("grdResiduals", tr("Residuals"), this)), m_plot(new ResidualPlot(this)),
      m_copy(new QPushButton(tr("&Copy"), this)), m_close(new QPushButton(tr("C&lose"), this))
{
    setWindowTitle(tr("Fit Details"));
    m_heading->setText(tr("No analysis has been run yet."));
    m_copy->setObjectName("cmdCopyDetails");
    m_copy->setEnabled(false);
    m_close->setObjectName("cmdCloseDetails");
    QFont bold = m_verdict->font();
    bold.setBold(true);
    m_verdict->setFont(bold);
    for (QLabel* label : {m_verdict, m_remarks})
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layOut();
    ui::closeOnEscape(*this);
    m_close->setFocus();
    connect(m_copy, &QPushButton::clicked, this, [this] { ui::copyText(qtText(plainText(m_text))); });
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
}

void FitDetailsWindow::layOut()
{
    auto* residuals = new QHBoxLayout;
    m_residuals->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents); // all columns, if there is room
    residuals->addWidget(m_residuals);
    residuals->addWidget(m_plot, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_copy);
    buttons->addWidget(m_close);
    m_residualsCaption->setBuddy(m_residuals);
    auto* layout = new QVBoxLayout(this);
    for (QLabel* label : {m_heading, m_verdict, m_remarks})
        layout->addWidget(label);
    for (QTableWidget* table : {m_constants, m_figures, m_correlations}) {
        table->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents); // only as high as its rows
        table->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
        layout->addWidget(table);
    }
    layout->addWidget(m_residualsCaption);
    layout->addLayout(residuals, 1);
    layout->addLayout(buttons);
    layout->addStretch();
    showTables({});
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
    QVector<QPointF> points;
    for (std::size_t i = 0; i < std::min(labels.Q.size(), details.residuals.size()); ++i)
        points << QPointF(labels.Q[i], details.residuals[i]);
    m_plot->setPoints(points);
    m_copy->setEnabled(true);
}

} // namespace trust
