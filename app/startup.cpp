#include "app/startup.h"

#include "app/clipboardcommands.h"
#include "app/controlguides.h"
#include "app/datasheet.h"
#include "app/editsteps.h"
#include "app/parameterpanel.h"
#include "app/plotplaces.h"
#include "app/preparedsheet.h"
#include "app/resultstable.h"
#include "app/samplestext.h"
#include "app/statusline.h"
#include "app/windowlist.h"
#include "app/windowplaces.h"
#include "ui/clipboard.h"
#include "ui/grid.h"
#include "ui/textbox.h"
#include "ui/twips.h"

namespace app
{

VorloMain::VorloMain(ui::Prompter& prompter, std::unique_ptr<FirstWindow> firstWindow)
    : m_firstWindow(std::move(firstWindow)), DecayAnalyzer(prompter), SVAnalyzer(prompter), SettingWindow(shared),
      aboutBox(prompter), importWindow(MainWindow.sheet()), preparationWindow(prompter), m_prompter(prompter),
      m_session({MainWindow.sheet(), MainWindow.panel(), shared, MainWindow.results(), prompter}),
      m_import(importWindow, prompter),
      m_history({MainWindow.sheet(), MainWindow.panel(), MainWindow.results(), shared, m_session}),
      m_decayCommands(commandInput(), MainWindow.results(),
                      {DecayAnalyzer, GraphWindow1, GraphWindow2, OutputTable1, OutputTable2}),
      m_sternVolmerCommands(commandInput(), MainWindow.results(), {SVAnalyzer, GraphWindow2, OutputTable2}),
      m_trustCommands(commandInput(), MainWindow.panel(), {startValues, fitDetails, modelComparison},
                      {SVAnalyzer, DecayAnalyzer}),
      m_lifetimesCommands(commandInput(), MainWindow.panel(), lifetimesWindow),
      m_export(commandInput(), m_trustCommands, exportWindow), m_verdicts(commandInput()),
      m_windowMenu(MainWindow.windowMenu()), m_dates(MainWindow.sheet(), shared, m_windowMenu)
{
    fit::StopRequested = false;
    connectFileMenu();
    connectEditMenu();
    connectImport();
    connectUndo();
    connectAnalyses();
    connectTrust();
    connectPreparation();
    connectStatusLine();
    connectWindows();
    placePlotsAndTables(*this);
    listWindows(*this, m_windowMenu);
    explainWindows(m_windowMenu.windows());
}

void VorloMain::connectFileMenu()
{
    connect(&MainWindow, &frmVorloMain::newChosen, this,
            [this] { m_history.run(tr("New"), [this] { m_session.mnuNew_Click(); }); });
    connect(&MainWindow, &frmVorloMain::openChosen, this,
            [this] { m_history.run(tr("Open"), [this] { m_session.mnuOpen_Click(); }); });
    // Queued, because the source of the drop waits for its end, and a message box may open.
    connect(
        &MainWindow, &frmVorloMain::fileDropped, this,
        [this](const QString& path) { m_history.run(tr("Open"), [&] { m_session.openDropped(path); }); },
        Qt::QueuedConnection);
    connect(&MainWindow, &frmVorloMain::exportChosen, &m_export, &ExportCommands::mnuExport_Click);
    connect(&m_session, &SessionCommands::pathChanged, &m_export, &ExportCommands::setSessionPath);
    connect(&MainWindow, &frmVorloMain::saveAsChosen, &m_session, &SessionCommands::mnuSaveAs_Click);
    connect(&m_session, &SessionCommands::pathChanged, this,
            [this](const QString& path) { MainWindow.setWindowTitle(captionWithFile(frmVorloMain::kTitle, path)); });
    connect(&m_session, &SessionCommands::opened, this, [this] {
        SettingWindow.showSettings();
        // An opened session is always shown from its first cells on.
        MainWindow.sheet().SelectSheetCell(1, 1);
        MainWindow.results().SelectResultCell(1, 1);
    });
}

void VorloMain::connectEditMenu()
{
    DataSheet& sheet = MainWindow.sheet();
    connect(&MainWindow, &frmVorloMain::cutChosen, this,
            [this, &sheet] { m_history.run(tr("Cut"), [&sheet] { mnuCut_Click(sheet); }); });
    connect(&MainWindow, &frmVorloMain::copyChosen, this, [&sheet] { mnuCopy_Click(sheet); });
    connect(&MainWindow, &frmVorloMain::pasteChosen, this, [this, &sheet] { mnuPaste_Click(sheet, m_prompter); });
    for (const QWidget* window : std::initializer_list<const QWidget*>{&MainWindow, &helpViewer, &preparationWindow})
        for (const ui::TextBox* box : window->findChildren<ui::TextBox*>())
            connect(box, &ui::TextBox::clipboardSilent, this, [this] { ui::tellOfSilentClipboard(m_prompter); });
}

void VorloMain::connectImport()
{
    connect(&MainWindow, &frmVorloMain::importTableChosen, &m_import, &ImportCommands::mnuImportTable_Click);
    connect(&MainWindow, &frmVorloMain::pasteSamplesChosen, &m_import, &ImportCommands::mnuPasteSamples_Click);
    connect(&importWindow, &QDialog::accepted, this, [this] {
        DataSheet& sheet = MainWindow.sheet();
        sheet.storeTyped();
        m_history.run(tr("Import"), [this, &sheet] {
            const int column = importWindow.firstColumn();
            writeColumns(sheet, importWindow.columns());
            shared.DataNormalized = false; // samples read earlier are out of date
            sheet.SelectSheetCell(1, column);
        });
        if (const std::vector<std::string> added = importWindow.addedVolumes(); !added.empty()) {
            preparationWindow.showTitration(sheetSamples(sheet), added);
            showInFront(preparationWindow, kPreparationPlace);
        }
    });
}

// Every part of the session announces its steps itself; commands that consist of several are run as one.
void VorloMain::connectUndo()
{
    UndoHistory* history = &m_history;
    connect(&MainWindow.sheet(), &DataSheet::typing, history, &UndoHistory::noteTyping);
    connect(&MainWindow.sheet(), &DataSheet::aboutToChange, history, &UndoHistory::begin);
    connect(&MainWindow.sheet(), &DataSheet::stepMade, history, &UndoHistory::end);
    connect(&MainWindow.results(), &ResultsTable::aboutToChange, history, &UndoHistory::begin);
    connect(&MainWindow.results(), &ResultsTable::stepMade, history, &UndoHistory::end);
    connect(&SettingWindow, &frmSettingWindow::aboutToChange, history, &UndoHistory::begin);
    connect(&SettingWindow, &frmSettingWindow::stepMade, history, &UndoHistory::end);
    // The history's connection, because a box that loses the focus at the end outlives the history.
    connect(&MainWindow.panel().steps(), &EditSteps::stepMade, history, [history](const QString& step) {
        history->noteView();
        history->end(step);
    });
    connect(history, &UndoHistory::beginning, &MainWindow.panel().steps(), &EditSteps::finish);
    connect(&m_session, &SessionCommands::pathChanged, history, &UndoHistory::begin); // saving is no step
    connect(&MainWindow, &frmVorloMain::undoChosen, history, &UndoHistory::undo);
    connect(&MainWindow, &frmVorloMain::redoChosen, history, &UndoHistory::redo);
    connect(history, &UndoHistory::moved, &SettingWindow, &frmSettingWindow::showSettings);
    connect(history, &UndoHistory::changed, &MainWindow, [this] {
        MainWindow.showUndo(m_history.undoText());
        MainWindow.showRedo(m_history.redoText());
    });
}

void VorloMain::connectWindows()
{
    connect(&MainWindow, &frmVorloMain::setParametersChosen, this, [this] {
        SettingWindow.SetSize(kSettingsPlace.top, kSettingsPlace.left, kSettingsPlace.height, kSettingsPlace.width);
        ui::bringToFront(SettingWindow);
    });
    connect(&MainWindow, &frmVorloMain::helpChosen, this, [this] {
        helpViewer.openIndex(helpFilePath());
        ui::bringToFront(helpViewer);
    });
    connect(&MainWindow, &frmVorloMain::aboutChosen, this, [this] { ui::bringToFront(aboutBox); });
    connect(&MainWindow, &frmVorloMain::closed, this, &VorloMain::endProgram);
    connect(&SettingWindow, &frmSettingWindow::assessmentChanged, &MainWindow.results(), &ResultsTable::RedrawResult);
}

CommandInput VorloMain::commandInput()
{
    return {.sheet = MainWindow.sheet(), .panel = MainWindow.panel(), .shared = shared, .prompter = m_prompter};
}

/// All commands that calculate.
void VorloMain::connectCommand(void (frmVorloMain::*chosen)(), const std::function<void()>& command)
{
    connect(&MainWindow, chosen, this, [this, command] {
        const UndoHistory::Hold held(m_history);
        m_verdicts.run(command);
        m_afterChanges.start();
    });
}

void VorloMain::connectAnalyses()
{
    connectCommand(&frmVorloMain::normalizationChosen,
                   [this] { m_history.run(tr("Normalization"), [this] { normalise(); }); });
    connectCommand(&frmVorloMain::decayCurveAnalysisChosen, [this] { m_decayCommands.DecayCurveAnalysis(); });
    connectCommand(&frmVorloMain::calcDecayCurveChosen, [this] { m_decayCommands.CalcDecayCurve(); });
    connectCommand(&frmVorloMain::sternVolmerAnalysisChosen, [this] { m_sternVolmerCommands.SternVolmerAnalysis(); });
    connectCommand(&frmVorloMain::calcSternVolmerChosen, [this] { m_sternVolmerCommands.CalcSternVolmer(); });
    m_decayCommands.setAnalysisEnabled = [this](bool enabled) { MainWindow.setDecayAnalysisEnabled(enabled); };
    for (analysis::AnalyzerWindow* analyzer :
         std::initializer_list<analysis::AnalyzerWindow*>{&DecayAnalyzer, &SVAnalyzer})
        connect(analyzer, &analysis::AnalyzerWindow::dismissed, this, [this] { ui::bringToFront(MainWindow); });
}

void VorloMain::normalise()
{
    m_decayCommands.Normalization();
    if (shared.samples)
        m_dates.fill({&GraphWindow1, &OutputTable1}, {.data = *shared.samples});
}

void VorloMain::connectTrust()
{
    using models::Analysis;
    using Main = frmVorloMain;
    connectCommand(&Main::findSternVolmerStartChosen, [this] { m_trustCommands.findStart(Analysis::SternVolmer); });
    connectCommand(&Main::findDecayStartChosen, [this] { m_trustCommands.findStart(Analysis::Decay); });
    connectCommand(&Main::findAndFitSternVolmerChosen, [this] { m_trustCommands.findAndFit(Analysis::SternVolmer); });
    connectCommand(&Main::findAndFitDecayChosen, [this] { m_trustCommands.findAndFit(Analysis::Decay); });
    connectCommand(&Main::compareModelsChosen, [this] { m_trustCommands.compareAllModels(Analysis::SternVolmer); });
    connectCommand(&Main::compareDecayModelsChosen, [this] { m_trustCommands.compareAllModels(Analysis::Decay); });
    connect(&MainWindow, &Main::fitDetailsChosen, this, [this] { m_trustCommands.showFitDetails(); });
    connect(&MainWindow, &Main::lifetimesChosen, this, [this] { m_lifetimesCommands.showTogether(); });
    m_trustCommands.analyse = [this](Analysis analysis) {
        MainWindow.goTo(analysis == Analysis::Decay ? "mnuDecayCurveAnalysis" : "mnuSternVolmerAnalysis");
    };
    m_trustCommands.fills = [this](QWidget& window, const analysis::Request& request) {
        m_dates.fill({&window}, request);
    };
    m_sternVolmerCommands.finished = [this](const auto& request, const auto& result, double s) {
        m_verdicts.analysed(request, result);
        m_trustCommands.analysed(request, result, s);
        m_dates.fill({&SVAnalyzer, &GraphWindow2, &OutputTable2, &fitDetails}, request);
    };
    m_decayCommands.finished = [this](const auto& request, const auto& result) {
        m_verdicts.analysed(request, result);
        m_trustCommands.analysed(request, result);
        m_dates.fill({&DecayAnalyzer, &GraphWindow1, &GraphWindow2, &OutputTable2, &fitDetails}, request);
    };
}

void VorloMain::connectPreparation()
{
    connect(&MainWindow, &frmVorloMain::prepareIntensitiesChosen, this, [this] {
        preparationWindow.showSheet(sheetSamples(MainWindow.sheet()));
        showInFront(preparationWindow, kPreparationPlace);
    });
    connect(&preparationWindow, &preparation::PreparationWindow::applied, this,
            [this](const preparation::SheetSamples& samples) {
                m_history.run(tr("Prepare Intensities"), [&] { writeSamples(MainWindow.sheet(), samples); });
                shared.DataNormalized = false;
            });
    connect(&preparationWindow, &preparation::PreparationWindow::errorsKnown, this,
            [this](const std::vector<double>& errors) { m_trustCommands.typeErrors(errors); });
}

void VorloMain::connectStatusLine()
{
    m_afterChanges.setSingleShot(true);
    const auto soon = qOverload<>(&QTimer::start);
    connect(&MainWindow.sheet(), &DataSheet::changed, &m_afterChanges, soon);
    connect(&MainWindow.panel(), &ParameterPanel::changed, &m_afterChanges, soon);
    connect(&SettingWindow, &frmSettingWindow::changed, &m_afterChanges, soon);
    connect(&m_session, &SessionCommands::opened, &m_afterChanges, soon);
    connect(&m_windowMenu, &WindowMenu::windowsChanged, &m_afterChanges, soon);
    connect(&m_afterChanges, &QTimer::timeout, this, &VorloMain::lookAtData);
    m_afterChanges.start();
    connect(&m_verdicts, &VerdictWatch::changed, this, &VorloMain::showVerdict);
    connect(&m_verdicts, &VerdictWatch::judged, this,
            [this](const trust::Judgement& judgement) { m_trustCommands.judged(judgement); });
    connect(&MainWindow.statusLine(), &StatusLine::verdictPressed, this,
            [this] { MainWindow.goTo(m_verdicts.stated().opens.name); });
    connect(&SVAnalyzer, &analysis::AnalyzerWindow::faulted, this,
            [this] { m_verdicts.faulted(models::Analysis::SternVolmer); });
    connect(&DecayAnalyzer, &analysis::AnalyzerWindow::faulted, this,
            [this] { m_verdicts.faulted(models::Analysis::Decay); });
}

void VorloMain::lookAtData()
{
    DataSheet& sheet = MainWindow.sheet();
    sheet.showRemarks(MainWindow.panel().panelState().Model);
    QStringList remarks{QString::fromStdString(samplesText(sheet, sheet.takeDropped())), m_dates.mark()};
    remarks.removeAll(QString());
    MainWindow.statusLine().showSamples(remarks.join("; "));
    if (importWindow.isVisible())
        importWindow.refresh();
    if (preparationWindow.isVisible())
        preparationWindow.showSheet(sheetSamples(sheet));
    m_verdicts.look();
    m_windowMenu.markOlder(lifetimesWindow, m_lifetimesCommands.look());
}

void VorloMain::showVerdict()
{
    const StatedVerdict& stated = m_verdicts.stated();
    MainWindow.statusLine().showVerdict(QString::fromStdString(stated.text), stated.opens.text, stated.warns);
}

// Windows are hidden, not destroyed, because a fit that processed the close event still uses them.
void VorloMain::endProgram()
{
    for (QWidget* window : m_windowMenu.windows())
        window->hide();
    emit ended();
}

} // namespace app
