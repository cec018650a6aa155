#include "leastsquares/uncertainty.h"
#include "tests/support/application.h"
#include "tests/support/randomsessions.h"
#include "tests/support/ratiosets.h"
#include "trust/requestedfit.h"
#include "ui/grid.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTest>
#include <QToolTip>

#include <array>
#include <numeric>

namespace
{

constexpr int kSteps = 3;
constexpr double kShare = 0.98, kDecayShare = 0.9;
constexpr unsigned kManySessions = 300; // enough for narrow limits of the intervals' shares
constexpr int kPatience = 20'000;       // ms, for one verdict on a busy machine

/// What a robot sees: samples that follow a mechanism, with noise, and what it does not see: the constants.
struct Session {
    models::Analysis analysis;
    int model;
    QList<support::Column> samples;
    fit::Parameters constants;
    bool isDetermined; // by the exact data
};

/// Every constant is larger than its standard error at the truth.
bool isDetermined(int model, double noise, const support::SimulatedRatios& exact)
{
    const analysis::Request request = support::ratioRequest(model, exact.points);
    const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
    const leastsquares::FreeSlots free = trust::RequestedFit{*problem, request}.free();
    std::vector<double> errors;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(exact.points.count); ++i)
        errors.push_back(i == 1 ? 0 : noise * exact.points.ratio[i]);
    const fit::Parameters error =
        leastsquares::propagatedErrors(*problem, exact.constants, free, errors, errors).ofParameters;
    return std::all_of(free.begin(), free.end(), [&](std::size_t slot) { return error[slot] < exact.constants[slot]; });
}

/// Ratios with noise of 0.5, 1 or 2 % on every intensity, the reference's included.
Session ratioSession(unsigned seed)
{
    const int model = 1 + static_cast<int>(seed % models::kModelCount);
    const double noise = 0.005 * std::exp2(seed % 3);
    std::mt19937 generator(seed);
    const support::SimulatedRatios exact = support::exactRatios(model, generator, 6 + static_cast<int>(seed % 7));
    std::normal_distribution<double> error(0, noise);
    QList<support::Column> columns;
    const auto typed = [](double value) { return QString::number(value, 'g', 6); };
    for (std::size_t i = 1; i <= static_cast<std::size_t>(exact.points.count); ++i) {
        const double intensity = 1e4 / exact.points.ratio[i] * (1 + error(generator));
        columns << support::Column{typed(exact.points.Q[i]), "1", "1", typed(1e9 * exact.points.tau0), "", "", "", "",
                                   typed(intensity)};
    }
    return {models::Analysis::SternVolmer, model, columns, exact.constants, isDetermined(model, noise, exact)};
}

Session decaySession(unsigned seed)
{
    const support::RandomSessions::Session drawn = support::RandomSessions(seed).session();
    QList<support::Column> columns;
    for (const std::vector<std::string>& sample : drawn.sheet) {
        columns << support::Column{};
        for (const std::string& text : sample)
            columns.back() << QString::fromStdString(text);
    }
    return {models::Analysis::Decay, drawn.trueModel, columns, support::RandomSessions::trueValues(drawn), true};
}

/// "0.98 to 1.6", "< 3.1", "> 0.2" and "any value".
bool holds(const QString& interval, double value)
{
    const auto end = [&](const char* words, double otherwise) {
        const QRegularExpressionMatch number = QRegularExpression(words).match(interval);
        return number.hasMatch() ? number.captured(1).toDouble() : otherwise;
    };
    return value > end("(?:^|> )([-+.e0-9]+)", 0) && value < end("(?:to|<) ([-+.e0-9]+)", HUGE_VAL);
}

/// How many intervals were read, and how many of them hold the truth.
struct Coverage {
    int read = 0, bySymmetry = 0, byProfile = 0;
    static double share(int holding, int all) { return all > 0 ? static_cast<double>(holding) / all : 1; }
};

/// Reads the status line of the program and does what it says.
struct Robot : support::Application {
    explicit Robot(const Session& session) : m_session(session)
    {
        choose(session.model);
        fill(session.samples);
        if (isDecay())
            run("mnuNormalization");
    }
    bool isDecay() const { return m_session.analysis == models::Analysis::Decay; }
    void analyse() { run(isDecay() ? "mnuDecayCurveAnalysis" : "mnuSternVolmerAnalysis"); }
    QPushButton& verdict() { return control<QPushButton>("cmdVerdict"); }
    QTableWidget& details(const char* name) { return *program.fitDetails.findChild<QTableWidget*>(name); }
    QString said()
    {
        return QTest::qWaitFor([&] { return verdict().text() != "judging"; }, kPatience) ? verdict().text() : "judging";
    }

    /// Fit Details and the tooltip of the last row in Results say the same; without a result, nothing.
    bool windowsAgree()
    {
        run("mnuFitDetails");
        return QTest::qWaitFor(
            [this] {
                const QString stated = verdict().text();
                const QString text = program.fitDetails.findChild<QLabel*>("lblVerdict")->text();
                if (stated.startsWith("no result"))
                    return text.isEmpty();
                return text == stated && (m_calculated || tooltip() == stated);
            },
            kPatience);
    }

