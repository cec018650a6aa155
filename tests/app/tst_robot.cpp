#include "leastsquares/uncertainty.h"
#include "tests/support/application.h"
#include "tests/support/ratiosets.h"
#include "trust/requestedfit.h"
#include "ui/grid.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QToolTip>

#include <array>
#include <numeric>

namespace
{

constexpr int kSteps = 3;
constexpr int kPatience = 20'000; // ms, for one verdict on a busy machine

/// What a robot sees: ratios with noise of 0.5, 1 or 2 % on every intensity, the reference's included.
struct Session {
    explicit Session(unsigned seed)
        : model(1 + static_cast<int>(seed % models::kModelCount)), noise(0.005 * std::exp2(seed % 3)), generator(seed),
          exact(support::exactRatios(model, generator, 6 + static_cast<int>(seed % 7)))
    {
    }

    /// Columns of the sheet.
    QList<support::Column> samples()
    {
        std::normal_distribution<double> error(0, noise);
        QList<support::Column> columns;
        const auto typed = [](double value) { return QString::number(value, 'g', 6); };
        for (std::size_t i = 1; i <= static_cast<std::size_t>(exact.points.count); ++i) {
            const double intensity = 1e4 / exact.points.ratio[i] * (1 + error(generator));
            columns << support::Column{
                typed(exact.points.Q[i]), "1", "1", typed(1e9 * exact.points.tau0), "", "", "", "", typed(intensity)};
        }
        return columns;
    }

    /// Every constant is larger than its standard error at the truth.
    bool isDetermined() const
    {
        const analysis::Request request = support::ratioRequest(support::panelOf(model), exact.points);
        const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
        const leastsquares::FreeSlots free = trust::RequestedFit{*problem, request}.free();
        std::vector<double> errors;
        for (std::size_t i = 1; i <= static_cast<std::size_t>(exact.points.count); ++i)
            errors.push_back(i == 1 ? 0 : noise * exact.points.ratio[i]);
        const fit::Parameters error =
            leastsquares::propagatedErrors(*problem, exact.constants, free, errors, errors).ofParameters;
        return std::all_of(free.begin(), free.end(),
                           [&](std::size_t slot) { return error[slot] < exact.constants[slot]; });
    }

    int model;
    double noise;
    std::mt19937 generator;
    support::SimulatedRatios exact;
};

/// Reads the status line of the program and does what it says.
struct Robot : support::Application {
    QPushButton& verdict() { return control<QPushButton>("cmdVerdict"); }
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
                const QString details = program.fitDetails.findChild<QLabel*>("lblVerdict")->text();
                if (stated.startsWith("no result"))
                    return details.isEmpty();
                return details == stated && (m_calculated || tooltip() == stated);
            },
            kPatience);
    }

    /// Presses the verdict and does what it says. False when it names nothing to do, or does not open what it names.
    bool obey()
    {
        const QString sentence = said();
        const bool otherMode = sentence.contains("Choose \"");
        const bool search = sentence.contains("Find Start Values");
        const bool limit = typeNumberAfter("iteration limit to ", "txtIteration", sentence);
        const bool tolerance = typeNumberAfter("tolerance to ", "txtTolerance", sentence);
        m_calculated = sentence.contains("\"Calc\"");
        if (!search && !limit && !tolerance)
            return false;
        verdict().click();
        if (otherMode) {
            const char* mode = sentence.contains("\"log mode\"") ? "opnMethod1" : "opnMethod0";
            program.SettingWindow.findChild<QRadioButton*>(mode)->click();
            run("mnuFindSternVolmerStart");
        }
        if (search && !program.startValues.isVisible())
            return false;
        if (m_calculated)
            run("mnuCalcSternVolmer");
        else if (search)
            program.startValues.findChild<QPushButton*>("cmdFit")->click();
        else
            run("mnuSternVolmerAnalysis");
        return true;
    }

    /// Whether the end is at the least sum that is known: downhill of the truth or found by a window.
    bool isAtLeastSum(const fit::Parameters& truth)
    {
        const analysis::Request& request = program.SVAnalyzer.request();
        const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
        const leastsquares::FreeSlots free = trust::RequestedFit{*problem, request}.free();
        const double least = std::min(leastsquares::descend(*problem, truth, free).sumOfSquares,
                                      program.shared.leastSums.leastSum(request));
        return leastsquares::equallyGood(program.SVAnalyzer.getXaisqr(), least, problem->pointCount());
    }

private:
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

    bool m_calculated = false;
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
    QTest::addColumn<int>("logMode");
    QTest::newRow("log mode") << 1;
    QTest::newRow("normal") << 0;
}

// A robot runs the analysis of its session from the panel's values and does what the status line says, at most three
// times. VORLO_ROBOT_SESSIONS=<n> sets the number of sessions in each mode.
void TestRobot::obedienceLeadsToTheLeastSum()
{
    QFETCH(int, logMode);
    constexpr double kShare = 0.98;
    const int asked = qEnvironmentVariableIntValue("VORLO_ROBOT_SESSIONS");
    const unsigned sessions = asked > 0 ? static_cast<unsigned>(asked) : 15;
    int determined = 0, undetermined = 0, undeterminedReached = 0;
    std::array<int, kSteps + 1> reached{}; // after so many steps
    QStringList contradictions;
    for (unsigned seed = 1; seed <= sessions; ++seed) {
        Session session(seed);
        Robot robot;
        robot.program.shared.settings.LogMode = logMode;
        robot.choose(session.model);
        robot.fill(session.samples());
        robot.run("mnuSternVolmerAnalysis");
        QStringList story{QString("seed %1, Model %2").arg(seed).arg(session.model)};
        const auto look = [&] {
            story << robot.said();
            if (!robot.windowsAgree())
                contradictions << story.join(" | ");
        };
        look();
        std::size_t steps = 0;
        for (; steps < kSteps && robot.obey(); ++steps)
            look();
        const bool there = robot.isAtLeastSum(session.exact.constants);
        const bool counts = session.isDetermined();
        (counts ? determined : undetermined) += 1;
        (counts ? reached[steps] : undeterminedReached) += there ? 1 : 0;
        if (!there)
            qInfo("%s%s", counts ? "" : "not determined: ", qPrintable(story.join(" | ")));
    }
    const int all = std::accumulate(reached.begin(), reached.end(), 0);
    qInfo(
        "seeds 1..%u: %d of %d determined sessions end at the least sum, %d, %d, %d and %d after 0, 1, 2 and 3 steps; "
        "%d of %d others",
        sessions, all, determined, reached[0], reached[1], reached[2], reached[3], undeterminedReached, undetermined);
    QVERIFY2(contradictions.isEmpty(), qPrintable(contradictions.join('\n')));
    QVERIFY(determined > 0 && all >= kShare * determined);
}

QTEST_MAIN(TestRobot)
#include "tst_robot.moc"
