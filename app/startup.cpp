#include "app/startup.h"

#include "app/clipboardcommands.h"
#include "app/datasheet.h"
#include "app/parameterpanel.h"
#include "app/resultstable.h"
#include "app/samplestext.h"
#include "app/statusline.h"
#include "app/windowplaces.h"
#include "ui/clipboard.h"
#include "ui/grid.h"
#include "ui/textbox.h"
#include "ui/twips.h"

namespace app
{

FirstWindow::FirstWindow()
{
    constexpr WindowPlace place = kMainWindowPlace;
    MainWindow.SetSize(place.top, place.left, place.height, place.width);
}

void FirstWindow::whenPainted(std::function<void()> then)
{
    // Queued, because the frame reaches the screen only after its paint event.
    QObject::connect(&MainWindow, &frmVorloMain::painted, &MainWindow, std::move(then),
                     static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

VorloMain::VorloMain(ui::Prompter& prompter, std::unique_ptr<FirstWindow> firstWindow)
    : m_firstWindow(std::move(firstWindow)), DecayAnalyzer(prompter), SVAnalyzer(prompter), SettingWindow(shared),
      aboutBox(prompter), m_prompter(prompter),
      m_session({MainWindow.sheet(), MainWindow.panel(), shared, MainWindow.results(), prompter}),
      m_decayCommands(commandInput(), MainWindow.results(),
                      {DecayAnalyzer, GraphWindow1, GraphWindow2, OutputTable1, OutputTable2}),
      m_sternVolmerCommands(commandInput(), MainWindow.results(), {SVAnalyzer, GraphWindow2, OutputTable2}),
      m_trustCommands(commandInput(), MainWindow.panel(), {startValues, fitDetails, modelComparison},
                      {SVAnalyzer, DecayAnalyzer})
{
    fit::StopRequested = false;
    connectFileMenu();
    connectEditMenu();
    connectAnalyses();
    connectTrust();
    connectStatusLine();
    connectWindows();
    GraphWindow1.SetTitle("Decay Plot");
    GraphWindow2.SetTitle("Analysis Plot");
    OutputTable1.SetTitle("Decay Table");
    OutputTable2.SetTitle("Analysis Table");
    GraphWindow1.SetPosition(kDecayPlotCorner.top, kDecayPlotCorner.left);
    GraphWindow2.SetPosition(kAnalysisPlotCorner.top, kAnalysisPlotCorner.left);
    OutputTable1.SetPosition(kDecayTableCorner.top, kDecayTableCorner.left);
    OutputTable2.SetPosition(kAnalysisTableCorner.top, kAnalysisTableCorner.left);
}

void VorloMain::connectFileMenu()
{
    connect(&MainWindow, &frmVorloMain::newChosen, &m_session, &SessionCommands::mnuNew_Click);
    connect(&MainWindow, &frmVorloMain::openChosen, &m_session, &SessionCommands::mnuOpen_Click);
    // Queued, because the source of the drop waits for its end, and a message box may open.
    connect(&MainWindow, &frmVorloMain::fileDropped, &m_session, &SessionCommands::openDropped, Qt::QueuedConnection);
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
    connect(&MainWindow, &frmVorloMain::cutChosen, this, [&sheet] { mnuCut_Click(sheet); });
    connect(&MainWindow, &frmVorloMain::copyChosen, this, [&sheet] { mnuCopy_Click(sheet); });
    connect(&MainWindow, &frmVorloMain::pasteChosen, this, [this, &sheet] { mnuPaste_Click(sheet, m_prompter); });
    for (const QWidget* window : std::initializer_list<const QWidget*>{&MainWindow, &helpViewer})
        for (const ui::TextBox* box : window->findChildren<ui::TextBox*>())
            connect(box, &ui::TextBox::clipboardSilent, this, [this] { ui::tellOfSilentClipboard(m_prompter); });
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

void VorloMain::connectAnalyses()
{
    connect(&MainWindow, &frmVorloMain::normalizationChosen, this, [this] { m_decayCommands.Normalization(); });
    connect(&MainWindow, &frmVorloMain::decayCurveAnalysisChosen, this,
            [this] { m_decayCommands.DecayCurveAnalysis(); });
    connect(&MainWindow, &frmVorloMain::calcDecayCurveChosen, this, [this] { m_decayCommands.CalcDecayCurve(); });
    connect(&MainWindow, &frmVorloMain::sternVolmerAnalysisChosen, this,
            [this] { m_sternVolmerCommands.SternVolmerAnalysis(); });
    connect(&MainWindow, &frmVorloMain::calcSternVolmerChosen, this,
            [this] { m_sternVolmerCommands.CalcSternVolmer(); });
    m_decayCommands.setAnalysisEnabled = [this](bool enabled) { MainWindow.setDecayAnalysisEnabled(enabled); };
    for (analysis::AnalyzerWindow* analyzer :
         std::initializer_list<analysis::AnalyzerWindow*>{&DecayAnalyzer, &SVAnalyzer})
        connect(analyzer, &analysis::AnalyzerWindow::dismissed, this, [this] { ui::bringToFront(MainWindow); });
}

void VorloMain::connectTrust()
{
    using models::Analysis;
    connect(&MainWindow, &frmVorloMain::findSternVolmerStartChosen, this,
            [this] { m_trustCommands.findStart(Analysis::SternVolmer); });
    connect(&MainWindow, &frmVorloMain::findDecayStartChosen, this,
            [this] { m_trustCommands.findStart(Analysis::Decay); });
    connect(&MainWindow, &frmVorloMain::findAndFitSternVolmerChosen, this,
            [this] { m_trustCommands.findAndFit(Analysis::SternVolmer); });
    connect(&MainWindow, &frmVorloMain::findAndFitDecayChosen, this,
            [this] { m_trustCommands.findAndFit(Analysis::Decay); });
    m_trustCommands.analyse = [this](Analysis analysis) { MainWindow.analyse(analysis); };
    connect(&MainWindow, &frmVorloMain::fitDetailsChosen, this, [this] { m_trustCommands.showFitDetails(); });
    connect(&MainWindow, &frmVorloMain::compareModelsChosen, this,
            [this] { m_trustCommands.compareAllModels(Analysis::SternVolmer); });
    connect(&MainWindow, &frmVorloMain::compareDecayModelsChosen, this,
            [this] { m_trustCommands.compareAllModels(Analysis::Decay); });
    const auto look = [this](const analysis::Request& request, const analysis::Result& result) {
        m_trustCommands.analysed(request, result);
    };
    m_sternVolmerCommands.finished = look;
    m_decayCommands.finished = look;
}

void VorloMain::connectStatusLine()
{
    m_afterChanges.setSingleShot(true);
    connect(&MainWindow.sheet(), &DataSheet::changed, &m_afterChanges, qOverload<>(&QTimer::start));
    connect(&m_afterChanges, &QTimer::timeout, this,
            [this] { MainWindow.statusLine().showSamples(QString::fromStdString(samplesText(MainWindow.sheet()))); });
    m_afterChanges.start();
}

// Windows are hidden, not destroyed, because a fit that processed the close event still uses them.
void VorloMain::endProgram()
{
    for (QWidget* window : std::initializer_list<QWidget*>{&GraphWindow1, &GraphWindow2, &OutputTable1, &OutputTable2,
                                                           &SVAnalyzer, &DecayAnalyzer, &SettingWindow, &helpViewer,
                                                           &aboutBox, &startValues, &fitDetails, &modelComparison})
        window->hide();
    emit ended();
}

} // namespace app
