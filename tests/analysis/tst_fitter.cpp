#include "analysis/fitter.h"

#include <QTest>

#include <cmath>

using analysis::Fitter;

namespace
{

/// A fitter that is configured and read, but never run.
class IdleFitter final : public Fitter
{
public:
    IdleFitter() : Fitter(false) {}

private:
    std::shared_ptr<fit::Problem> problem() override { return nullptr; }
    fit::Statistics statistics() override { return {}; }
    void detach() override {}
    void adopt(std::shared_ptr<fit::Problem>) override {}
};

} // namespace

class TestFitter : public QObject
{
    Q_OBJECT

private slots:
    void holdsLogarithmsInLogMode();
    void forcesAboveZeroOffInLogMode();
    void handsOutEachModelsConstants();
};

void TestFitter::holdsLogarithmsInLogMode()
{
    IdleFitter fitter;
    fitter.setInitialParameter(3, 1, 2, 3);
    fitter.setLogMode(1);
    fitter.setInitialParameter(2, 1e7, 0, -5);
    QCOMPARE(fitter.parameters(), (fit::Parameters{0, std::log(1e7), 2, 3}));
}

void TestFitter::forcesAboveZeroOffInLogMode()
{
    IdleFitter fitter;
    fitter.setAboveZero(1, 0, 1);
    QCOMPARE(fitter.options().aboveZero, (fit::Flags{0, 1, 0, 1}));
    fitter.setLogMode(1);
    fitter.setAboveZero(1, 0, 1);
    QCOMPARE(fitter.options().aboveZero, fit::Flags{});
}

void TestFitter::handsOutEachModelsConstants()
{
    const std::pair<int, QList<double>> cases[]{// K, F, kq1, kq2, kq22 of the parameters 2, 3, 4
                                                {1, {0, 0, 0, 2, 0}}, {2, {2, 0, 3, 4, 0}},  {3, {2, 0, 0, 3, 0}},
                                                {4, {2, 0, 3, 0, 0}}, {12, {0, 2, 0, 3, 4}}, {13, {0, 2, 0, 3, 0}}};
    for (const auto& [model, constants] : cases) {
        IdleFitter fitter;
        fitter.setModel(model);
        fitter.setInitialParameter(3, 2, 3, 4);
        fitter.getResults();
        QCOMPARE((QList<double>{fitter.getK(), fitter.getF(), fitter.getkq1(), fitter.getkq2(), fitter.getkq22()}),
                 constants);
    }
}

QTEST_APPLESS_MAIN(TestFitter)
#include "tst_fitter.moc"
