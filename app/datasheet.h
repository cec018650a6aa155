#pragma once

#include "app/sheettext.h"

#include <QWidget>

#include <utility>

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

    /// Stores a typed text, then makes a cell the current and only selected cell. It may be a title cell.
    void SelectSheetCell(int row, int column);
    /// Reading and writing do not change the user's current cell and selection.
    void SetSheetText(int row, int column, const QString& text);
    QString GetSheetText(int row, int column) const;

    /// Writes a text, a block of cells or a single one, from the current cell on.
    void pasteText(const QString& text);
    /// Empties the selected block.
    void clearBlock();
    /// Stores a text that was typed into the line but not entered yet in the cell for which it was typed. Title cells
    /// keep their texts.
    void storeTyped();
    /// Marks the cells whose texts are not read as they stand, or that an analysis with the model needs.
    void showRemarks(int model);
    /// How many cells the last paste has dropped; asked again, none.
    int takeDropped() { return std::exchange(m_dropped, 0); }

    ui::Grid& grid() { return *m_grid; }
    const ui::Grid& grid() const { return *m_grid; }

signals:
    void changed();                     // the text of a cell, typed or written by a command
    void edited();                      // by a key in the line or by paste: samples read earlier may be out of date
    void typing(bool typed);            // a text that is not stored yet stands in the line, or no longer does
    void aboutToChange();               // the user's next step changes cells
    void stepMade(const QString& step); // what the step was

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void writeTitles();
    bool onDataCell() const;
    void mirrorCurrentCell();
    void noteTyping();
    void finishEdit();
    void focusMoved(const QWidget& now);
    bool takeBlock(const QString& text);
    void startEdit(const QString& text);
    void editPresentText();
    void store();
    bool editorKey(const QKeyEvent& key);

    ui::TextBox* m_editor;
    ui::Grid* m_grid;
    // The text with which the line was filled. While the line has another text, the user has typed something.
    int m_shownRow = 0;
    int m_shownColumn = 0;
    QString m_shown;
    bool m_typed = false;
    int m_dropped = 0; // cells of a paste, not told yet
};

} // namespace app
