#pragma once

#include "app/sheettext.h"

#include <QWidget>

class QKeyEvent;

namespace ui
{
class Grid;
class TextBox;
} // namespace ui

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

    /// Makes a cell, title cells included, the current one and the only selected one; what was typed is stored first.
    void SelectSheetCell(int row, int column);
    /// Reading and writing leave the user's current cell and selection where they are.
    void SetSheetText(int row, int column, const QString& text);
    QString GetSheetText(int row, int column) const;

    /// Writes a text, a block of cells or a single one, from the current cell on.
    void pasteText(const QString& text);
    /// Empties the selected block.
    void clearBlock();
    /// Stores what was typed into the line but not entered yet in the cell for which it was typed. Titles keep theirs.
    void storeTyped();

    ui::Grid& grid() { return *m_grid; }
    const ui::Grid& grid() const { return *m_grid; }

signals:
    void edited(); // by a key in the line or by paste: what was read from the sheet may be out of date

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void writeTitles();
    void showWholeColumns();
    bool onDataCell() const;
    void mirrorCurrentCell();
    void finishEdit();
    void focusMoved(const QWidget& now);
    bool takeBlock(const QString& text);
    void startEdit(const QString& text);
    void store();
    bool editorKey(const QKeyEvent& key);

    ui::TextBox* m_editor;
    ui::Grid* m_grid;
    // What the line was filled with: it holds something typed while its text is another one.
    int m_shownRow = 0;
    int m_shownColumn = 0;
    QString m_shown;
};

} // namespace app
