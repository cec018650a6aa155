#include "trust/judging.h"

#include "tests/support/callableproblem.h"
#include "tests/support/decaysessions.h"
#include "tests/support/ratiosets.h"
#include "trust/modelcomparison.h"

#include <QTest>

using namespace trust;
using std::chrono::milliseconds;

namespace
{

analysis::Result fitted(const analysis::Request& request)
{
    support::PatientObserver patient;
    return analysis::run(request, patient);
}

/// The request as the advice of a judgement changes it; for a calculation, the values found.
analysis::Request obeying(const Judgement& judgement, analysis::Request request, LeastSums& known)
{
    if (judgement.advice == Advice::GoOn) {
        request.options = judgement.options;
        return request;
    }
    if (judgement.advice == Advice::OtherMode)
        request.options.logMode = request.options.logMode == 1 ? 0 : 1;
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    const RequestedFit requested{*problem, request};
    const leastsquares::Solution best = searchStart(requested, known).solutions.front();
    analysis::Request better = request;
    better.values = engineStart(requested, best).values;
    return better;
}

Judgement judgementOf(const analysis::Request& request)
{
    LeastSums unknown;
    return judged(request, fitted(request), unknown);
}

} // namespace

class TestJudging : public QObject
{
    Q_OBJECT

private slots:
    void everyWindowAgrees_data();
    void everyWindowAgrees();
    void adviceLeadsToTheLeastSum_data();
    void adviceLeadsToTheLeastSum();
    void saysWhatHappened_data();
    void saysWhatHappened();
    void lowerSumsBecomeTheLeastEverywhere();
    void slicesAndPausesChangeNothing();
};

void TestJudging::everyWindowAgrees_data()
{
    QTest::addColumn<bool>("iodide");
    QTest::addColumn<int>("logMode");
    for (const bool iodide : {true, false})
        for (const int logMode : {0, 1})
            QTest::addRow("%s, %s", iodide ? "acridone" : "hFis1", logMode == 1 ? "log mode" : "normal")
                << iodide << logMode;
}

// All thirteen models, from the values that the panel starts with.
void TestJudging::everyWindowAgrees()
{
    QFETCH(bool, iodide);
    QFETCH(int, logMode);
    LeastSums known;
    std::vector<analysis::Request> requests =
        support::allModels(support::ratioPoints(iodide ? support::acridoneRatios() : support::hFis1Ratios()));
    for (analysis::Request& request : requests)
        request.options.logMode = logMode;
    const Comparison comparison = compareModels(requests, {}, known);
    for (const ComparedModel& compared : comparison.places) {
        if (!compared.fitted)
            continue;
        const analysis::Request& request = requests[static_cast<std::size_t>(compared.model - 1)];
        const Judgement& row = compared.details.judgement;
        QVERIFY(row.atLeastSum());
        const std::unique_ptr<fit::Problem> problem = realProblem(request);
        const leastsquares::Solution best = searchStart({*problem, request}, known).solutions.front();
        const auto sameLeast = [&](double sum) {
            return leastsquares::equallyGood(sum, row.leastSum, problem->pointCount()) &&
                   leastsquares::equallyGood(row.leastSum, sum, problem->pointCount());
        };
        QVERIFY2(sameLeast(best.sumOfSquares), QByteArray::number(compared.model));
        QCOMPARE(best.undetermined, row.undetermined);
        const analysis::Result end = fitted(request);
        const FitDetails details = fitDetails(request, end, judged(request, end, known));
        QVERIFY2(sameLeast(details.judgement.leastSum), QByteArray::number(compared.model));
        if (details.judgement.atLeastSum())
            QCOMPARE(details.judgement.undetermined, row.undetermined);
        else
            QVERIFY(!leastsquares::equallyGood(details.sumOfSquares, best.sumOfSquares, problem->pointCount()));
    }
}

void TestJudging::adviceLeadsToTheLeastSum_data() { everyWindowAgrees_data(); }

void TestJudging::adviceLeadsToTheLeastSum()
{
    QFETCH(bool, iodide);
    QFETCH(int, logMode);
    for (int model = 1; model <= models::kModelCount; ++model) {
        LeastSums known;
        analysis::Request request = iodide ? support::acridone(model) : support::hFis1(model);
        request.options.logMode = logMode;
        const Judgement first = judged(request, fitted(request), known);
        if (first.advice == Advice::None)
            continue;
        const analysis::Request better = obeying(first, request, known);
        const analysis::Result end = first.advice == Advice::Calculate ? analysis::calculate(better) : fitted(better);
        const Judgement second = judged(better, end, known);
        QVERIFY2(second.atLeastSum(), ("model " + std::to_string(model) + ": " + sentence(first, model) + ", then " +
                                       sentence(second, model))
                                          .c_str());
    }
}

