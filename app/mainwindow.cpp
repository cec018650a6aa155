#include "app/mainwindow.h"

#include "app/datasheet.h"
#include "app/parameterpanel.h"
#include "app/resultstable.h"
#include "app/sharedstate.h"
#include "app/statusline.h"
#include "fit/gaussnewton.h"
#include "ui/grid.h"
#include "ui/twips.h"

#include <QAbstractButton>
#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>

#include <vector>

namespace app
{

const QString frmVorloMain::kTitle = QStringLiteral("Vorlo G4 2002.01.18");

namespace
{

using Signal = void (frmVorloMain::*)();

constexpr auto kFindStart = "&Find Start Values";
constexpr auto kUndo = "&Undo";
constexpr auto kRedo = "&Redo";

struct Item {
    const char* text; // empty: a separator
    const char* name;
    Signal chosen; // none: closes the window
    const char* shortcut = "";
    const char* submenu = ""; // title of the menu in this one that holds the item
};

struct Menu {
    const char* title;
    std::vector<Item> items;
    bool inSheet = false; // the context menu of the sheet has the items, too
};

const std::vector<Menu>& menus()
{
    using Main = frmVorloMain;
    static const std::vector<Menu> all{
        {"&File",
         {{"&New", "mnuNew", &Main::newChosen, "Ctrl+N"},
          {"&Open", "mnuOpen", &Main::openChosen, "Ctrl+O"},
          {"&Save as", "mnuSaveAs", &Main::saveAsChosen, "Ctrl+S"},
          {"&Import Table...", "mnuImportTable", &Main::importTableChosen},
          {"&Export...", "mnuExport", &Main::exportChosen},
          {"&Quit", "mnuQuit", nullptr}}},
        {"&Edit",
         {{"Cu&t", "mnuCut", &Main::cutChosen, "Ctrl+X"},
          {"&Copy", "mnuCopy", &Main::copyChosen, "Ctrl+C"},
          {"&Paste", "mnuPaste", &Main::pasteChosen, "Ctrl+V"},
          {"", "", nullptr},
          {kUndo, "mnuUndo", &Main::undoChosen, "Ctrl+Z"},
          {kRedo, "mnuRedo", &Main::redoChosen, "Ctrl+Shift+Z"},
          {"", "", nullptr},
          {"Paste &Samples...", "mnuPasteSamples", &Main::pasteSamplesChosen, "Ctrl+Shift+V"},
          {"Prepare &Intensities...", "mnuPrepareIntensities", &Main::prepareIntensitiesChosen}},
         true},
        {"&Calc",
         {{"&Normalization", "mnuNormalization", &Main::normalizationChosen},
          {"&Decay Curve Analysis", "mnuDecayCurveAnalysis", &Main::decayCurveAnalysisChosen},
          {"&Calc Decay Curve with input param.", "mnuCalcDecayCurve", &Main::calcDecayCurveChosen, "Ctrl+D"},
          {"&Stern-Volmer Analysis", "mnuSternVolmerAnalysis", &Main::sternVolmerAnalysisChosen},
          {"Calc Stern-&Volmer with Input param.", "mnuCalcSternVolmer", &Main::calcSternVolmerChosen, "Ctrl+T"},
          {"", "", nullptr},
          {"for &Stern-Volmer Analysis", "mnuFindSternVolmerStart", &Main::findSternVolmerStartChosen, "", kFindStart},
          {"for &Decay Curve Analysis", "mnuFindDecayStart", &Main::findDecayStartChosen, "", kFindStart},
          {"Fit D&etails", "mnuFitDetails", &Main::fitDetailsChosen},
          {"Compare &Models", "mnuCompareModels", &Main::compareModelsChosen},
          {"Find and Fit Stern-Vo&lmer", "mnuFindAndFitSternVolmer", &Main::findAndFitSternVolmerChosen},
          {"Find and Fit Decay C&urve", "mnuFindAndFitDecay", &Main::findAndFitDecayChosen},
          {"C&ompare Models of Decay Curves", "mnuCompareDecayModels", &Main::compareDecayModelsChosen},
          {"&Intensities and Lifetimes", "mnuLifetimes", &Main::lifetimesChosen}}},
        {"&Settings", {{"Set &Parameters", "mnuSetParameters", &Main::setParametersChosen}}},
        {"&Help", {{"&Help", "mnuHelpItem0", &Main::helpChosen}, {"&About Vorlo", "mnuHelpItem1", &Main::aboutChosen}}},
    };
    return all;
}

/// The path of a single dragged file; empty if nothing or more than one file is dragged.
QString onlyFile(const QMimeData& dragged)
{
    const QList<QUrl> urls = dragged.urls();
    return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

void addItem(frmVorloMain& window, QMenu& menu, const Item& item)
{
    if (!*item.text) {
        menu.addSeparator();
        return;
    }
    QAction* action = menu.addAction(frmVorloMain::tr(item.text));
    action->setObjectName(item.name);
    action->setShortcut(QKeySequence(item.shortcut));
    QObject::connect(action, &QAction::triggered, &window.sheet(), &DataSheet::storeTyped);
    if (item.chosen)
        QObject::connect(action, &QAction::triggered, &window, item.chosen);
    else
        QObject::connect(action, &QAction::triggered, &window, &QWidget::close);
}

} // namespace

frmVorloMain::frmVorloMain(SharedState& shared, QWidget* parent)
    : QMainWindow(parent), m_sheet(new DataSheet(this)), m_results(new ResultsTable(shared, this)),
      m_panel(new ParameterPanel(shared, this)), m_statusLine(new StatusLine(this))
{
    setWindowTitle(kTitle);
    makeMenus();
    showUndo({});
    showRedo({});
    arrange();
    acceptFiles();
    storeTypedFirst();
    new QShortcut(Qt::Key_F1, this, this, &frmVorloMain::helpChosen, Qt::ApplicationShortcut); // from every window
    connect(m_results, &ResultsTable::restoreChosen, m_panel, &ParameterPanel::restore);
    connect(m_sheet, &DataSheet::edited, this, [&shared] { shared.DataNormalized = false; });
}

void frmVorloMain::makeMenus()
{
    for (const Menu& menu : menus()) {
        QMenu* shown = menuBar()->addMenu(tr(menu.title));
        QMenu* submenu = nullptr;
        for (const Item& item : menu.items) {
            if (*item.submenu && !submenu)
                submenu = shown->addMenu(tr(item.submenu));
            addItem(*this, *item.submenu ? *submenu : *shown, item);
        }
        if (menu.inSheet)
            m_sheet->grid().addActions(shown->actions());
    }
    m_windowMenu = menuBar()->addMenu(tr("&Window"));
}

// Children are created in reading order, which is the tab order.
void frmVorloMain::arrange()
{
    auto* left = new QVBoxLayout;
    left->setSpacing(4);
    left->addWidget(m_sheet);
    left->addWidget(m_results, 1);

    auto* columns = new QHBoxLayout;
    columns->setSpacing(6);
    columns->addLayout(left, 1);
    columns->addWidget(m_panel);

    auto* centre = new QWidget(this);
    auto* lines = new QVBoxLayout(centre);
    lines->setContentsMargins(4, 4, 4, 4);
    lines->setSpacing(4);
    lines->addLayout(columns, 1);
    lines->addWidget(m_statusLine);
    setCentralWidget(centre);
    m_sheet->grid().setContextMenuPolicy(Qt::ActionsContextMenu);
    m_sheet->grid().setFocus(); // no focus proxy, or Tab would skip the editor after the last control
}

// Otherwise a text box would insert the name of a dropped file before the window receives it.
void frmVorloMain::acceptFiles()
{
    setAcceptDrops(true);
    for (QLineEdit* box : findChildren<QLineEdit*>())
        box->installEventFilter(this);
}

// Buttons, F1 and dropped files are commands without a menu item. A button pressed by its underlined letter does not
// take the focus, so the focus alone does not tell.
void frmVorloMain::storeTypedFirst()
{
    for (const QAbstractButton* button : findChildren<QAbstractButton*>())
        connect(button, &QAbstractButton::pressed, m_sheet, &DataSheet::storeTyped);
    connect(this, &frmVorloMain::helpChosen, m_sheet, &DataSheet::storeTyped); // by F1
    connect(this, &frmVorloMain::fileDropped, m_sheet, &DataSheet::storeTyped);
}

bool frmVorloMain::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::DragEnter || !static_cast<QDragEnterEvent*>(event)->mimeData()->hasUrls())
        return QMainWindow::eventFilter(watched, event);
    event->ignore(); // the window receives it next
    return true;
}

