#pragma once

#include "app/resultstore.h"

#include <QStringList>
#include <QWidget>

class QPushButton;

namespace ui
{
class Grid;
}

namespace app
{

struct SharedState;

/// The stored results under the label "Results", with the five buttons that work on them. The store is the truth;
/// the grid is redrawn from it.
class ResultsTable : public QWidget, public ResultSink
{
    Q_OBJECT

public:
    explicit ResultsTable(SharedState& shared, QWidget* parent = nullptr);

    void storeResult(const ResultRecord& result, int mask) override;
    /// Shows the store. The cursor's ">" is not written; it appears again when a later step places it.
    void RedrawResult();

    void SelectResultCell(int row, int column);
    void SetResultText(int row, int column, const QString& text);
    QString GetResultText(int row, int column) const;
    void ClearResultRow(int row);

    void cmdCopy_Click();
    void cmdClearAll_Click();
    void cmdDelRow_Click();
    void cmdRestore_Click();
    void cmdSetCursor_Click();

    ui::Grid& grid() { return *m_grid; }

signals:
    /// "Restore" was chosen on a filled row. The texts are the row as displayed, so its numbers are rounded.
    void restoreChosen(const QStringList& row);
    void aboutToChange();               // the next step changes the store
    void stepMade(const QString& step); // what the step was

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* addButton(const QString& caption, const char* name, void (ResultsTable::*clicked)());
    void setUpGrid();
    void clearRows();
    void shiftRowsUp(int deleted);
    void moveCursorUp();
    void markCursor(bool marked);
    QStringList rowTexts(int row) const;

    SharedState& m_shared;
    ui::Grid* m_grid;
};

} // namespace app
