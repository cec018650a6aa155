// The guided tour: operates the program's real windows as a user would and saves a picture of each.

#include "tests/tour/userinput.h"

#include "app/datasheet.h"
#include "app/startup.h"
#include "ui/clipboard.h"
#include "ui/grid.h"
#include "ui/prompter.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>

#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

struct Sample {
    const char* quencher;  // M
    const char* lifetime;  // ns, one exponential
    const char* intensity; // arbitrary units
};

// Acridone quenched by iodide in water at 26 degC, as printed in github.com/chemfd/PhotochemistryWorkshopAnswers,
// 04-workshopweek4.Rmd (CC0-1.0).
constexpr Sample kAcridoneIodide[] = {
    {"0", "17.6", "16580"}, {"0.04", "3.9", "3753"}, {"0.1", "1.8", "1566"}, {"0.2", "0.95", "721"},
    {"0.3", "0.64", "446"}, {"0.5", "0.39", "242"},  {"0.8", "0.25", "121"},
};
constexpr const char* kPublished = "Published for these data: K 1.19 M-1 and kq2 4.94e9 M-1s-1.";
// Slope of tau0/tau against the quencher by linear least squares, 87.3 M-1, divided by tau0 = 17.6 ns.
constexpr const char* kFromLifetimes = "A straight line through tau0/tau of these lifetimes gives kq2 4.96e9 M-1s-1.";

// Start values: collisions in water are about this fast, and such a slight bend indicates a weak complex. (A start
// value of exactly 1 does not work in log mode: its logarithm is 0, and the derivative step is a fraction of it.)
constexpr const char* kStartKq2 = "5e+9"; // M^-1 s^-1
constexpr const char* kStartK = "2";      // M^-1
constexpr const char* kMoreIterations = "1000";

// Volumes in µl, readings and absorbances; calculated with KSV = 30 M^-1, 2000 µl of probe and 0.5 M quencher, which
// absorbs 2.4 and 0.3 per M and cm.
using Typed = std::pair<preparation::Entry, const char*>;
using preparation::Entry;
const std::vector<Typed> kTitration[] = {
    {{Entry::Reading, "1786 1780"}, {Entry::Blank, "24"}, {Entry::Aex, "0.020"}, {Entry::Aem, "0"}},
    {{Entry::Added, "40"}, {Entry::Reading, "1316 1319"}, {Entry::Aex, "0.043"}, {Entry::Aem, "0.003"}},
    {{Entry::Added, "40"}, {Entry::Reading, "1037 1034"}, {Entry::Aex, "0.065"}, {Entry::Aem, "0.006"}},
    {{Entry::Added, "40"}, {Entry::Reading, "846 848"}, {Entry::Aex, "0.087"}, {Entry::Aem, "0.008"}},
    {{Entry::Added, "40"}, {Entry::Reading, "714 712"}, {Entry::Aex, "0.107"}, {Entry::Aem, "0.011"}},
    {{Entry::Added, "40"}, {Entry::Reading, "612 613"}, {Entry::Aex, "0.127"}, {Entry::Aem, "0.014"}},
};

/// Drops the offscreen platform's repeated message that it has no window manager.
void passWarning(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (!text.startsWith("This plugin does not support"))
        std::cerr << text.toStdString() << std::endl;
}

void say(const QString& text) { std::cout << text.toStdString() << std::endl; }

/// The tour expects no message box.
class TourPrompter final : public ui::Prompter
{
public:
    void message(const QString& text) override { tour::giveUp("unexpected message: " + text); }
    std::optional<QString> fileToOpen() override { return std::nullopt; }
    std::optional<QString> tableToOpen() override { return std::nullopt; }
    std::optional<QString> fileToSave(const QString&) override { return std::nullopt; }
    std::optional<QString> tableToSave(const QString&) override { return std::nullopt; }
    std::optional<QString> folderForTables() override { return std::nullopt; }
    bool mayReplace(const QString&) override { return false; }
    bool mayReplaceAll(const QStringList&) override { return false; }
};

/// Types one column from its first cell on: Enter stores and moves down, arrow keys skip the unused components.
void typeSample(const Sample& sample)
{
    for (const char* text : {sample.quencher, "1", "1", sample.lifetime}) {
        tour::type(text);
        tour::press(Qt::Key_Return);
    }
    tour::press(Qt::Key_Down, 4);
    tour::type(sample.intensity);
    tour::press(Qt::Key_Return);
}

