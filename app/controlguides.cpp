#include "app/controlguides.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <QToolTip>

#include <span>

namespace app
{
namespace
{

struct Guide {
    const char* name; // objectName of a control, or the words of a title
    const char* text;
};

constexpr Guide kControls[]{
    {"txtEdit", "text of the current cell: Enter stores it and moves down, Esc restores the old text"},
    {"cmdCopy", "copies the titles and the rows above the cursor \">\", but no row from the cursor on"},
    {"cmdClearAll", "empties the results; Undo brings them back"},
    {"cmdDelRow", "deletes the selected row; the rows below it move up"},
    {"cmdRestore", "puts model and constants of the selected row into the boxes, rounded as the row shows them; kq2 of "
                   "Model 3 stays as typed"},
    {"cmdSetCursor", "the next result goes into the selected row and replaces it"},
    {"cmdSTOP", "ends the running fit after its current iteration; what it has reached is reported and stored"},
    {"cmdOK", "hides this window"},
    {"CptoClipBtn", "copies the plot as a picture of the size that it has here"},
    {"cboSamples", "samples by number and quencher concentration; choose one to put rings around its points"},
    {"opnTime0", "seconds in the tables of decays; plots always use seconds"},
    {"opnTime1", "nanoseconds in the tables of decays; plots always use seconds"},
    {"opnIscale0", "intensities in the tables of decays"},
    {"opnIscale1", "base-10 logarithms of the intensities in the tables of decays"},
    {"opnMethod0", "varies the constants themselves; a step below 0 is halved"},
    {"opnMethod1", "varies the logarithms of the constants, which therefore stay above 0"},
    {"opnAssessment0", "shows R2 in the results; it is no test of a model"},
    {"opnAssessment1", "shows the residual sum of squares in the results"},
    {"cmdCancelSearch", "ends the search; the boxes keep the typed values"},
    {"cmdBack", "puts the typed values back into the boxes"},
    {"cmdCopyFound", "copies the solutions and the text below them"},
    {"cmdFit", "runs the analysis from the values in the boxes"},
    {"cmdCloseStarts", "closes this window; the boxes keep the chosen values"},
    {"cboErrors", "what is assumed about the errors of the intensities; details and comparison follow"},
    {"txtErrors", "one for all samples, or one for each, the reference first, with blanks between them"},
    {"chkKnownErrors", "the errors are as typed; otherwise the scatter about the fit says how large they are"},
    {"cmdCopyDetails", "copies the tables of all pages as text"},
    {"cmdCloseDetails", "closes this window"},
    {"txtTau0Error", "standard error of τ0 in percent; the constants ready to print contain it"},
    {"txtSError", "standard error of s in percent; r contains it"},
    {"txtCpError", "standard error of the probe concentration in percent; the constants ready to print contain it"},
    {"cmdCopySentence", "copies the constants and how they were found as a sentence for a paper"},
    {"cmdCancelComparison", "ends the comparison without a result"},
    {"cmdCopyModels", "copies the table in its present order, with the notes"},
    {"cmdContents", "goes to the list of sections"},
    {"cmdHelpBack", "goes back to where you followed the last link"},
    {"txtFind", "a text to search for: Enter finds it, F3 finds it again"},
    {"opnReplace", "the samples of the table replace the ones in the sheet"},
    {"opnAdd", "the samples of the table follow the ones in the sheet"},
    {"cmdImportOK", "writes the samples as the preview shows them into the sheet"},
    {"cmdImportCancel", "closes this window; the sheet stays as it is"},
    {"cmdClosePreparation", "closes this window; what was typed stays"},
    {"txtErrorRatio", "1 if a lifetime has the same relative error as an intensity, 2 if it has twice this error"},
    {"chkEachEstimated",
     "the scatter about the fit says how large both errors are; from six intensities and six lifetimes on"},
    {"cboTogetherModel", "model whose lines and constants are shown; the best one is the first"},
    {"chkByIntensity", "draws the mean lifetimes weighted by intensity as well; they are never fitted"},
    {"cmdReadAgain", "reads the samples anew; enabled when the sheet has changed"},
    {"cmdTypeTogether", "puts the model and its constants into the panel; Undo takes them back"},
    {"cmdCopyTogetherSentence", "copies the constants and how they were found as a sentence for a paper"},
    {"cmdCopyTogether", "copies what is said and the tables as text"},
    {"cmdCloseTogether", "closes this window"},
    {"cboExportTable", "the table that goes into a file, with all digits of its numbers"},
    {"cboExportSeparator",
     "what stands between two cells: choose the semicolon where your spreadsheet program expects it. "
     "The decimal sign is a point in both"},
    {"chkHead",
     "the first lines of a file name the program's version, the analysis, the assumption about errors, τ0 and Cp"},
    {"cmdSaveTable", "writes the chosen table into one file"},
    {"cmdSaveAll", "writes every table that has numbers into a folder, one file each"},
    {"cmdCloseExport", "closes this window"},
    {"cmdSysInfo", "starts the desktop's program that describes the computer"},
};

// A title that means something else in one table begins with the name of this table.
constexpr Guide kTitles[]{
    {"Model", "number of the model; its law is in the tooltip of its option"},
    {"Fitting Region", "how far the decays are followed; normalise again after a change"},
    {"Time scale", "unit of the times in the tables of decays"},
    {"Intensity Scale", "what the tables of decays list"},
    {"Gauss-Newton", "what the fit varies"},
    {"Assessment", "what the results show of the goodness of a fit"},
    {"Table", "how the text of the table is read"},
    {"Columns", "which column of the table is which row of the sheet, and its unit"},
    {"Qtotal/ M", "total quencher concentration in M; 0 in the first column"},
    {"Component", "number of exponentials of the decay: 1, 2 or 3"},
    {"A1", "amplitude of the first component; Normalization scales the sum to 1"},
    {"A2", "amplitude of the second component; Normalization scales the sum to 1"},
    {"A3", "amplitude of the third component; Normalization scales the sum to 1"},
    {"τ1/ns", "lifetime of the first component in ns"},
    {"τ2/ns", "lifetime of the second component in ns"},
    {"τ3/ns", "lifetime of the third component in ns"},
    {"Φ", "steady-state intensity in any unit; only Stern-Volmer analyses read it"},
    {"Method", "SV: Stern-Volmer analysis of ratios; Decay: analysis of decay curves"},
    {"K or F", "K in M-1 or, of two sites, their ratio F"},
    {"kq1/s", "rate constant beside the probe in s-1"},
    {"kq2/M-1s-1", "rate constant of collisions, of two sites that of the first"},
    {"kq22/M-1s-1", "rate constant of collisions at the second site"},
    {"Se", "residual sum of squares"},
    {"R2", "coefficient of determination; it is no test of a model"},
    {"Error", "how the fit ended: OK, not satisfied or, after a failure of the solver, *"},
    {"r /nm", "radius of the sphere of action that belongs to K and s"},
    {"Constant", "constant of the model with its unit"},
    {"Value", "result of the analysis"},
    {"Free or fixed", "whether the fit varied the constant"},
    {"Figure", "what is said of the whole fit"},
    {"Q /M", "total quencher concentration in M"},
    {"K", "equilibrium or sphere constant in M-1"},
    {"K /M-1", "equilibrium or sphere constant in M-1"},
    {"F", "ratio of the two sites"},
    {"kq1", "rate constant beside the probe in s-1, of two sites of the first one in M-1s-1"},
    {"kq2", "rate constant of collisions in M-1s-1, of two sites of the second one"},
    {"kq2 /M-1s-1", "rate constant of collisions, of two sites of the second one"},
    {"Standard error", "standard error under the chosen assumption about errors"},
    {"95 % from", "lower end of the 95 % interval: the standard error times Student's t"},
    {"95 % to", "upper end of the 95 % interval: the standard error times Student's t"},
    {"95 % by profile", "interval in which the sum of squares, minimised again, stays below its 95 % limit"},
    {"Fitted so", "fitted anew under the assumption about errors"},
    {"Correlation", "correlation of two constants: near 1 or -1 the data tell only a combination of both"},
    {"Observed", "measured Φ0/Φ"},
    {"grdResiduals/Model", "Φ0/Φ by the model"},
    {"Residual", "observed minus model"},
    {"In expected errors", "residual divided by the error that the assumption expects of it"},
    {"Without sample", "the fit without this sample"},
    {"Influence", "largest change of a constant in units of its standard error"},
    {"on", "the constant that changes most"},
    {"Outlyingness", "how far the sum of squares drops without the sample"},
    {"Value ± standard error", "rounded for a paper: the error with two digits, the value as far"},
    {"by scatter", "part of the error by the scatter of the samples"},
    {"by τ0", "part of the error by the typed error of τ0"},
    {"by s", "part of the error by the typed error of s"},
    {"by Cp", "part of the error by the typed error of the probe concentration"},
    {"Place", "rank of the model, the best one first"},
    {"Sum of squares", "sum of squared residuals; every further constant lowers it"},
    {"Sum of squares of analysis", "sum of squared residuals of the analysis; every further constant lowers it"},
    {"AICc under assumption", "Akaike's criterion for few samples: smaller is better, and it counts the constants"},
    {"Difference", "AICc above that of the first model; below about 2 the data hardly tell"},
    {"Verdict", "what the fit is worth, as in the line at the foot of the main window"},
    {"Remarks", "what to consider before this model is believed"},
    {"Fit", "the analysis as it was run"},
    {"Fit under the Assumption", "the ratios fitted anew under the assumption about errors"},
    {"Samples Left Out", "the fit without each sample"},
    {"Constants", "the constants of the model with their errors and intervals"},
    {"Samples", "the ratios that are drawn"},
    {"Static Factor", "what lowers the intensity beyond the lifetime"},
    {"Models", "all models, the best one first"},
    {"grdRanking/Model", "number and name of the model"},
    {"grdRanking/Constants", "the constants at the best fit"},
    {"AICc", "Akaike's criterion for few samples, over intensities and lifetimes: smaller is better"},
    {"above the first", "AICc above that of the first model; below about 2 the data hardly tell"},
    {"with τ0 measured", "standard error if the reference's lifetime errs as all lifetimes do"},
    {"Sample", "number of the sample in the sheet; 1 is the reference"},
    {"Φ0/Φ", "intensity of the reference divided by that of the sample"},
    {"τ0/τ", "mean lifetime of the reference divided by that of the sample"},
    {"τ /ns", "mean lifetime weighted by the amplitudes"},
    {"weighted by intensity", "mean lifetime weighted by the intensities of the components, ns; never fitted"},
    {"s", "static factor (Φ0/Φ)/(τ0/τ); 1 for collisions alone"},
    {"±", "standard error of the number to the left"},
    {"(s − 1)/Q /M-1", "the same in all samples if a dark complex forms"},
    {"ln s/Q /M-1", "the same in all samples if a dark sphere quenches"},
    {"ln Φ − fitted /%", "residual of the intensity"},
    {"ln τ − fitted /%", "residual of the lifetime"},
    {"To Print", "the constants with their errors, ready for a paper"},
};

QString textOf(std::span<const Guide> guides, QString name)
{
    name.remove('&').remove(QChar(0x200e)).replace('\n', ' '); // marks of keys and of direction, line breaks
    for (const Guide& guide : guides)
        if (name == guide.name)
            return QCoreApplication::translate("app::ControlGuides", guide.text);
    return {};
}

/// Shows the tooltips of titles, which are no widgets, and of captions, whose boxes have them.
class TitleGuides final : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip)
            return false;
        const auto* help = static_cast<QHelpEvent*>(event);
        auto* widget = static_cast<QWidget*>(watched);
        const QString text = guideAt(*widget, help->pos());
        if (!text.isEmpty())
            QToolTip::showText(help->globalPos(), text, widget);
        return !text.isEmpty();
    }

