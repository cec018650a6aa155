#include "trust/uncertainty.h"

#include "tests/support/callableproblem.h"

#include <QTest>

#include <cmath>

using Law = std::function<double(double x, const fit::Parameters& b)>;
using Points = std::vector<std::pair<double, double>>; // y, x as the data sets print them
using Constants = std::vector<double>;

namespace
{

constexpr double kSixDigits = 1e-6;

support::CallableProblem problemOf(const Points& points, const Law& law)
{
    return {static_cast<int>(points.size()), [=](int point, const fit::Parameters& b) {
                const auto& [y, x] = points[static_cast<std::size_t>(point - 1)];
                return law(x, b) - y;
            }};
}

fit::Parameters inSlots(const Constants& constants)
{
    fit::Parameters values{};
    std::copy(constants.begin(), constants.end(), values.begin() + 1);
    return values;
}

const Points kMisra1{{10.07, 77.6},  {14.73, 114.9}, {17.94, 141.1}, {23.93, 190.8}, {29.61, 239.9},
                     {35.18, 289.0}, {40.02, 332.8}, {44.82, 378.4}, {50.76, 434.8}, {55.05, 477.3},
                     {61.01, 536.8}, {66.40, 593.1}, {75.47, 689.1}, {81.78, 760.0}};
const Points kDanWood{{2.138, 1.309}, {3.421, 1.471}, {3.597, 1.490}, {4.340, 1.565}, {4.882, 1.611}, {5.660, 1.680}};
const Points kBoxBod{{109, 1}, {149, 2}, {149, 3}, {191, 5}, {213, 7}, {224, 10}};
const Points kRat42{{8.930, 9},   {10.800, 14}, {18.590, 21}, {22.330, 28}, {39.350, 42},
                    {56.110, 57}, {61.730, 63}, {64.620, 70}, {67.080, 79}};
const Points kMgh10{{34780, 50}, {28610, 55}, {23650, 60}, {19630, 65}, {16370, 70}, {13720, 75},
                    {11540, 80}, {9744, 85},  {8261, 90},  {7030, 95},  {6005, 100}, {5147, 105},
                    {4427, 110}, {3820, 115}, {3307, 120}, {2872, 125}};

} // namespace

Q_DECLARE_METATYPE(Law)

class TestUncertainty : public QObject
{
    Q_OBJECT

private slots:
    void reproducesCertifiedValues_data();
    void reproducesCertifiedValues();
    void fixedConstantsHaveNoError();
    void namesWhatTheDataLeaveOpen();
    void needsMorePointsThanConstants();
};

// Statistical Reference Datasets for nonlinear regression, National Institute of Standards and Technology,
// www.itl.nist.gov/div898/strd: data, second start values (first of BoxBOD: its second are near), certified constants,
// their standard deviations and the residual sum of squares.
void TestUncertainty::reproducesCertifiedValues_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<Law>("law");
    QTest::addColumn<Constants>("start");
    QTest::addColumn<Constants>("certified");
    QTest::addColumn<Constants>("deviations");
    QTest::addColumn<double>("residualSum");
    QTest::newRow("Misra1a") << kMisra1 << Law([](double x, auto& b) { return b[1] * (1 - std::exp(-b[2] * x)); })
                             << Constants{250, 0.0005} << Constants{2.3894212918E+02, 5.5015643181E-04}
                             << Constants{2.7070075241E+00, 7.2668688436E-06} << 1.2455138894E-01;
    QTest::newRow("Misra1b") << kMisra1
                             << Law([](double x, auto& b) { return b[1] * (1 - std::pow(1 + b[2] * x / 2, -2)); })
                             << Constants{300, 0.0002} << Constants{3.3799746163E+02, 3.9039091287E-04}
                             << Constants{3.1643950207E+00, 4.2547321834E-06} << 7.5464681533E-02;
    QTest::newRow("DanWood") << kDanWood << Law([](double x, auto& b) { return b[1] * std::pow(x, b[2]); })
                             << Constants{0.7, 4} << Constants{7.6886226176E-01, 3.8604055871E+00}
                             << Constants{1.8281973860E-02, 5.1726610913E-02} << 4.3173084083E-03;
    QTest::newRow("BoxBOD") << kBoxBod << Law([](double x, auto& b) { return b[1] * (1 - std::exp(-b[2] * x)); })
                            << Constants{100, 0.75} << Constants{2.1380940889E+02, 5.4723748542E-01}
                            << Constants{1.2354515176E+01, 1.0455993237E-01} << 1.1680088766E+03;
    QTest::newRow("Rat42") << kRat42 << Law([](double x, auto& b) { return b[1] / (1 + std::exp(b[2] - b[3] * x)); })
                           << Constants{75, 2.5, 0.07}
                           << Constants{7.2462237576E+01, 2.6180768402E+00, 6.7359200066E-02}
                           << Constants{1.7340283401E+00, 8.8295217536E-02, 3.4465663377E-03} << 8.0565229338E+00;
    QTest::newRow("MGH10") << kMgh10 << Law([](double x, auto& b) { return b[1] * std::exp(b[2] / (x + b[3])); })
                           << Constants{0.02, 4000, 250}
                           << Constants{5.6096364710E-03, 6.1813463463E+03, 3.4522363462E+02}
                           << Constants{1.5687892471E-04, 2.3309021107E+01, 7.8486103508E-01} << 8.7945855171E+01;
}