void typeSamples(app::frmVorloMain& window)
{
    tour::clickCell(tour::find<ui::Grid>(window, "MSHFlexGrid1"), 1, 1);
    for (const Sample& sample : kAcridoneIodide) {
        typeSample(sample);
        tour::press(Qt::Key_Right);
        tour::press(Qt::Key_Up, app::kSheetRows - 2);
    }
    tour::press(Qt::Key_Left, static_cast<int>(std::size(kAcridoneIodide)));
}

void chooseModel(app::frmVorloMain& window, int model)
{
    tour::goTo(window);
    tour::click(tour::find<QRadioButton>(window, qPrintable(QString("opnModel%1").arg(model))));
}

/// Prints the report of an analyzer and its row of the results table.
void showOutcome(QWidget& analyzer, app::frmVorloMain& window, int row, const char* comparison)
{
    say("\nReport:\n" + tour::find<QPlainTextEdit>(analyzer, "txtResults").toPlainText());
    const auto& results = tour::find<ui::Grid>(window, "MSHFlexGrid2");
    if (results.text(row, 0).isEmpty())
        tour::giveUp("no result was stored");
    QStringList cells;
    for (int column = 0; column < results.columns(); ++column)
        if (!results.text(row, column).isEmpty())
            cells << results.text(0, column) + " = " + results.text(row, column).trimmed();
    const auto& verdict = tour::find<QPushButton>(window, "cmdVerdict");
    tour::waitWhile(verdict, "judging");
    say("Results row: " + cells.join(", ") + "\nVerdict: " + verdict.text() + '\n' + comparison + "\n");
}

struct Tour {
    app::VorloMain& program;
    QDir folder;

    void picture(QWidget& window, const char* name) { tour::takePicture(window, folder.filePath(name)); }

    void sternVolmer()
    {
        app::frmVorloMain& window = program.MainWindow;
        say("Typing seven samples of acridone quenched by iodide.");
        tour::goTo(window);
        typeSamples(window);
        say("Model 3 (dynamic quenching and a weak complex), starting from K 2 M-1 and kq2 5e9 M-1s-1;\n"
            "the rest as the program starts: probe 50e-6 M, tolerance 0.0001, 100 iterations, log mode.");
        chooseModel(window, 3);
        tour::retype(tour::find<QLineEdit>(window, "txtK"), kStartK);
        tour::retype(tour::find<QLineEdit>(window, "txtkq2"), kStartKq2);
        tour::chooseItem(window, "mnuSternVolmerAnalysis");
        showOutcome(program.SVAnalyzer, window, 1, kPublished);

        say("The same with up to 1000 iterations.");
        tour::goTo(window);
        tour::retype(tour::find<QLineEdit>(window, "txtIteration"), kMoreIterations);
        tour::chooseItem(window, "mnuSternVolmerAnalysis");
        showOutcome(program.SVAnalyzer, window, 2, kPublished);
        picture(window, "main-window.png");
        picture(program.SVAnalyzer, "stern-volmer-analyzer.png");
        picture(program.GraphWindow2, "stern-volmer-plot.png");
        picture(program.OutputTable2, "stern-volmer-table.png");
    }

    void decayCurves()
    {
        app::frmVorloMain& window = program.MainWindow;
        say("Normalization, then Model 1 (dynamic quenching) on all decay curves, starting from kq2 5e9 M-1s-1.");
        tour::chooseItem(window, "mnuNormalization");
        picture(program.OutputTable1, "observed-decays.png");
        chooseModel(window, 1);
        tour::chooseItem(window, "mnuDecayCurveAnalysis");

        showOutcome(program.DecayAnalyzer, window, 3, kFromLifetimes);
        picture(program.DecayAnalyzer, "decay-analyzer.png");
        picture(program.GraphWindow1, "decay-curves.png");
        tour::choose(tour::find<QComboBox>(program.GraphWindow1, "cboSamples"), 2);
        picture(program.GraphWindow1, "decay-sample.png");
        picture(program.GraphWindow2, "decay-deviations.png");
        picture(program.OutputTable2, "decay-table.png");
    }

    void settings()
    {
        tour::chooseItem(program.MainWindow, "mnuSetParameters");
        picture(program.SettingWindow, "settings.png");
    }

    void import()
    {
        say("The same samples from a spreadsheet with decimal commas, in mM.");
        ui::copyText(
            "c(KI) / mM\tFluoreszenz\n0\t16580,0\n40\t3753,0\n100\t1566,0\n200\t721,0\n300\t446,0\n500\t242,0\n"
            "800\t121,0\n");
        tour::chooseItem(program.MainWindow, "mnuPasteSamples");
        picture(program.importWindow, "import-table.png");
        tour::press(Qt::Key_Escape);
    }

