#include "app/sessioncommands.h"

#include "app/resultstable.h"
#include "app/sessionfile.h"
#include "app/sharedstate.h"
#include "ui/prompter.h"

#include <QFileInfo>

namespace app
{
namespace
{

constexpr int kLongestPath = 32;  // characters that a caption shows in full
constexpr int kShownPathEnd = 31; // characters of a longer path

template <class Visit>
void forEachDataCell(const SheetText& sheet, Visit visit)
{
    for (int row = 1; row < sheet.rowCount(); ++row)
        for (int column = 1; column < sheet.columnCount(); ++column)
            visit(row, column);
}

QString withExtension(const QString& path)
{
    const QString extension = QStringLiteral(".vrl");
    return path.endsWith(extension, Qt::CaseInsensitive) ? path : path + extension;
}

} // namespace

SessionCommands::SessionCommands(const Dependencies& dependencies, QObject* parent)
    : QObject(parent), m_dependencies(dependencies)
{
}

void SessionCommands::mnuNew_Click()
{
    SheetText& sheet = m_dependencies.sheet;
    forEachDataCell(sheet, [&sheet](int row, int column) { sheet.setCell(row, column, {}); });
    sheet.setCounts(sheet.rowCount(), sheet.columnCount()); // restores titles that were cut or overwritten
    setPath({});
}

void SessionCommands::mnuSaveAs_Click()
{
    const auto chosen = m_dependencies.prompter.fileToSave(m_path);
    if (!chosen)
        return;
    const QString path = withExtension(*chosen);
    // The dialog asked only about the name as it was chosen, without the added suffix.
    if (path != *chosen && QFileInfo::exists(path) && !m_dependencies.prompter.mayReplace(path))
        return;
    const QString error = writeSessionFile(path, writeSession(session()));
    if (error.isEmpty())
        setPath(path);
    else
        m_dependencies.prompter.message(tr("%1 cannot be saved:\r\n%2").arg(path, error));
}

void SessionCommands::mnuOpen_Click()
{
    if (const auto path = m_dependencies.prompter.fileToOpen())
        open(*path, IfForeign::ClearResults);
}

void SessionCommands::openDropped(const QString& path) { open(path, IfForeign::KeepResults); }

void SessionCommands::open(const QString& path, IfForeign ifForeign)
{
    const SessionFileText file = readSessionFile(path);
    if (!file.error.isEmpty()) {
        m_dependencies.prompter.message(tr("%1 cannot be read:\r\n%2").arg(path, file.error));
        return;
    }
    const std::optional<Session> read = readSession(file.text, session());
    if (!read) {
        if (ifForeign == IfForeign::ClearResults)
            m_dependencies.results.cmdClearAll_Click();
        m_dependencies.prompter.message(tr("This file type is not recognized."));
        return;
    }
    show(*read);
    setPath(path);
    emit opened();
}

void SessionCommands::setPath(const QString& path)
{
    m_path = path;
    emit pathChanged(path);
}

Session SessionCommands::session() const
{
    const SheetText& sheet = m_dependencies.sheet;
    Session session{.panel = m_dependencies.panel.panelState(),
                    .settings = m_dependencies.shared.settings,
                    .rows = sheet.rowCount(),
                    .columns = sheet.columnCount(),
                    .cells = {},
                    .results = m_dependencies.shared.results};
    session.cells.resize(static_cast<std::size_t>(session.rows - 1));
    forEachDataCell(sheet, [&](int row, int column) {
        session.cells[static_cast<std::size_t>(row - 1)].push_back(sheet.cell(row, column));
    });
    return session;
}

// A file does not store the option of the fit region, so opening a file resets it to the initial option.
void SessionCommands::show(const Session& session)
{
    PanelState panel = session.panel;
    panel.allChosen = true;
    m_dependencies.panel.setPanelState(panel);
    SharedState& shared = m_dependencies.shared;
    shared.FitRegionMode = decay::kFitRegionOwn;
    shared.settings = session.settings;

    SheetText& sheet = m_dependencies.sheet;
    sheet.setCounts(session.rows, session.columns);
    forEachDataCell(sheet, [&](int row, int column) {
        sheet.setCell(row, column,
                      session.cells[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)]);
    });

    shared.results = session.results;
    m_dependencies.results.RedrawResult();
    shared.DataNormalized = false;
}

QString captionWithFile(const QString& title, const QString& path)
{
    if (path.isEmpty())
        return title;
    return title + "---" + (path.size() <= kLongestPath ? path : "..." + path.last(kShownPathEnd));
}

} // namespace app
