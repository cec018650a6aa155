#include "app/exportcommands.h"

#include "app/dataage.h"
#include "app/safefile.h"
#include "app/windowplaces.h"
#include "exports/fittables.h"
#include "exports/trusttables.h"
#include "fit/numbertext.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace app
{
namespace
{

const ExportedTableRow& rowOf(ExportedTable table)
{
    return *std::find_if(kExportedTables.begin(), kExportedTables.end(),
                         [table](const ExportedTableRow& row) { return row.table == table; });
}

QString withSuffix(const QString& path)
{
    const QString suffix = QStringLiteral(".csv");
    return path.endsWith(suffix, Qt::CaseInsensitive) ? path : path + suffix;
}

} // namespace

ExportCommands::ExportCommands(const CommandInput& input, const TrustCommands& fits, ExportWindow& window)
    : m_input(input), m_fits(fits), m_window(window)
{
    connect(&window, &ExportWindow::tableWanted, this, &ExportCommands::save);
    connect(&window, &ExportWindow::allWanted, this, &ExportCommands::saveAll);
}

void ExportCommands::mnuExport_Click()
{
    m_window.showOutcome({});
    showInFront(m_window, kExportPlace);
}

exports::Rows ExportCommands::rowsOf(ExportedTable table) const
{
    const auto& last = m_fits.last();
    switch (table) {
    case ExportedTable::Sheet:
        return sheetRows(m_input.sheet);
    case ExportedTable::Results:
        return resultRows(m_input.shared.results);
    case ExportedTable::Curves:
        return last ? exports::curveRows(last->request, last->result) : exports::Rows();
    case ExportedTable::Residuals:
        return last ? exports::residualRows(last->request, last->result) : exports::Rows();
    case ExportedTable::Details:
        return last ? exports::detailsRows(m_fits.exactDetails()) : exports::Rows();
    case ExportedTable::Comparison:
        return exports::comparisonRows(m_fits.comparison());
    }
    return {};
}

exports::Head ExportCommands::headOf(ExportedTable table) const
{
    if (table == ExportedTable::Results) // of many analyses
        return {};
    if (table == ExportedTable::Sheet)
        return {.Cp = fit::numberFrom(m_input.panel.panelState().Cp)};
    const bool isComparison = table == ExportedTable::Comparison;
    const analysis::Request& request = isComparison ? m_fits.compared() : m_fits.last()->request;
    exports::Head head{.tau0 = exports::lifetimeWithoutQuencher(request),
                       .Cp = request.Cp,
                       .older = isOlder(request, m_input.sheet, m_input.shared)};
    const bool isDecay = analysis::methodOf(request) == models::Analysis::Decay;
    head.analysis = isDecay ? "Decay Curve Analysis" : "Stern-Volmer Analysis";
    head.analysis += isComparison ? ", all models" : ", Model " + std::to_string(request.model);
    if (!isDecay)
        head.assumption = noise::sentence(isComparison ? m_fits.comparison().errors : m_fits.errors());
    return head;
}

/// Empty if there is nothing to export.
QByteArray ExportCommands::fileOf(ExportedTable table, const ExportForm& form) const
{
    exports::Rows rows = rowsOf(table);
    if (rows.empty())
        return {};
    if (form.withHead) {
        const exports::Rows head = exports::headRows(headOf(table));
        rows.insert(rows.begin(), head.begin(), head.end());
    }
    return QByteArray::fromStdString(exports::csvText(rows, form.separator));
}

QString ExportCommands::nameOf(const ExportedTableRow& row) const
{
    const QString session = QFileInfo(m_sessionPath).completeBaseName();
    return (session.isEmpty() ? QString() : session + '-') + row.fileName + ".csv";
}

void ExportCommands::save(ExportedTable table, const ExportForm& form)
{
    const ExportedTableRow& row = rowOf(table);
    const QByteArray bytes = fileOf(table, form);
    if (bytes.isEmpty())
        return m_input.prompter.message(tr(row.missing));
    const auto chosen = m_input.prompter.tableToSave(nameOf(row));
    if (!chosen)
        return;
    const QString path = withSuffix(*chosen);
    // The dialog asked only about the name as it was chosen, without the added suffix.
    if (path != *chosen && QFileInfo::exists(path) && !m_input.prompter.mayReplace(path))
        return;
    if (write(path, bytes))
        m_window.showOutcome(tr("%1 was saved.").arg(QFileInfo(path).fileName()));
}

void ExportCommands::saveAll(const ExportForm& form)
{
    QList<std::pair<QString, QByteArray>> files;
    for (const ExportedTableRow& row : kExportedTables)
        if (const QByteArray bytes = fileOf(row.table, form); !bytes.isEmpty())
            files.append({nameOf(row), bytes});
    if (files.isEmpty())
        return m_input.prompter.message(tr("There is nothing to export yet."));
    const auto folder = m_input.prompter.folderForTables();
    if (!folder)
        return;
    QStringList names, present;
    for (const auto& [name, bytes] : files) {
        names << name;
        if (QFileInfo::exists(QDir(*folder).filePath(name)))
            present << name;
    }
    if (!present.isEmpty() && !m_input.prompter.mayReplaceAll(present))
        return;
    const bool allSaved = std::all_of(files.begin(), files.end(), [&](const auto& file) {
        return write(QDir(*folder).filePath(file.first), file.second);
    });
    if (allSaved)
        m_window.showOutcome(tr("%1 were saved in %2.").arg(names.join(", "), *folder));
}

bool ExportCommands::write(const QString& path, const QByteArray& bytes)
{
    const QString error = replaceFile(path, bytes);
    if (!error.isEmpty())
        m_input.prompter.message(tr("%1 cannot be saved:\r\n%2").arg(path, error));
    return error.isEmpty();
}

} // namespace app
