#include "app/importcommands.h"

#include "app/importwindow.h"
#include "app/tablefile.h"
#include "ui/clipboard.h"
#include "ui/prompter.h"

#include <QFileInfo>

namespace app
{

void ImportCommands::mnuImportTable_Click()
{
    const auto path = m_prompter.tableToOpen();
    if (!path)
        return;
    const TableText table = readTableFile(*path);
    if (!table.error.isEmpty())
        return m_prompter.message(tr("%1 cannot be imported:\r\n%2").arg(*path, table.error));
    m_window.showTable(table.text, QFileInfo(*path).fileName());
}

void ImportCommands::mnuPasteSamples_Click()
{
    const auto text = ui::pastedText(m_prompter);
    if (!text)
        return;
    const TableText table = tableOf(*text);
    if (!table.error.isEmpty())
        return m_prompter.message(table.error);
    m_window.showTable(table.text, tr("Clipboard"));
}

} // namespace app
