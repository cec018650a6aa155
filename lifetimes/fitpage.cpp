#include "lifetimes/fitpage.h"

#include "lifetimes/overviewtext.h"
#include "trust/tableview.h"
#include "ui/wrappinglabel.h"

#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace lifetimes
{

FitPage::FitPage(QWidget* parent)
    : QWidget(parent), m_constants(trust::makeTable("grdTogetherConstants", tr("Constants"), this)),
      m_figures(trust::makeTable("grdTogetherFigures", tr("Figures of the fit"), this)),
      m_correlations(trust::makeTable("grdTogetherCorrelations", tr("Correlations of the constants"), this)),
      m_warning(ui::wrappingLabel("lblDecayWarning", this)),
      m_residuals(trust::makeTable("grdTogetherResiduals", tr("Residuals"), this))
{
    m_warning->setText(trust::qtText(std::string(kDecayWarning)));
    auto* layout = new QVBoxLayout(this);
    for (QTableWidget* table : {m_constants, m_correlations, m_figures}) {
        trust::keepAsHighAsRows(*table);
        layout->addWidget(table);
    }
    layout->insertWidget(1, m_warning);
    layout->addWidget(m_residuals, 1);
    layout->addStretch();
}

void FitPage::showFit(const FitText& text, bool warns)
{
    m_warning->setVisible(warns);
    const std::pair<QTableWidget*, const trust::TitledRows&> tables[]{{m_constants, text.constants},
                                                                      {m_figures, text.figures},
                                                                      {m_correlations, text.correlations},
                                                                      {m_residuals, text.residuals}};
    for (const auto& [table, rows] : tables) {
        trust::fillTable(*table, rows);
        table->setVisible(!rows.empty());
    }
}

} // namespace lifetimes
