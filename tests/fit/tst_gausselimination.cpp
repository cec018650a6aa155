#include "fit/gausselimination.h"

#include <QTest>

#include <cmath>

namespace
{

constexpr double kFewUlps = 1e-13; // room for the roundings of a well-conditioned 6 x 6 system

struct System {
    fit::Matrix7 A{};
    fit::Vector7 B{};
    int info = -1;

    void solve(int n) { fit::GaussianElimination(A, B, n, info); }
    bool operator==(const System&) const = default;
};

System twoByTwo(double a11, double a12, double a21, double a22, double b1, double b2)
{
    System system;
    system.A[1] = {0, a11, a12};
    system.A[2] = {0, a21, a22};
    system.B = {0, b1, b2};
    return system;
}

} // namespace

class TestGaussElimination : public QObject
{
    Q_OBJECT

private slots:
    void exchangesRowsForTheLargerPivot();
    void solvesAnUpperTriangleDirectly();
    void solvesSixUnknowns();
    void namesTheStepOfAZeroPivot();
    void leavesAllAsItWasOnAZeroFirstColumn();
};

void TestGaussElimination::exchangesRowsForTheLargerPivot()
{
    System system = twoByTwo(1, 2, 3, 4, 5, 6);
    system.solve(2);
    QCOMPARE(system.info, 0);
    QVERIFY(system.A[1] == (fit::Vector7{0, 3, 4})); // the second row came up
    QVERIFY(system.A[2][1] == 0);
    QVERIFY(std::abs(system.B[1] + 4) < kFewUlps);
    QVERIFY(std::abs(system.B[2] - 4.5) < kFewUlps);

    System tie = twoByTwo(2, 1, -2, 1, 3, 5);
    tie.solve(2);
    QVERIFY(tie.A[1] == (fit::Vector7{0, 2, 1})); // equal magnitudes: the earlier row stays
    QVERIFY(tie.B == (fit::Vector7{0, -0.5, 4}));
}

void TestGaussElimination::solvesAnUpperTriangleDirectly()
{
    System system = twoByTwo(2, 4, 0, 0.5, 10, 1);
    const fit::Matrix7 before = system.A;
    system.solve(2);
    QVERIFY(system.A == before);
    QVERIFY(system.B == (fit::Vector7{0, 1, 2}));
}

void TestGaussElimination::solvesSixUnknowns()
{
    const fit::Vector7 solution{0, 1, -2, 3, -4, 5, -6};
    System system;
    for (int i = 1; i <= 6; ++i)
        for (int j = 1; j <= 6; ++j) {
            system.A[i][j] = (i + j == 7 ? 10.0 : 1.0) / (i + j); // the largest entries lie on the other diagonal
            system.B[i] += system.A[i][j] * solution[j];
        }
    system.solve(6);
    QCOMPARE(system.info, 0);
    for (int i = 1; i <= 6; ++i)
        QVERIFY2(std::abs(system.B[i] - solution[i]) < kFewUlps, qPrintable(QString::number(system.B[i])));
}

void TestGaussElimination::namesTheStepOfAZeroPivot()
{
    System singular = twoByTwo(1, 2, 2, 4, 1, 1);
    singular.solve(2);
    QCOMPARE(singular.info, 2);

    System middle;
    middle.A[1] = {0, 1, 1, 1};
    middle.A[3][3] = 1;
    middle.solve(3);
    QCOMPARE(middle.info, 2);

    System single;
    single.B[1] = 7;
    single.solve(1);
    QCOMPARE(single.info, 1);
    QVERIFY(single.B[1] == 7);
}

void TestGaussElimination::leavesAllAsItWasOnAZeroFirstColumn()
{
    System system = twoByTwo(0, 2, 0, 4, 5, 6);
    System expected = system;
    expected.info = 1;
    system.solve(2);
    QVERIFY(system == expected);
}

QTEST_APPLESS_MAIN(TestGaussElimination)
#include "tst_gausselimination.moc"
