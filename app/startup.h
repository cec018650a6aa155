#pragma once

#include "app/aboutbox.h"
#include "app/datedwindows.h"
#include "app/decaycommands.h"
#include "app/exportcommands.h"
#include "app/firstwindow.h"
#include "app/helpviewer.h"
#include "app/importcommands.h"
#include "app/importwindow.h"
#include "app/lifetimescommands.h"
#include "app/mainwindow.h"
#include "app/sessioncommands.h"
#include "app/settingwindow.h"
#include "app/sharedstate.h"
#include "app/sternvolmercommands.h"
#include "app/trustcommands.h"
#include "app/undohistory.h"
#include "app/verdictwatch.h"
#include "app/windowmenu.h"
#include "plot/graphwindow.h"
#include "plot/spreadsheetwindow.h"
#include "preparation/preparationwindow.h"

#include <QTimer>

#include <functional>
#include <memory>

namespace ui
{
class Prompter;
}

namespace app
{

/// The program: it owns the shared state and one instance of every window, and connects menu items with commands.
/// Windows are public, so that commands and tests reach them; they live as long as the program.
class VorloMain : public QObject
{
    Q_OBJECT

public:
    /// Creates and places all windows except the main window. `prompter` must outlive the program.
    explicit VorloMain(ui::Prompter& prompter,
                       std::unique_ptr<FirstWindow> firstWindow = std::make_unique<FirstWindow>());

private:
    std::unique_ptr<FirstWindow> m_firstWindow;

public:
    SharedState& shared = m_firstWindow->shared;
    frmVorloMain& MainWindow = m_firstWindow->MainWindow;
    analysis::frmDecayCurveAnalyzer DecayAnalyzer;
    analysis::frmSternVolmerAnalyzer SVAnalyzer;
    frmSettingWindow SettingWindow;
    plot::Graph GraphWindow1; // decay curves
    plot::Graph GraphWindow2; // Stern-Volmer plots and deviations
    plot::SpreadSheet OutputTable1;
    plot::SpreadSheet OutputTable2;
    HelpViewer helpViewer;
    frmVorloAbout aboutBox;
    trust::StartValuesWindow startValues;
    trust::FitDetailsWindow fitDetails;
    trust::ModelComparisonWindow modelComparison;
    ExportWindow exportWindow;
    ImportWindow importWindow;
    preparation::PreparationWindow preparationWindow;
    lifetimes::LifetimesWindow lifetimesWindow;

signals:
    void ended(); // the main window was closed and every other window hidden

private:
    CommandInput commandInput();
    void connectFileMenu();
    void connectEditMenu();
    void connectImport();
    void connectUndo();
    void connectAnalyses();
    void normalise();
    void connectTrust();
    void connectPreparation();
    void connectStatusLine();
    void connectCommand(void (frmVorloMain::*chosen)(), const std::function<void()>& command);
    void lookAtData();
    void showVerdict();
    void connectWindows();
    void endProgram();

    ui::Prompter& m_prompter;
    SessionCommands m_session;
    ImportCommands m_import;
    UndoHistory m_history;
    DecayCommands m_decayCommands;
    SternVolmerCommands m_sternVolmerCommands;
    TrustCommands m_trustCommands;
    LifetimesCommands m_lifetimesCommands;
    ExportCommands m_export;
    VerdictWatch m_verdicts;
    WindowMenu m_windowMenu;
    DatedWindows m_dates;
    QTimer m_afterChanges; // runs out once, after all changes that one event makes
};

} // namespace app