    /// Start Values promises an end only where the analysis that followed has ended.
    bool promiseWasKept()
    {
        const QString found = program.startValues.findChild<QPlainTextEdit*>("txtFound")->toPlainText();
        const QRegularExpressionMatch promised =
            QRegularExpression("ends at this minimum \\(sum (\\S+)\\)").match(found);
        return !m_searched || m_calculated || !promised.hasMatch() ||
               leastsquares::equallyGood(sum(), promised.captured(1).toDouble(), kExactPoints);
    }

    /// Compare Models has no higher sum for the chosen model, and no other verdict on as low a sum.
    bool comparisonAgrees()
    {
        const QString before = said();
        run(isDecay() ? "mnuCompareDecayModels" : "mnuCompareModels");
        const QAbstractItemModel& cells = *program.modelComparison.findChild<QTableView*>("grdModels")->model();
        const auto text = [&](int row, const char* title) {
            for (int column = 0; column < cells.columnCount(); ++column)
                if (cells.headerData(column, Qt::Horizontal).toString().remove(QChar(0x200e)) == title)
                    return cells.index(row, column).data().toString();
            return QString();
        };
        int row = 0;
        while (row < cells.rowCount() && text(row, "Model").toInt() != m_session.model)
            ++row;
        const double least = text(row, "Sum of squares").toDouble();
        const bool alsoLeast = leastsquares::equallyGood(sum(), least, kExactPoints);
        return leastsquares::equallyGood(least, sum(), kExactPoints) &&
               (!alsoLeast || text(row, "Verdict") == before) && said() == before;
    }

    /// Presses the verdict and does what it says. False when it names nothing to do.
    bool obey()
    {
        const QString sentence = said();
        const bool otherMode = sentence.contains("Choose \"") || sentence.contains("Find Start Values in ");
        const bool search = sentence.contains("Find Start Values");
        for (QWidget* window :
             std::initializer_list<QWidget*>{&program.startValues, &program.SettingWindow, &program.fitDetails})
            window->hide();
        verdict().setFocus();
        verdict().click();
        const QString focus = program.MainWindow.focusWidget()->objectName();
        const bool limit = typeNumberAfter("iteration limit to ", "txtIteration", sentence);
        const bool tolerance = typeNumberAfter("tolerance to ", "txtTolerance", sentence);
        m_calculated = sentence.contains("\"Calc\"");
        m_searched = search;
        opensWhatIsNamed = otherMode   ? program.SettingWindow.isVisible()
                           : search    ? program.startValues.isVisible()
                           : limit     ? focus == "txtIteration"
                           : tolerance ? focus == "txtTolerance"
                                       : program.fitDetails.isVisible() && focus == "cmdVerdict";
        if (!search && !limit && !tolerance)
            return false;
        if (otherMode) {
            const char* mode = program.shared.settings.LogMode == 1 ? "opnMethod0" : "opnMethod1";
            program.SettingWindow.findChild<QRadioButton*>(mode)->click();
            run(isDecay() ? "mnuFindDecayStart" : "mnuFindSternVolmerStart");
        }
        if (m_calculated)
            run(isDecay() ? "mnuCalcDecayCurve" : "mnuCalcSternVolmer");
        else if (search)
            program.startValues.findChild<QPushButton*>("cmdFit")->click();
        else
            analyse();
        return true;
    }
    bool opensWhatIsNamed = true;

    /// Downhill of the truth.
    leastsquares::Minimum truth()
    {
        const analysis::Request& request = asked();
        const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
        return leastsquares::descend(*problem, m_session.constants, trust::RequestedFit{*problem, request}.free());
    }

    /// Whether the end is at the least sum that is known: downhill of the truth or found by a window.
    bool isAtLeastSum()
    {
        const double least = std::min(truth().sumOfSquares, program.shared.leastSums.leastSum(asked()));
        return leastsquares::equallyGood(sum(), least, kExactPoints);
    }

    /// Reads the intervals of Fit Details. A law with two equal minima may have led to the other one, which has other
    /// constants.
    void readIntervals(Coverage& coverage)
    {
        constexpr double kSame = 0.3; // relative: more than between two ends at the least sum
        const fit::Parameters nearest = truth().values;
        const QTableWidget& analysed = details("grdConstants");
        const QTableWidget& assumed = details("grdAssumed");
        for (int row = 0; row < assumed.rowCount(); ++row) {
            const auto slot = static_cast<std::size_t>(row) + 1;
            if (std::abs(analysed.item(row, 1)->text().toDouble() / nearest[slot] - 1) > kSame)
                return;
        }
        for (int row = 0; row < assumed.rowCount(); ++row) {
            const double value = m_session.constants[static_cast<std::size_t>(row) + 1];
            const auto text = [&](int column) { return assumed.item(row, column)->text(); };
            ++coverage.read;
            coverage.bySymmetry += holds(text(3) + " to " + text(4), value) ? 1 : 0;
            coverage.byProfile += holds(text(5), value) ? 1 : 0;
        }
    }

private:
    static constexpr int kExactPoints = 20;

