#pragma once

#include <QObject>

namespace ui
{
class Prompter;
}

namespace app
{

class ImportWindow;

/// Brings the table of a file or of the clipboard to the import window, or says why that is not possible.
class ImportCommands : public QObject
{
    Q_OBJECT

public:
    ImportCommands(ImportWindow& window, ui::Prompter& prompter) : m_window(window), m_prompter(prompter) {}

    void mnuImportTable_Click();
    void mnuPasteSamples_Click();

private:
    ImportWindow& m_window;
    ui::Prompter& m_prompter;
};

} // namespace app