private:
    static QString guideAt(const QWidget& widget, const QPoint& place)
    {
        if (const auto* caption = qobject_cast<const QLabel*>(&widget))
            return caption->buddy() ? caption->buddy()->toolTip() : QString();
        const auto& header = static_cast<const QHeaderView&>(*widget.parentWidget());
        const int section = header.orientation() == Qt::Horizontal ? header.logicalIndexAt(place.x())
                                                                   : header.logicalIndexAt(place.y());
        const QString title = header.model()->headerData(section, header.orientation()).toString();
        const QString inThisTable = textOf(kTitles, header.parentWidget()->objectName() + '/' + title);
        return inThisTable.isEmpty() ? textOf(kTitles, title) : inThisTable;
    }
};

void explainControl(QWidget& control, const QString& text)
{
    if (text.isEmpty() || !control.toolTip().isEmpty())
        return;
    control.setToolTip(text);
    if (control.accessibleDescription().isEmpty())
        control.setAccessibleDescription(text);
}

} // namespace

void explainWindows(const QWidgetList& windows)
{
    auto* titles = new TitleGuides(windows.constFirst());
    for (const QWidget* window : windows) {
        for (auto* control : window->findChildren<QWidget*>())
            explainControl(*control, textOf(kControls, control->objectName()));
        for (auto* frame : window->findChildren<QGroupBox*>())
            explainControl(*frame, textOf(kTitles, frame->title()));
        for (auto* tabs : window->findChildren<QTabWidget*>())
            for (int tab = 0; tab < tabs->count(); ++tab)
                tabs->setTabToolTip(tab, textOf(kTitles, tabs->tabText(tab)));
        for (auto* header : window->findChildren<QHeaderView*>())
            header->viewport()->installEventFilter(titles);
        for (auto* caption : window->findChildren<QLabel*>())
            caption->installEventFilter(titles);
    }
}

} // namespace app
