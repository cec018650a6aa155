#pragma once

#include <QMainWindow>

class QAction;
class QMenu;

namespace app
{

class DataSheet;
class ParameterPanel;
class ResultsTable;
class StatusLine;
struct SharedState;

/// The main window: menus, data sheet, results table, parameter panel and status line. It announces chosen commands and
/// dropped files; its owner acts.
class frmVorloMain : public QMainWindow
{
    Q_OBJECT

public:
    static const QString kTitle;

    explicit frmVorloMain(SharedState& shared, QWidget* parent = nullptr);

    /// All in twips. Does nothing while the window is minimised.
    void SetSize(int top, int left, int height, int width);

    /// Disables the commands that run a decay-curve analysis while one runs.
    void setDecayAnalysisEnabled(bool enabled);

    /// Chooses a menu item, or goes to a box, given its objectName.
    void goTo(const QString& name);

    /// Enables "Undo" or "Redo" and says in the item which step it is for; an empty text disables it.
    void showUndo(const QString& step);
    void showRedo(const QString& step);

    DataSheet& sheet() { return *m_sheet; }
    ResultsTable& results() { return *m_results; }
    ParameterPanel& panel() { return *m_panel; }
    StatusLine& statusLine() { return *m_statusLine; }
    QMenu& windowMenu() { return *m_windowMenu; } // empty; its owner fills it

signals:
    void newChosen();
    void openChosen();
    void saveAsChosen();
    void importTableChosen();
    void exportChosen();
    void cutChosen();
    void copyChosen();
    void pasteChosen();
    void pasteSamplesChosen();
    void undoChosen();
    void redoChosen();
    void prepareIntensitiesChosen();
    void normalizationChosen();
    void decayCurveAnalysisChosen();
    void calcDecayCurveChosen();
    void sternVolmerAnalysisChosen();
    void calcSternVolmerChosen();
    void findSternVolmerStartChosen();
    void findDecayStartChosen();
    void findAndFitSternVolmerChosen();
    void findAndFitDecayChosen();
    void fitDetailsChosen();
    void compareModelsChosen();
    void compareDecayModelsChosen();
    void lifetimesChosen();
    void setParametersChosen();
    void helpChosen();
    void aboutChosen();
    void fileDropped(const QString& path); // one local file
    void painted();                        // at the start of every painting
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeMenus();
    void arrange();
    void acceptFiles();
    void storeTypedFirst();
    void showStep(const char* item, const QString& caption, const QString& step);

    DataSheet* m_sheet;
    ResultsTable* m_results;
    ParameterPanel* m_panel;
    StatusLine* m_statusLine;
    QMenu* m_windowMenu = nullptr;
};

} // namespace app
