#include "leastsquares/uncertainty.h"

#include "tests/support/callableproblem.h"
#include "tests/support/datarows.h"

#include <QTest>

#include <cmath>

using Law = std::function<double(double x, const fit::Parameters& b)>;
using Points = std::vector<std::pair<double, double>>; // y, x

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

std::vector<double> numbers(const QStringList& row, qsizetype from = 0)
{
    std::vector<double> values;
    for (const QString& text : row.mid(from))
        values.push_back(text.toDouble());
    return values;
}

fit::Parameters constants(const QStringList& row)
{
    const std::vector<double> values = numbers(row, 1); // behind their names
    fit::Parameters found{};
    std::copy(values.begin(), values.end(), found.begin() + 1);
    return found;
}

using Point = std::vector<double>; // y, x and perhaps a second x

struct CertifiedSet {
    fit::Parameters start, certified, deviations;
    double sumOfSquares = 0;
    std::vector<Point> points;
};

QMap<QString, CertifiedSet> certifiedSets()
{
    QMap<QString, CertifiedSet> sets;
    QString name;
    for (const QStringList& row : support::dataRows("nist-strd.txt")) {
        CertifiedSet& set = sets[name = row[0] == "set" ? row[1] : name];
        if (row[0] == "start")
            set.start = constants(row);
        else if (row[0] == "certified")
            set.certified = constants(row);
        else if (row[0] == "deviations")
            set.deviations = constants(row);
        else if (row[0] == "sum")
            set.sumOfSquares = row[1].toDouble();
        else if (row[0] != "set")
            set.points.push_back(numbers(row));
    }
    for (const char* other : {"Misra1b", "Misra1c", "Misra1d"})
        sets[other].points = sets["Misra1a"].points;
    return sets;
}

using PointLaw = double (*)(const Point& p, const fit::Parameters& b);
struct Model {
    const char* set;
    PointLaw law;
};

// As the sets give them; p[1] is x.
constexpr std::array kModels{
    Model{"Misra1a", [](auto& p, auto& b) { return b[1] * (1 - std::exp(-b[2] * p[1])); }},
    Model{"Misra1b", [](auto& p, auto& b) { return b[1] * (1 - std::pow(1 + b[2] * p[1] / 2, -2)); }},
    Model{"Misra1c", [](auto& p, auto& b) { return b[1] * (1 - std::pow(1 + 2 * b[2] * p[1], -0.5)); }},
    Model{"Misra1d", [](auto& p, auto& b) { return b[1] * b[2] * p[1] / (1 + b[2] * p[1]); }},
    Model{"Chwirut1", [](auto& p, auto& b) { return std::exp(-b[1] * p[1]) / (b[2] + b[3] * p[1]); }},
    Model{"Chwirut2", [](auto& p, auto& b) { return std::exp(-b[1] * p[1]) / (b[2] + b[3] * p[1]); }},
    Model{"DanWood", [](auto& p, auto& b) { return b[1] * std::pow(p[1], b[2]); }},
    Model{"BoxBOD", [](auto& p, auto& b) { return b[1] * (1 - std::exp(-b[2] * p[1])); }},
    Model{"Rat42", [](auto& p, auto& b) { return b[1] / (1 + std::exp(b[2] - b[3] * p[1])); }},
    Model{"Eckerle4", [](auto& p, auto& b) { return b[1] / b[2] * std::exp(-std::pow((p[1] - b[3]) / b[2], 2) / 2); }},
    Model{"MGH10", [](auto& p, auto& b) { return b[1] * std::exp(b[2] / (p[1] + b[3])); }},
    Model{"Nelson", [](auto& p, auto& b) { return std::exp(b[1] - b[2] * p[1] * std::exp(-b[3] * p[2])); }},
    Model{"Bennett5", [](auto& p, auto& b) { return b[1] * std::pow(b[2] + p[1], -1 / b[3]); }},
};

} // namespace

class TestUncertainty : public QObject
{
    Q_OBJECT

private slots:
    void reproducesCertifiedValues();
    void fixedConstantsHaveNoError();
    void namesWhatTheDataLeaveOpen();
    void needsMorePointsThanConstants();
};

void TestUncertainty::reproducesCertifiedValues()
{
    const QMap<QString, CertifiedSet> sets = certifiedSets();
    QCOMPARE(static_cast<std::size_t>(sets.size()), kModels.size());
    for (const auto& [name, law] : kModels) {
        const CertifiedSet set = sets[name];
        const bool logarithms = qstrcmp(name, "Nelson") == 0; // its model is for log y
        const auto residual = [&, law = law](int i, const fit::Parameters& b) {
            const Point& p = set.points[static_cast<std::size_t>(i - 1)];
            const double modelled = law(p, b);
            return logarithms ? std::log(modelled / p[0]) : modelled - p[0];
        };
        support::CallableProblem problem(static_cast<int>(set.points.size()), residual);
        const leastsquares::FreeSlots free = leastsquares::freeSlots(set.deviations[3] != 0 ? 3 : 2, {});
        const leastsquares::Minimum minimum = leastsquares::descend(problem, set.start, free);
        QVERIFY2(std::abs(minimum.sumOfSquares / set.sumOfSquares - 1) < kSixDigits, name);
        const auto uncertainty = leastsquares::uncertaintyOf(problem, minimum.values, free, problem.pointCount());
        for (const std::size_t j : free) {
            QVERIFY2(std::abs(minimum.values[j] / set.certified[j] - 1) < kSixDigits, name);
            QVERIFY2(std::abs(uncertainty.standardError[j] / set.deviations[j] - 1) < kSixDigits, name);
        }
    }
}

// A straight line through (1, 1.1), (2, 1.9), (3, 3.2) with its slope fixed at 1: the intercept is the mean deviation
// 1/15 and its error the deviation sqrt(0.0467 / 2 / 3).
void TestUncertainty::fixedConstantsHaveNoError()
{
    support::CallableProblem problem =
        problemOf({{1.1, 1}, {1.9, 2}, {3.2, 3}}, [](double x, auto& b) { return b[1] * x + b[2]; });
    const leastsquares::FreeSlots free = leastsquares::freeSlots(2, {0, 1, 0, 0});
    const auto uncertainty = leastsquares::uncertaintyOf(problem, {0, 1, 1.0 / 15, 0}, free, 3);
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
    const leastsquares::Minimum minimum = leastsquares::descend(product, {0, 2, 1, 0.1}, {1, 2, 3});
    const auto flat = leastsquares::uncertaintyOf(product, minimum.values, {1, 2, 3}, 4);
    QVERIFY(std::isinf(flat.standardError[1]));
    QVERIFY(std::isinf(flat.standardError[2]));
    QVERIFY(std::isfinite(flat.standardError[3]));
    QCOMPARE(flat.undetermined, (leastsquares::FreeSlots{1, 2, 3})); // the intercept is smaller than its error
}

void TestUncertainty::needsMorePointsThanConstants()
{
    support::CallableProblem problem = problemOf({{1, 1}, {3, 2}}, [](double x, auto& b) { return b[1] * x + b[2]; });
    const auto uncertainty = leastsquares::uncertaintyOf(problem, {0, 2, -1, 0}, {1, 2}, 2);
    QCOMPARE(uncertainty.degreesOfFreedom, 0);
    QCOMPARE(uncertainty.halfWidth[1], 0.0);
    QVERIFY(uncertainty.undetermined.empty());
}

QTEST_APPLESS_MAIN(TestUncertainty)
#include "tst_uncertainty.moc"