    void trust()
    {
        app::frmVorloMain& window = program.MainWindow;
        say("Start values that work, details of the fit from there, and all models on the same data.");
        chooseModel(window, 3);
        tour::chooseItem(window, "mnuFindSternVolmerStart");
        say(tour::find<QPlainTextEdit>(program.startValues, "txtFound").toPlainText());
        picture(program.startValues, "start-values.png");
        tour::chooseItem(window, "mnuSternVolmerAnalysis");
        tour::chooseItem(window, "mnuFitDetails");
        tour::waitWhile(tour::find<QPushButton>(window, "cmdVerdict"), "judging");
        picture(program.fitDetails, "fit-details.png");
        auto& pages = tour::find<QTabWidget>(program.fitDetails, "tabDetails");
        for (const char* name : {"fit-under-the-assumption.png", "samples-left-out.png", "to-print.png"}) {
            pages.setCurrentIndex(pages.currentIndex() + 1);
            picture(program.fitDetails, name);
        }
        tour::chooseItem(window, "mnuFindAndFitSternVolmer");
        tour::chooseItem(window, "mnuCompareModels");
        picture(program.modelComparison, "compare-models.png");
    }

    void lifetimes()
    {
        say("Intensities and lifetimes together.");
        tour::chooseItem(program.MainWindow, "mnuLifetimes");
        say(tour::find<QLabel>(program.lifetimesWindow, "lblFinding").text());
        picture(program.lifetimesWindow, "lifetimes.png");
    }

    void prepare()
    {
        app::frmVorloMain& window = program.MainWindow;
        say("Readings of a titration: mean, blank, inner filter and dilution.");
        tour::chooseItem(window, "mnuNew");
        tour::clickCell(tour::find<ui::Grid>(window, "MSHFlexGrid1"), 1, 1);
        for (const char* text : {"0", "1", "1", "3"}) {
            tour::type(text);
            tour::press(Qt::Key_Return);
        }
        tour::chooseItem(window, "mnuPrepareIntensities");
        preparation::PreparationWindow& preparing = program.preparationWindow;
        tour::goTo(preparing);
        for (const char* step : {"chkBlank", "chkInnerFilter", "chkDilution"})
            tour::click(tour::find<QCheckBox>(preparing, step));
        tour::retype(tour::find<QLineEdit>(preparing, "txtV0"), "2000");
        tour::retype(tour::find<QLineEdit>(preparing, "txtStock"), "0.5");
        auto& table = tour::find<QTableWidget>(preparing, "grdPreparation");
        for (int row = 0; row < static_cast<int>(std::size(kTitration)); ++row)
            for (const auto& [entry, text] : kTitration[row])
                tour::typeCell(table, row, static_cast<int>(entry), text);
        tour::press(Qt::Key_End); // where the results are
        tour::click(tour::find<QPushButton>(preparing, "cmdApplyPreparation"));
        picture(preparing, "prepare-intensities.png");
        chooseModel(window, 1);
        tour::chooseItem(window, "mnuFindAndFitSternVolmer");
        showOutcome(program.SVAnalyzer, window, program.shared.results.ResultCursor - 1,
                    "The readings were calculated with kq2 1e10 M-1s-1.");
    }
};

/// The colours of a dark desktop.
QPalette darkPalette()
{
    QPalette dark(QColor(53, 53, 53), QColor(35, 35, 35));
    dark.setColor(QPalette::PlaceholderText, Qt::gray);
    dark.setColor(QPalette::Link, QColor(90, 170, 255));
    return dark;
}

} // namespace

int main(int argc, char* argv[])
{
    qInstallMessageHandler(passWarning);
    QApplication application(argc, argv);
    if (argc > 2 && argv[2] == std::string_view("dark"))
        QApplication::setPalette(darkPalette());
    const QDir folder(argc > 1 ? argv[1] : "tour");
    if (!folder.mkpath("."))
        tour::giveUp("cannot make " + folder.path());

    TourPrompter prompter;
    app::VorloMain program(prompter);
    Tour tour{program, folder};
    tour.sternVolmer();
    tour.decayCurves();
    tour.settings();
    tour.import();
    tour.trust();
    tour.lifetimes();
    tour.prepare();
    say("One picture of each window is in " + folder.absolutePath());
    return EXIT_SUCCESS;
}
