#include "app/resultrow.h"
#include "fit/numbertext.h"
#include "tests/support/application.h"
#include "ui/grid.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double kMarksToFind = 0.8; // curves cover some points

QJsonObject expectations()
{
    QFile file(":/everycommand.json");
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

/// Whether a pixel has a colour, blended with the white around it by at most two thirds.
bool hasColor(QRgb pixel, QRgb color)
{
    constexpr double kRounding = 24, kLeastCover = 1.0 / 3;
    const std::array seen{qRed(pixel), qGreen(pixel), qBlue(pixel)}, full{qRed(color), qGreen(color), qBlue(color)};
    const auto darkest = static_cast<std::size_t>(std::min_element(full.begin(), full.end()) - full.begin());
    const double cover = (255.0 - seen[darkest]) / (255.0 - full[darkest]);
    for (std::size_t channel = 0; channel < seen.size(); ++channel)
        if (std::abs(255 - cover * (255 - full[channel]) - seen[channel]) > kRounding)
            return false;
    return cover >= kLeastCover;
}

/// Whether a colour is on the picture within two pixels of a place given by fractions of width and height.
bool isMarked(const QImage& picture, const QJsonArray& mark)
{
    const int x = qRound(mark[0].toDouble() * picture.width()), y = qRound(mark[1].toDouble() * picture.height());
    for (int dx = -2; dx <= 2; ++dx)
        for (int dy = -2; dy <= 2; ++dy)
            if (picture.valid(x + dx, y + dy) &&
                hasColor(picture.pixel(x + dx, y + dy), QColor(mark[2].toString()).rgb()))
                return true;
    return false;
}

QString nameOf(const QJsonObject& expected)
{
    return QString("%1, model %2%3%4")
        .arg(expected["command"].toString())
        .arg(expected["model"].toInt())
        .arg(expected["logMode"].toInt() ? ", log mode" : "", expected["fixed"].toInt() ? ", fixed" : "");
}

int cellsInUse(const ui::Grid& grid)
{
    int count = 0;
    for (int row = 0; row < grid.rows(); ++row)
        for (int column = 0; column < grid.columns(); ++column)
            count += !grid.text(row, column).isEmpty();
    return count;
}

struct Program : support::Application {
    /// The picture of a plot as its button copies it.
    static QImage pictureOf(plot::Graph& graph)
    {
        graph.findChild<QPushButton*>("CptoClipBtn")->click();
        return QGuiApplication::clipboard()->image();
    }
    analysis::AnalyzerWindow& analyzer(const QString& analysis)
    {
        if (analysis == "SV")
            return program.SVAnalyzer;
        return program.DecayAnalyzer;
    }
};

} // namespace

/// Every command with every model in both modes through the real windows, in a program of its own and one after the
/// other. The expected values come from tests/reference/everycommand.py, which shares no code with the program.
class TestEveryCommand : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void givesWhatIsWorkedOutApart_data();
    void givesWhatIsWorkedOutApart();
    void goesOnFromWhatCommandsLeave();

private:
    void fill(const QJsonArray& samples);
    void type(const QJsonObject& texts);
    void normalize(const QJsonArray& table);
    void doCommand(const QJsonObject& expected);
    void compareResults(const QMap<int, QJsonArray>& results);
    void compareLeft(const QJsonObject& expected);
    static void compareTable(const plot::SpreadSheet& table, const QJsonArray& cells);
    void comparePlot(plot::Graph& graph, const QJsonArray& marks);

    const QJsonObject m_expected = expectations();
    std::unique_ptr<Program> m_vorlo;
};

void TestEveryCommand::init()
{
    m_vorlo = std::make_unique<Program>();
    fill(m_expected["samples"].toArray());
    type(m_expected["typed"].toObject());
}

void TestEveryCommand::fill(const QJsonArray& samples)
{
    QList<support::Column> columns;
    for (const QJsonValue& sample : samples)
        columns << sample.toVariant().toStringList();
    m_vorlo->fill(columns);
}

void TestEveryCommand::type(const QJsonObject& texts)
{
    const QHash<QString, QString> names{{"s", "S"}, {"Cp", "ConcProbe"}, {"tolerance", "Tolerance"}};
    for (const QString& key : texts.keys())
        m_vorlo->type("txt" + names.value(key, key), texts[key].toString());
}

void TestEveryCommand::normalize(const QJsonArray& table)
{
    m_vorlo->run("mnuNormalization");
    QVERIFY(m_vorlo->program.GraphWindow1.isVisible());
    compareTable(m_vorlo->program.OutputTable1, table);
}

