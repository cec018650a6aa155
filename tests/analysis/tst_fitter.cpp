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
    void keepsSlotsWithoutLogarithm();
};

// All else of a fitter shows in the commands.
void TestFitter::keepsSlotsWithoutLogarithm()
{
    IdleFitter fitter;
    fitter.setInitialParameter(3, 1, 2, 3);
    fitter.setLogMode(1);
    fitter.setInitialParameter(2, 1e7, 0, -5);
    QCOMPARE(fitter.parameters(), (fit::Parameters{0, std::log(1e7), 2, 3}));
}

QTEST_APPLESS_MAIN(TestFitter)
#include "tst_fitter.moc"
