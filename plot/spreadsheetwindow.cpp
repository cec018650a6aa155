#include "plot/spreadsheetwindow.h"

#include "ui/clipboard.h"
#include "ui/fittingfont.h"
#include "ui/grid.h"
#include "ui/twips.h"

#include <QAction>
#include <QLineEdit>
#include <QMenuBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cassert>

namespace plot
{
namespace
{

constexpr int kWidthTwips = 4000; // initial size of the window
constexpr int kHeightTwips = 2000;
constexpr int kMarginTwips = 120;
constexpr int kGridTopTwips = 480; // below the menu, with the cell text above it
constexpr int kTitleColumnTwips = 1100;

} // namespace

SpreadSheet::SpreadSheet(QWidget* parent)
    : OutputWindow(parent), m_grid(new ui::Grid(this)), m_cellText(new QLineEdit(this))
{
    m_grid->setObjectName("MSHFlexGrid1");
    m_grid->setAccessibleName("Values");
    m_grid->setColumnTwips(0, kTitleColumnTwips);
    m_cellText->setReadOnly(true);
    m_cellText->setAccessibleName("Current cell");
    const qreal larger = ui::enlargement(font());
    m_cellText->setFixedHeight(qRound(ui::toPixels(kGridTopTwips - kMarginTwips) * larger));
    const int margin = ui::toPixels(kMarginTwips);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, 0, 0); // the grid extends to the right and lower edges of the window
    layout->setSpacing(0);
    layout->addWidget(m_cellText);
    layout->addWidget(m_grid);
    setUpMenu();
    connect(m_grid, &ui::Grid::currentCellMoved, this, &SpreadSheet::currentCellMoved);
    setTabOrder(m_cellText, m_grid);
    m_grid->setFocus();
    SetTitle("Table");
    resize(QSize(ui::toPixels(kWidthTwips), ui::toPixels(kHeightTwips)) * larger);
}

void SpreadSheet::setUpMenu()
{
    auto* menuBar = new QMenuBar(this);
    QMenu* edit = menuBar->addMenu("&Edit");
    QAction* copy = edit->addAction("&Copy", QKeySequence::Copy, this, &SpreadSheet::copyTable);
    copy->setObjectName("Copy_Acc");
    layout()->setMenuBar(menuBar);
}

void SpreadSheet::ClearSheet()
{
    for (int row = 0; row < m_grid->rows(); ++row)
        for (int column = 0; column < m_grid->columns(); ++column)
            m_grid->setText(row, column, QString());
    m_texts.clear();
    m_cellText->clear();
}

void SpreadSheet::SetTitle(std::string_view title) { setWindowTitle(QString::fromUtf8(title)); }

void SpreadSheet::Rows(int count) { m_grid->setCounts(std::clamp(count, 1, kTableRows), m_grid->columns()); }

void SpreadSheet::Cols(int count) { m_grid->setCounts(m_grid->rows(), std::clamp(count, 1, kTableColumns)); }

void SpreadSheet::Locate(int column, int row)
{
    m_row = row;
    m_column = column;
    if (m_redraw)
        showPosition();
}

void SpreadSheet::Row(int row) { Locate(m_column, row); }

void SpreadSheet::col(int column) { Locate(column, m_row); }

void SpreadSheet::Value(std::string_view txt)
{
    const bool kept = m_row >= 0 && m_row < kTableRows && m_column >= 0 && m_column < kTableColumns;
    assert(kept);
    if (!kept)
        return;
    if (m_row >= m_grid->rows() || m_column >= m_grid->columns())
        m_grid->setCounts(std::max(m_row + 1, m_grid->rows()), std::max(m_column + 1, m_grid->columns()));
    m_grid->setText(m_row, m_column, QString::fromUtf8(txt));
    m_texts.set(m_row, m_column, txt);
    if (m_redraw)
        showPosition();
}

void SpreadSheet::setRedraw(bool on)
{
    m_redraw = on;
    m_grid->setRedraw(on);
    if (on)
        showPosition();
}

void SpreadSheet::SaveCSV(std::string_view) {}

/// Makes the written cell the grid's current cell. A newly filled table stays scrolled to its start.
void SpreadSheet::showPosition()
{
    m_grid->setAutoScroll(false);
    m_grid->selectCell(m_row, m_column);
    m_grid->setAutoScroll(true);
    m_cellText->setText(m_grid->text(m_grid->currentRow(), m_grid->currentColumn()));
}

void SpreadSheet::currentCellMoved()
{
    if (!m_redraw)
        return; // filling uses its own position
    m_row = m_grid->currentRow();
    m_column = m_grid->currentColumn();
    m_cellText->setText(m_grid->text(m_row, m_column));
}

void SpreadSheet::copyTable() { ui::copyText(QString::fromStdString(m_texts.copyText())); }

} // namespace plot
