#include "tests/support/application.h"
#include "ui/grid.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double kMarksToFind = 0.8; // curves cover some of the points below them

QJsonObject expectations()
{
    QFile file(":/everycommand.json");
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

/// Whether a pixel has a colour, smoothed into the white around it by at most two thirds.
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

/// Every command with every model in both modes through the real windows. What is expected was worked out by
/// tests/reference/everycommand.py, which shares nothing with the program.
class TestEveryCommand : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void givesWhatIsWorkedOutApart_data();
    void givesWhatIsWorkedOutApart();

private:
    static void compareTable(const plot::SpreadSheet& table, const QJsonArray& cells);
    void comparePlot(plot::Graph& graph, const QJsonArray& marks);

    const QJsonObject m_expected = expectations();
    std::unique_ptr<Program> m_vorlo;
};

void TestEveryCommand::init()
{
    m_vorlo = std::make_unique<Program>();
    QList<support::Column> samples;
    for (const QJsonValue& sample : m_expected["samples"].toArray())
        samples << sample.toVariant().toStringList();
    m_vorlo->fill(samples);
    const QJsonObject typed = m_expected["typed"].toObject();
    const QHash<QString, QString> names{{"s", "S"}, {"Cp", "ConcProbe"}, {"tolerance", "Tolerance"}};
    for (const QString& key : typed.keys())
        m_vorlo->type("txt" + names.value(key, key), typed[key].toString());
}

void TestEveryCommand::givesWhatIsWorkedOutApart_data()
{
    QTest::addColumn<QJsonObject>("expected");
    for (const QJsonValue& value : m_expected["cases"].toArray()) {
        const QJsonObject one = value.toObject();
        QTest::addRow("%s, model %d%s%s", qPrintable(one["command"].toString()), one["model"].toInt(),
                      one["logMode"].toInt() ? ", log mode" : "", one["fixed"].toInt() ? ", fixed" : "")
            << one;
    }
}

void TestEveryCommand::givesWhatIsWorkedOutApart()
{
    QFETCH(const QJsonObject, expected);
    Program& vorlo = *m_vorlo;
    const QString analysis = expected["analysis"].toString();
    vorlo.program.shared.settings.LogMode = expected["logMode"].toInt();
    vorlo.choose(expected["model"].toInt());
    vorlo.type("txtIteration", expected["iteration"].toString());
    for (const char* box : {"Check1", "Check2"})
        vorlo.control<QCheckBox>(box).setChecked(expected["fixed"].toInt());
    if (analysis == "Decay") {
        vorlo.run("mnuNormalization");
        compareTable(vorlo.program.OutputTable1, m_expected["normalized"].toArray());
    }
    vorlo.run(qPrintable(expected["command"].toString()));

    QCOMPARE(vorlo.prompter.shown, expected["messages"].toVariant().toStringList());
    if (!expected.contains("report"))
        return;
    QCOMPARE(vorlo.reportOf(vorlo.analyzer(analysis)), expected["report"].toString().remove('\r'));
    const QJsonArray row = expected["row"].toArray();
    for (int column = 0; column < row.size(); ++column)
        QCOMPARE(vorlo.result(1, column), row[column].toString());
    compareTable(vorlo.program.OutputTable2, expected["table"].toArray());
    const QJsonObject plots = expected["plots"].toObject();
    comparePlot(vorlo.program.GraphWindow1, plots["GraphWindow1"].toArray());
    comparePlot(vorlo.program.GraphWindow2, plots["GraphWindow2"].toArray());
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
