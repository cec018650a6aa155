#pragma once

#include "app/sheettext.h"

#include <QWidget>

class QKeyEvent;
class QLineEdit;

namespace ui
{
class Grid;
}

namespace app
{

/// The data sheet: a grid of texts, one sample per column, and the one-line editor that mirrors its current cell.
/// The grid is the only store of sample values.
class DataSheet : public QWidget, public SheetText
{
    Q_OBJECT

public:
    explicit DataSheet(QWidget* parent = nullptr);

    int rowCount() const override;
    int columnCount() const override;
    void setCounts(int rows, int columns) override;
    std::string cell(int row, int column) const override;
    void setCell(int row, int column, const std::string& text) override;

    /// Makes a cell, title cells included, the current one and the only selected one.
    void SelectSheetCell(int row, int column);
    /// Reading and writing leave the user's current cell and selection where they are.
    void SetSheetText(int row, int column, const QString& text);
    QString GetSheetText(int row, int column) const;

    ui::Grid& grid() { return *m_grid; }
    const ui::Grid& grid() const { return *m_grid; }

signals:
    void edited(); // a key went down in the editor: what was read from the sheet may be out of date

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void writeTitles();
    void showWholeColumns();
    bool onDataCell() const;
    void mirrorCurrentCell();
    void startEdit(const QString& text);
    void store();
    void clearBlock();
    bool editorKey(const QKeyEvent& key);

    QLineEdit* m_editor;
    ui::Grid* m_grid;
};

} // namespace app