void TestUncertainty::reproducesCertifiedValues()
{
    QFETCH(Points, points);
    QFETCH(Law, law);
    QFETCH(Constants, start);
    QFETCH(Constants, certified);
    QFETCH(Constants, deviations);
    QFETCH(double, residualSum);
    support::CallableProblem problem = problemOf(points, law);
    const trust::FreeSlots free = trust::freeSlots(static_cast<int>(start.size()), {});
    const trust::Minimum minimum = trust::descend(problem, inSlots(start), free);
    QVERIFY(std::abs(minimum.sumOfSquares / residualSum - 1) < kSixDigits);
    const auto uncertainty = trust::uncertaintyOf(problem, minimum.values, free, problem.pointCount());
    for (std::size_t j = 0; j < certified.size(); ++j) {
        QVERIFY(std::abs(minimum.values[j + 1] / certified[j] - 1) < kSixDigits);
        QVERIFY2(std::abs(uncertainty.standardError[j + 1] / deviations[j] - 1) < kSixDigits,
                 QByteArray::number(uncertainty.standardError[j + 1], 'g', 10));
    }
}

// A straight line through (1, 1.1), (2, 1.9), (3, 3.2) with its slope fixed at 1: the intercept is the mean deviation
// 1/15 and its error the deviation sqrt(0.0467 / 2 / 3).
void TestUncertainty::fixedConstantsHaveNoError()
{
    support::CallableProblem problem =
        problemOf({{1.1, 1}, {1.9, 2}, {3.2, 3}}, [](double x, auto& b) { return b[1] * x + b[2]; });
    const trust::FreeSlots free = trust::freeSlots(2, {0, 1, 0, 0});
    const auto uncertainty = trust::uncertaintyOf(problem, {0, 1, 1.0 / 15, 0}, free, 3);
    const double scatter = 0.1 * 0.1 + 0.1 * 0.1 + 0.2 * 0.2 - 0.2 * 0.2 / 3;
    QCOMPARE(uncertainty.degreesOfFreedom, 2);
    QCOMPARE(uncertainty.standardError[1], 0.0);
    QVERIFY(std::abs(uncertainty.standardError[2] / std::sqrt(scatter / 2 / 3) - 1) < kSixDigits);
    // Student's t for two degrees of freedom, two-sided 95 percent: 4.302653 in every table
    QVERIFY(std::abs(uncertainty.halfWidth[2] / uncertainty.standardError[2] / 4.302653 - 1) < kSixDigits);
}

void TestUncertainty::namesWhatTheDataLeaveOpen()
{
    const Points line{{1.1, 1}, {1.9, 2}, {3.2, 3}, {3.9, 4}};
    support::CallableProblem product = problemOf(line, [](double x, auto& b) { return b[1] * b[2] * x + b[3]; });
    const trust::Minimum minimum = trust::descend(product, {0, 2, 1, 0.1}, {1, 2, 3});
    const auto flat = trust::uncertaintyOf(product, minimum.values, {1, 2, 3}, 4);
    QVERIFY(std::isinf(flat.standardError[1]) && std::isinf(flat.standardError[2]));
    QVERIFY(std::isfinite(flat.standardError[3]));
    QCOMPARE(flat.undetermined, (trust::FreeSlots{1, 2, 3})); // the intercept is smaller than its error
}

void TestUncertainty::needsMorePointsThanConstants()
{
    support::CallableProblem problem = problemOf({{1, 1}, {3, 2}}, [](double x, auto& b) { return b[1] * x + b[2]; });
    const auto uncertainty = trust::uncertaintyOf(problem, {0, 2, -1, 0}, {1, 2}, 2);
    QCOMPARE(uncertainty.degreesOfFreedom, 0);
    QCOMPARE(uncertainty.halfWidth[1], 0.0);
    QVERIFY(uncertainty.undetermined.empty());
}

QTEST_APPLESS_MAIN(TestUncertainty)
#include "tst_uncertainty.moc"
