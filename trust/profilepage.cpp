#include "trust/profilepage.h"

#include "trust/profileplot.h"
#include "trust/tableview.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace trust
{

ProfilePage::ProfilePage(QWidget* parent)
    : QWidget(parent), m_constants(makeTable("grdAssumed", tr("Constants fitted under the assumption"), this)),
      m_figures(makeTable("grdAssumedFigures", tr("Figures of the fit under the assumption"), this)),
      m_plot(new ProfilePlot(this))
{
    m_constants->setSelectionBehavior(QAbstractItemView::SelectRows);
    auto* caption = new QLabel(tr("Constants &fitted so; a click draws the profile:"), this);
    caption->setWordWrap(true);
    caption->setBuddy(m_constants);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    for (QTableWidget* table : {m_constants, m_figures}) {
        keepAsHighAsRows(*table);
        layout->addWidget(table);
    }
    layout->addWidget(m_plot, 1);
    connect(m_constants, &QTableWidget::currentCellChanged, this, &ProfilePage::drawProfile);
}

void ProfilePage::showErrors(const ErrorDetails& details, const ErrorText& text)
{
    const int row = std::max(0, m_constants->currentRow());
    m_details = details;
    m_text = text;
    {
        const QSignalBlocker filling(m_constants);
        fillTable(*m_constants, text.constants);
    }
    fillTable(*m_figures, text.figures);
    const int last = m_constants->rowCount() - 1;
    m_constants->setCurrentCell(std::min(row, last), 0);
    drawProfile(m_constants->currentRow());
}

void ProfilePage::drawProfile(int row)
{
    const auto chosen = static_cast<std::size_t>(row);
    if (row < 0 || chosen >= m_details.ratioFit.free.size())
        return m_plot->setProfile({}, {}, 0, {});
    const std::size_t slot = m_details.ratioFit.free[chosen];
    const leastsquares::Minimum& minimum = m_details.fit.minimum;
    m_plot->setProfile(m_details.profiles[slot], {minimum.values[slot], minimum.sumOfSquares},
                       leastsquares::highestSum(minimum, m_details.fit.scatter),
                       qtText(m_text.constants[chosen + 1].front()));
}

} // namespace trust
