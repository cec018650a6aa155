#include "app/sessionstate.h"

#include "app/datasheet.h"
#include "app/parameterpanel.h"
#include "app/resultstable.h"
#include "app/selectedblock.h"
#include "app/sessioncommands.h"
#include "app/sharedstate.h"

namespace app
{
namespace
{

using Texts = QList<QStringList>;

/// Rows that did not change are shared with the earlier texts.
Texts textsOf(const ui::Grid& grid, const Texts& earlier)
{
    Texts texts;
    for (int row = 0; row < grid.rows(); ++row) {
        QStringList line;
        for (int column = 0; column < grid.columns(); ++column)
            line << grid.text(row, column);
        texts << (line == earlier.value(row) ? earlier.value(row) : line);
    }
    return texts == earlier ? earlier : texts;
}

/// Calls write(row, column, text) for every text while the grid is not drawn.
template <class Write>
void showTexts(ui::Grid& grid, const Texts& texts, Write write)
{
    grid.setRedraw(false);
    for (int row = 0; row < texts.size(); ++row)
        for (int column = 0; column < texts[row].size(); ++column)
            write(row, column, texts[row][column]);
    grid.setRedraw(true);
}

void showCells(DataSheet& sheet, const Texts& cells)
{
    sheet.setCounts(static_cast<int>(cells.size()), static_cast<int>(cells.value(0).size()));
    showTexts(sheet.grid(), cells,
              [&](int row, int column, const QString& text) { sheet.SetSheetText(row, column, text); });
}

void select(ui::Grid& grid, const Block& block)
{
    grid.selectBlock(block.row, block.column, block.farRow, block.farColumn);
}

/// A verdict may have come after the state was noted, and the number of an analysis is never used again.
void showResults(ResultStore& results, ResultStore shown)
{
    for (const RecordVerdict& verdict : results.verdicts)
        if (verdict.run > 0)
            shown.setVerdict(verdict.run, verdict.text);
    shown.runs = results.runs;
    results = shown;
}

std::shared_ptr<const SessionState::Values> valuesOf(const SessionParts& parts,
                                                     const std::shared_ptr<const SessionState::Values>& earlier)
{
    const SessionState::Values values{.panel = parts.panel.panelState(),
                                      .settings = parts.shared.settings,
                                      .results = parts.shared.results,
                                      .FitRegionMode = parts.shared.FitRegionMode};
    return earlier && *earlier == values ? earlier : std::make_shared<const SessionState::Values>(values);
}

qsizetype bytesBeyond(const Texts& earlier, const Texts& texts)
{
    if (texts.isSharedWith(earlier))
        return 0;
    qsizetype bytes = texts.size() * static_cast<qsizetype>(sizeof(QStringList));
    for (qsizetype row = 0; row < texts.size(); ++row)
        if (row >= earlier.size() || !texts[row].isSharedWith(earlier[row]))
            for (const QString& text : texts[row])
                bytes += static_cast<qsizetype>(sizeof(QString)) + text.size() * static_cast<qsizetype>(sizeof(QChar));
    return bytes;
}

} // namespace

bool SessionState::sameSession(const SessionState& other) const
{
    return cells == other.cells && path == other.path && values->panel == other.values->panel &&
           values->settings == other.values->settings && values->FitRegionMode == other.values->FitRegionMode &&
           values->results.sameResults(other.values->results);
}

SessionState::View viewOf(const SessionParts& parts, const SessionState::View& earlier)
{
    return {.resultTexts = textsOf(parts.results.grid(), earlier.resultTexts),
            .selectedCells = selectedBlock(parts.sheet.grid()),
            .selectedResults = selectedBlock(parts.results.grid())};
}

SessionState stateOf(const SessionParts& parts, const SessionState& earlier)
{
    return {.cells = textsOf(parts.sheet.grid(), earlier.cells),
            .values = valuesOf(parts, earlier.values),
            .path = parts.commands.path(),
            .view = viewOf(parts, earlier.view)};
}

void showState(const SessionParts& parts, const SessionState& state)
{
    const SessionState now = stateOf(parts, state);
    if (now.cells != state.cells) {
        showCells(parts.sheet, state.cells);
        parts.shared.DataNormalized = false;
    }
    if (now.values->panel != state.values->panel)
        parts.panel.setPanelState(state.values->panel);
    parts.shared.settings = state.values->settings;
    showResults(parts.shared.results, state.values->results);
    parts.shared.FitRegionMode = state.values->FitRegionMode;
    showTexts(parts.results.grid(), state.view.resultTexts,
              [&](int row, int column, const QString& text) { parts.results.SetResultText(row, column, text); });
    select(parts.results.grid(), state.view.selectedResults);
    select(parts.sheet.grid(), state.view.selectedCells);
}

qsizetype bytesBeyond(const SessionState& earlier, const SessionState& state)
{
    qsizetype bytes =
        bytesBeyond(earlier.cells, state.cells) + bytesBeyond(earlier.view.resultTexts, state.view.resultTexts);
    if (state.values != earlier.values)
        bytes += static_cast<qsizetype>(sizeof(SessionState::Values));
    return bytes;
}

} // namespace app