void frmVorloMain::dragEnterEvent(QDragEnterEvent* event)
{
    if (onlyFile(*event->mimeData()).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // a file manager may delete a file that was moved
    event->accept();
}

void frmVorloMain::dropEvent(QDropEvent* event)
{
    const QString file = onlyFile(*event->mimeData());
    if (file.isEmpty()) // the program from which it was dragged has ended
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit fileDropped(file);
}

void frmVorloMain::SetSize(int top, int left, int height, int width)
{
    ui::placeAndShow(*this, {top, left, height, width});
}

void frmVorloMain::paintEvent(QPaintEvent*) { emit painted(); }

void frmVorloMain::setDecayAnalysisEnabled(bool enabled)
{
    for (const char* item : {"mnuDecayCurveAnalysis", "mnuFindAndFitDecay"})
        findChild<QAction*>(item)->setEnabled(enabled);
}

void frmVorloMain::goTo(const QString& name)
{
    if (auto* item = findChild<QAction*>(name))
        return item->trigger();
    ui::bringToFront(*this);
    auto* box = findChild<QLineEdit*>(name);
    box->setFocus();
    box->selectAll();
}

void frmVorloMain::showUndo(const QString& step) { showStep("mnuUndo", tr(kUndo), step); }

void frmVorloMain::showRedo(const QString& step) { showStep("mnuRedo", tr(kRedo), step); }

void frmVorloMain::showStep(const char* item, const QString& caption, const QString& step)
{
    auto* action = findChild<QAction*>(item);
    action->setText(step.isEmpty() ? caption : caption + ' ' + step);
    action->setEnabled(!step.isEmpty());
}

// A running fit may have processed this event; it ends after its current iteration.
void frmVorloMain::closeEvent(QCloseEvent* event)
{
    fit::StopRequested = true;
    event->accept();
    emit closed();
}

} // namespace app