void TestJudging::saysWhatHappened_data()
{
    QTest::addColumn<analysis::Request>("request");
    QTest::addColumn<analysis::Result>("result");
    QTest::addColumn<QString>("sentence");
    const auto end = [](const char* name, const analysis::Request& request, const analysis::Result& result,
                        const char* sentence) { QTest::newRow(name) << request << result << QString(sentence); };
    const auto fit = [&](const char* name, const analysis::Request& request, const char* sentence) {
        end(name, request, fitted(request), sentence);
    };
    const auto stopped = [](double kq2) {
        return analysis::Result{.values = {0, kq2}, .fitted = true, .ending = fit::Ending::Stopped};
    };
    analysis::Request dynamic = support::acridone({.kq2 = "1e6", .Model = 1});
    fit("at the least", dynamic, "at a minimum");
    end("stopped before", dynamic, stopped(1e9), "stopped: the sum is 41.5 times the least. Find Start Values");
    end("stopped there", dynamic, stopped(154.055 / 17.6e-9), "stopped at the least sum");
    dynamic.options.logMode = 1;
    fit("on a plateau", dynamic, "not a minimum: the sum is 52.7 times the least. Find Start Values");
    fit("in a valley", support::acridone({.kq2 = "5e9", .K = "2", .Model = 3}),
        "still moving: raise the iteration limit to 400 and lower the tolerance to 1.0e-7");
    fit("fixed", support::acridone({.Model = 1, .FixKq2 = 1}), "all constants are fixed");
    fit("fixed, and the engine leaves the minimum", support::acridone({.kq2 = "4.5e9", .Model = 6, .FixKq2 = 1}),
        "not a minimum: the sum is 1403 times the least. Find Start Values, then \"Calc\" with input parameters shows "
        "the least; no analysis ends there. With kq2 fixed the least lies at K = 1.26");
    fit("no probe", support::acridone({.K = "0", .Model = 5}),
        "the model cannot be evaluated at these constants. Find Start Values");
    const analysis::Request line = support::ratioRequest(1, support::ratioPoints({0, 1, 2, 3}, {1, 2, 3, 4}, 1e-8));
    end("exact data", line, {.values = {0, 2e8}},
        "not a minimum: other constants fit exactly. Find Start Values in log mode");
    const analysis::Request two = support::ratioRequest(3, support::ratioPoints({0, 0.1}, {1, 2}, 1e-8));
    fit("one ratio for two constants", two, "not a minimum: other constants fit exactly. Find Start Values");
    const analysis::Request one = support::ratioRequest(1, support::ratioPoints({0, 0.1}, {1, 2}, 1e-8));
    end("one ratio for one constant", one, {.values = {0, 1e9}},
        "the constants are not tested: as many as samples, so the curve meets all samples");
}

void TestJudging::saysWhatHappened()
{
    QFETCH(analysis::Request, request);
    QFETCH(analysis::Result, result);
    QFETCH(QString, sentence);
    LeastSums unknown;
    const QString said = QString::fromStdString(trust::sentence(judged(request, result, unknown), request.model));
    QVERIFY2(said.startsWith(sentence) && (sentence.endsWith("1.26") || said == sentence), qPrintable(said));
}

void TestJudging::lowerSumsBecomeTheLeastEverywhere()
{
    const analysis::Request request = support::acridone(1);
    LeastSums known;
    QVERIFY(judged(request, fitted(request), known).atLeastSum());
    const leastsquares::Minimum lower{{0, 9e9}, 100}; // from elsewhere
    known.offer(request, lower);
    analysis::Request inLogMode = request;
    inLogMode.options.logMode = 1;
    inLogMode.values[1] = 5e9;
    QCOMPARE(judged(inLogMode, fitted(inLogMode), known).leastSum, 100);
    known.offer(request, {{0, -9e9}, 50});
    QCOMPARE(known.leastSum(request), 100);
    analysis::Request fixed = request;
    fixed.options.fix[1] = 1;
    QVERIFY(std::isinf(known.leastSum(fixed))); // another question
}

void TestJudging::slicesAndPausesChangeNothing()
{
    analysis::Request request{.data = support::tableFrom(support::kAcridoneSheet)};
    request = app::requestOf(app::panelValues({.Model = 3}), 1, request);
    LeastSums unknown;
    Judging judging(request, fitted(request), unknown);
    int slices = 1;
    while (!judging.advance(milliseconds(0)))
        ++slices;
    QVERIFY(slices > 100);
    QCOMPARE(QString::fromStdString(sentence(judging.judgement(), 3)),
             QString::fromStdString(sentence(judgementOf(request), 3)));
}

QTEST_APPLESS_MAIN(TestJudging)
#include "tst_judging.moc"