/// Runs a command and compares its messages and everything that it shows.
void TestEveryCommand::doCommand(const QJsonObject& expected)
{
    Program& vorlo = *m_vorlo;
    vorlo.program.shared.settings.LogMode = expected["logMode"].toInt();
    vorlo.choose(expected["model"].toInt());
    vorlo.type("txtIteration", expected["iteration"].toString());
    for (const char* box : {"Check1", "Check2"})
        vorlo.control<QCheckBox>(box).setChecked(expected["fixed"].toInt());
    vorlo.prompter.shown.clear();
    vorlo.run(qPrintable(expected["command"].toString()));

    QCOMPARE(vorlo.prompter.shown, expected["messages"].toVariant().toStringList());
    if (!expected.contains("report"))
        return;
    QCOMPARE(vorlo.reportOf(vorlo.analyzer(expected["analysis"].toString())),
             expected["report"].toString().remove('\r'));
    compareTable(vorlo.program.OutputTable2, expected["table"].toArray());
    const QJsonObject plots = expected["plots"].toObject();
    for (const QString& name : plots.keys())
        comparePlot(name == "GraphWindow1" ? vorlo.program.GraphWindow1 : vorlo.program.GraphWindow2,
                    plots[name].toArray());
}

void TestEveryCommand::givesWhatIsWorkedOutApart_data()
{
    QTest::addColumn<QJsonObject>("expected");
    for (const QJsonValue& value : m_expected["cases"].toArray()) {
        const QJsonObject one = value.toObject();
        QTest::newRow(qPrintable(nameOf(one))) << one;
    }
}

void TestEveryCommand::givesWhatIsWorkedOutApart()
{
    QFETCH(const QJsonObject, expected);
    if (expected["analysis"].toString() == "Decay")
        normalize(m_expected["normalized"].toArray());
    doCommand(expected);
    compareResults({{1, expected["row"].toArray()}});
}

/// Later commands show what earlier commands left behind: ratios beyond the present samples, parameters without a
/// logarithm, fields that a result does not fill, captions.
void TestEveryCommand::goesOnFromWhatCommandsLeave()
{
    QMap<int, QJsonArray> results;
    for (const QJsonValue& value : m_expected["sequence"].toArray()) {
        const QJsonObject expected = value.toObject();
        if (expected.contains("sheet"))
            fill(expected["sheet"].toArray());
        if (expected.contains("normalized"))
            normalize(expected["normalized"].toArray());
        type(expected["typed"].toObject());
        doCommand(expected);
        if (expected.contains("stored"))
            results[expected["stored"].toInt()] = expected["row"].toArray();
        compareResults(results);
        compareLeft(expected);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(nameOf(expected)));
    }
}

void TestEveryCommand::compareResults(const QMap<int, QJsonArray>& results)
{
    for (int row = 1; row <= app::kMaxResults; ++row)
        for (int column = 0; column < app::kResultColumns; ++column)
            QCOMPARE(m_vorlo->result(row, column), results.value(row).at(column).toString());
}

/// All fields of the last result, captions and sizes of plots and tables, and the getters of both analyzers.
void TestEveryCommand::compareLeft(const QJsonObject& expected)
{
    app::VorloMain& program = m_vorlo->program;
    const auto text = [](double value) { return QString::fromStdString(fit::formatNumber(value, "#.###e+##")); };
    if (expected.contains("stored")) {
        const auto slot = static_cast<std::size_t>(expected["stored"].toInt());
        const app::ResultRecord& last = program.shared.results.ResultData[slot];
        const QStringList record{text(last.KorF), text(last.Kq1), text(last.Kq2), text(last.Kq22), text(last.R)};
        QCOMPARE(record, expected["record"].toVariant().toStringList());
    }
    const auto* grid = program.OutputTable2.findChild<ui::Grid*>();
    const QStringList shown{program.OutputTable2.windowTitle(), program.GraphWindow2.windowTitle(),
                            QString::number(grid->rows()), QString::number(cellsInUse(*grid))};
    QCOMPARE(shown, expected["shown"].toVariant().toStringList());
    QStringList left;
    for (const analysis::AnalyzerWindow* fitter :
         std::initializer_list<const analysis::AnalyzerWindow*>{&program.SVAnalyzer, &program.DecayAnalyzer})
        left << text(fitter->getK()) << text(fitter->getF()) << text(fitter->getkq1()) << text(fitter->getkq2())
             << text(fitter->getkq22());
    QCOMPARE(left, expected["left"].toVariant().toStringList());
}

void TestEveryCommand::compareTable(const plot::SpreadSheet& table, const QJsonArray& cells)
{
    const auto* grid = table.findChild<ui::Grid*>();
    for (const QJsonValue& value : cells) {
        const QJsonArray cell = value.toArray();
        QVERIFY2(grid->text(cell[0].toInt(), cell[1].toInt()) == cell[2].toString(),
                 qPrintable(QString("row %1, column %2: %3 instead of %4")
                                .arg(cell[0].toInt())
                                .arg(cell[1].toInt())
                                .arg(grid->text(cell[0].toInt(), cell[1].toInt()), cell[2].toString())));
    }
}

void TestEveryCommand::comparePlot(plot::Graph& graph, const QJsonArray& marks)
{
    const QImage picture = Program::pictureOf(graph);
    const auto found = std::count_if(marks.begin(), marks.end(),
                                     [&](const QJsonValue& mark) { return isMarked(picture, mark.toArray()); });
    QVERIFY2(static_cast<double>(found) >= kMarksToFind * static_cast<double>(marks.size()),
             qPrintable(QString("%1 of %2 marks").arg(found).arg(marks.size())));
}

QTEST_MAIN(TestEveryCommand)
#include "tst_everycommand.moc"