    const analysis::Request& asked()
    {
        return isDecay() ? program.DecayAnalyzer.request() : program.SVAnalyzer.request();
    }
    /// As Fit Details show it.
    double sum()
    {
        const QTableWidget& figures = details("grdFigures");
        for (int row = 0; row < figures.rowCount(); ++row)
            if (figures.item(row, 0)->text() == "Sum of squares")
                return figures.item(row, 1)->text().toDouble();
        return HUGE_VAL;
    }

    bool typeNumberAfter(const char* words, const char* box, const QString& sentence)
    {
        const QRegularExpressionMatch number = QRegularExpression(words + QString("(\\S+)")).match(sentence);
        if (number.hasMatch())
            type(box, number.captured(1));
        return number.hasMatch();
    }

    /// The last line of a row's tooltip.
    QString tooltip()
    {
        auto& grid = control<ui::Grid>("MSHFlexGrid2");
        const QPoint at(5, grid.rowViewportPosition(program.shared.results.ResultCursor - 1) + 2);
        QHelpEvent hover(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid.viewport(), &hover);
        return QToolTip::text().section('\n', -1);
    }

    const Session& m_session;
    bool m_calculated = false, m_searched = false; // in the last step
};

} // namespace

class TestRobot : public QObject
{
    Q_OBJECT

private slots:
    void obedienceLeadsToTheLeastSum_data();
    void obedienceLeadsToTheLeastSum();
};

void TestRobot::obedienceLeadsToTheLeastSum_data()
{
    QTest::addColumn<bool>("decays");
    QTest::addColumn<int>("logMode");
    QTest::newRow("ratios, log mode") << false << 1;
    QTest::newRow("ratios, normal") << false << 0;
    QTest::newRow("decays, log mode") << true << 1;
    QTest::newRow("decays, normal") << true << 0;
}

// A robot runs the analysis of its session from the panel's values and does what the status line says, at most three
// times. VORLO_ROBOT_SESSIONS=<n> sets the number of sessions in each mode.
void TestRobot::obedienceLeadsToTheLeastSum()
{
    QFETCH(bool, decays);
    QFETCH(int, logMode);
    constexpr unsigned kCompared = 10; // of so many sessions one looks at Compare Models
    const int asked = qEnvironmentVariableIntValue("VORLO_ROBOT_SESSIONS");
    const unsigned sessions = asked > 0 ? static_cast<unsigned>(asked) : decays ? 6 : 15;
    int determined = 0, undetermined = 0, undeterminedReached = 0;
    std::array<int, kSteps + 1> reached{}; // after so many steps
    Coverage coverage;
    QStringList contradictions;
    for (unsigned seed = 1; seed <= sessions; ++seed) {
        const Session session = decays ? decaySession(seed) : ratioSession(seed);
        Robot robot(session);
        robot.program.shared.settings.LogMode = logMode;
        robot.analyse();
        QStringList story{QString("seed %1, Model %2").arg(seed).arg(session.model)};
        const auto check = [&](bool agrees, const char* what) {
            if (!agrees)
                contradictions << story.join(" | ") + ": " + what;
        };
        const auto look = [&] {
            story << robot.said();
            check(robot.windowsAgree(), "Fit Details or Results");
            check(robot.promiseWasKept(), "Start Values");
        };
        look();
        std::size_t steps = 0;
        for (; steps < kSteps && robot.obey(); ++steps) {
            check(robot.opensWhatIsNamed, "the press");
            look();
        }
        check(robot.opensWhatIsNamed, "the press");
        const bool there = robot.isAtLeastSum();
        (session.isDetermined ? determined : undetermined) += 1;
        (session.isDetermined ? reached[steps] : undeterminedReached) += there ? 1 : 0;
        if (!there)
            qInfo("%s%s", session.isDetermined ? "" : "not determined: ", qPrintable(story.join(" | ")));
        if (there && session.isDetermined && !decays)
            robot.readIntervals(coverage);
        if (seed % kCompared == 0)
            check(robot.comparisonAgrees(), "Compare Models");
    }
    const int all = std::accumulate(reached.begin(), reached.end(), 0);
    qInfo(
        "seeds 1..%u: %d of %d determined sessions end at the least sum, %d, %d, %d and %d after 0, 1, 2 and 3 steps; "
        "%d of %d others. Of %d intervals, %d symmetrical ones and %d by profile hold the truth",
        sessions, all, determined, reached[0], reached[1], reached[2], reached[3], undeterminedReached, undetermined,
        coverage.read, coverage.bySymmetry, coverage.byProfile);
    QVERIFY2(contradictions.isEmpty(), qPrintable(contradictions.join('\n')));
    QVERIFY(determined > 0 && all >= (decays ? kDecayShare : kShare) * determined);
    for (const int holding : {coverage.bySymmetry, coverage.byProfile}) {
        const double share = Coverage::share(holding, coverage.read);
        QVERIFY(decays || share >= (sessions < kManySessions ? 0.8 : 0.92));
        QVERIFY(decays || sessions < kManySessions || share <= 0.98);
    }
}

QTEST_MAIN(TestRobot)
#include "tst_robot.moc"
