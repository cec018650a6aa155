#include "imports/encoding.h"
#include "imports/sampletable.h"
#include "tests/support/waitlimit.h"

#include <QStringEncoder>
#include <QTest>

#include <ctime>

namespace
{

using imports::Choices;
using imports::DecimalSign;

imports::SampleList read(const QByteArray& bytes, const Choices& choices = {})
{
    const auto text = imports::decodedText({bytes.data(), static_cast<std::size_t>(bytes.size())});
    return text ? readSamples(findTable(imports::withPlainLineEnds(*text), choices)) : imports::SampleList{};
}

/// Concentration, intensity and lifetime of each sample, with all that is not read.
QString told(const imports::SampleList& list)
{
    QStringList lines;
    for (const imports::SampleColumn& sample : list.samples) {
        QStringList cells;
        for (const int row : {decay::kConcRow, decay::kPhiRow, decay::lifetimeRow(1)})
            cells << QString::fromStdString(sample[static_cast<std::size_t>(row)].text);
        lines << cells.join(' ').trimmed();
    }
    for (const std::string& remark : list.remarks)
        lines << QString::fromStdString(remark);
    return lines.join(" | ");
}

QByteArray inEncoding(QStringConverter::Encoding encoding, const QString& text, bool mark = false)
{
    QStringEncoder encode(encoding, mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    return encode(text);
}

const QString kSeven = "0 16580 | 0.04 3753 | 0.1 1566 | 0.2 721 | 0.3 446 | 0.5 242 | 0.8 121";
const QString kPoint = "0\t16580\n0.04\t3753\n0.1\t1566\n0.2\t721\n0.3\t446\n0.5\t242\n0.8\t121\n";
const QString kMillimolar = "c / mM\tF\n0\t16580\n40\t3753\n100\t1566\n200\t721\n300\t446\n500\t242\n800\t121\n";

} // namespace

class TestSampleTable : public QObject
{
    Q_OBJECT

private slots:
    void readsSevenSamplesInEverySpelling_data();
    void readsSevenSamplesInEverySpelling();
    void readsWhatTitlesSay();
    void namesWhatIsNotRead();
    void waitsForADecimalSign();
    void obeysChoices();
    void refusesWhatIsNoTable();
};

void TestSampleTable::readsSevenSamplesInEverySpelling_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* name, const QString& text) { QTest::newRow(name) << text.toUtf8(); };
    const QString comma = QString(kPoint).replace('.', ',');
    row("tabs", kPoint);
    row("semicolons", QString(kPoint).replace('\t', ';'));
    row("commas", QString(kPoint).replace('\t', ','));
    row("blanks", QString(kPoint).replace('\t', "   "));
    row("decimal commas and tabs", comma);
    row("decimal commas and semicolons", QString(comma).replace('\t', ';'));
    row("decimal commas and blanks", QString(comma).replace('\t', ' '));
    row("quoted decimal commas",
        '"' + QString(comma).trimmed().replace('\t', "\",\"").replace('\n', "\"\n\"") + "\"\n");
    row("CR LF", QString(kPoint).replace('\n', "\r\n"));
    row("CR", QString(kPoint).replace('\n', '\r'));
    row("no line end at the end", kPoint.trimmed());
    row("titles", "Q/M\tI\n" + kPoint);
    row("titles and units below", "Quencher\tFluorescence\nM\ta.u.\n" + kPoint);
    row("comments", "# acridone\n#0.5;3\n" + QString(kPoint).replace("0.1\t", "# twice\n0.1\t"));
    row("head of text lines",
        "Instrument;F-1\nSlit;5\n\nSample;7\n[Q] / M;Counts\n" + QString(kPoint).replace('\t', ';'));
    row("labels before, ratios behind",
        "Sample;F;c(KI) / M;F0/F\na;16580;0;1\nb;3753;0.04;4.4\nc;1566;0.1;10.6\nd;721;0.2;23\n"
        "e;446;0.3;37.2\nf;242;0.5;68.5\ng;121;0.8;137\n");
    row("words of another language",
        "Probe-Nr.\tKonz. / M\tIntensität\n1\t" + QString(kPoint).trimmed().replace("\n", "\n2\t"));
    row("samples in columns", "\t0\t0.04\t0.1\t0.2\t0.3\t0.5\t0.8\nF\t16580\t3753\t1566\t721\t446\t242\t121\n");
    row("titled rows", "c / mM;0;40;100;200;300;500;800\nIntensity;16580;3753;1566;721;446;242;121\n");
    row("untitled rows", "0,0.04,0.1,0.2,0.3,0.5,0.8\n16580,3753,1566,721,446,242,121\n");
    row("millimolar", kMillimolar);
    row("blanks in titles", "c / mM  F (a.u.)\n" + QString(kMillimolar).section('\n', 1).replace('\t', "  "));
    row("micromolar", "[Q] (µM);I\n0;16580\n40000;3753\n1e5;1566\n2E5;721\n3·10⁵;446\n5 x 10^5;242\n8×10⁵;121\n");
    row("units in cells",
        "0 M\t16580\n40 mM\t3753\n100 mM\t1566\n0.2 mol/L\t721\n300 mM\t446\n500mmol/l\t242\n800000 µM\t121\n");
    row("thin blanks", QString(kPoint).replace("16580", "16\u2009580").replace("3753", "3\u202f753"));
    row("apostrophes", QString(kPoint).replace("16580", "16'580").replace("3753", "3’753"));
    row("groups by points", QString(comma).replace("16580", "16.580").replace("3753", "3.753"));
    row("groups by commas", QString(kPoint).replace("16580", "16,580.0").replace("3753", "3,753"));
    QTest::newRow("UTF-8 with a mark") << inEncoding(QStringConverter::Utf8, kMillimolar, true);
    QTest::newRow("UTF-16 with a mark") << inEncoding(QStringConverter::Utf16LE, kMillimolar, true);
    QTest::newRow("UTF-16, the other order") << inEncoding(QStringConverter::Utf16BE, kMillimolar, true);
    QTest::newRow("UTF-16 without a mark") << inEncoding(QStringConverter::Utf16LE, kMillimolar);
    QTest::newRow("Latin-1") << inEncoding(
        QStringConverter::Latin1,
        QString(kMillimolar).replace("mM", "µM").replace("00\t", "00000\t").replace("40\t", "40000\t"));
}

void TestSampleTable::readsSevenSamplesInEverySpelling()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(told(read(bytes)), kSeven);
}

void TestSampleTable::readsWhatTitlesSay()
{
    const imports::SampleList list = read("Q / mM;A1;t1 (ps);alpha 2;Lifetime 2 / ns;Φ\n5;0.4;17600;0.6;1.5;99\n");
    const imports::SampleColumn& sample = list.samples.at(0);
    QStringList texts;
    for (int row = 1; row <= decay::kPhiRow; ++row)
        texts << QString::fromStdString(sample[static_cast<std::size_t>(row)].text);
    QCOMPARE(texts.join(';'), "0.005;2;0.4;17.6;0.6;1.5;;;99");
    using imports::Quantity;
    const struct {
        const char* title;
        std::optional<Quantity> quantity;
    } titles[] = {
        {"[NO] / mM", Quantity::Concentration},
        {"No.", {}},
        {"quenched F", Quantity::Intensity},
        {"F0/F", {}},
        {"F (λ = 450 nm)", Quantity::Intensity},
        {"V / µL", Quantity::Added},
        {"Total volume / mL", {}},
        {"F (Vol. 2)", Quantity::Intensity},
        {"τ₂", Quantity::Tau2},
        {"I0", {}},
        {"λ / nm", {}},
        {"c(probe)", {}},
        {"alpha_3", Quantity::A3},
        {"SD of F", {}},
    };
    for (const auto& one : titles)
        QVERIFY2(imports::guessFromTitle(one.title).quantity == one.quantity, one.title);
    QCOMPARE(told(read("F;[Q] (mM);tau\n100;0\n50;1;5\n")), "0 100 | 0.001 50 5");
    const imports::SampleList titration = read("Volume/µL\tF\n\t100\n20,5\t50\n");
    QCOMPARE(told(titration), "100 | 50"); // the reference has no volume
    QCOMPARE(titration.samples.at(1).front().text, "20.5");
    QCOMPARE(told(read("V/µL\tc/M\tF\n0\t0\t100\n5\t\t50\n")),
             "0 100 | Row 3 is left out, because it has no concentration.");
}

void TestSampleTable::namesWhatIsNotRead()
{
    const imports::SampleList list = read("c / M\tF\n0\t100\n# second\n0.1\tover\n\t80\n0.2 ns\t70\n0.3\t\n");
    QCOMPARE(told(list),
             "0 100 | 0.1 | 0.3 | Row 4, column 2: \"over\" is not a number. | Row 5 is left out, because it "
             "has no concentration. | Row 6, column 1: \"0.2 ns\" has the unit of another quantity. | Row 6 is "
             "left out, because it has no concentration.");
    QCOMPARE(list.samples.at(1)[decay::kPhiRow].row, 4);
    const imports::SampleList columns = read("c/M\t0\t0.1\nF\tover\t50\n");
    QCOMPARE(told(columns), "0 | 0.1 50 | Row 2, column 2: \"over\" is not a number.");
    using Texts = std::vector<std::string>;
    QCOMPARE(read("c\tF\tF2\n0\t9\t8\n1\t5\t4\n").notes,
             (Texts{"Concentration: no unit was found, M is assumed.", "Columns of numbers that are not used: 3."}));
    QCOMPARE(read("c\tF\n0\t9\n1 mM\t5\n").notes, Texts());
    QCOMPARE(read("c/M,F\n0,1,100\n0,2,80\n").notes.back(),
             "Columns of numbers without a title: 3. Are the cells cut as they should be?");
}

void TestSampleTable::waitsForADecimalSign()
{
    const QByteArray open = "0\t1,000\n1\t2,500\n", decided = "0,5\t1,000\n1\t2,500\n";
    const imports::SampleList list = read(open);
    QVERIFY(list.waitsForSign);
    QCOMPARE(remarkOn(list.samples.at(1)[decay::kPhiRow]),
             "\"2,500\" is 2500 with a decimal point and 2.5 with a decimal comma");
    for (const auto& [sign, texts] :
         {std::pair{DecimalSign::Point, "0 1000 | 1 2500"}, std::pair{DecimalSign::Comma, "0 1 | 1 2.5"}}) {
        const imports::SampleList chosen = read(open, {.decimalSign = sign});
        QVERIFY(!chosen.waitsForSign);
        QCOMPARE(told(chosen), texts);
    }
    QCOMPARE(told(read(decided)), "0.5 1 | 1 2.5");
    QVERIFY(read("0.5\t1,000\n0,5\t2,500\n").waitsForSign); // other cells contradict each other
}

void TestSampleTable::obeysChoices()
{
    Choices choices{
        .separator = imports::Separator::Semicolon, .samplesInColumns = false, .firstRow = 2, .comment = "%"};
    choices.columns[indexOf(imports::Quantity::Concentration)] = 3;
    choices.columns[indexOf(imports::Quantity::Intensity)] = 0;
    choices.columns[indexOf(imports::Quantity::Tau1)] = 1;
    choices.units[indexOf(imports::Quantity::Concentration)] = imports::Unit{imports::UnitKind::Concentration, -6};
    choices.units[indexOf(imports::Quantity::Tau1)] = imports::Unit{imports::UnitKind::Time, 0};
    const imports::SampleList list = read("1;2;3\n% 4;5;6\n7;8;9\n", choices);
    QCOMPARE(told(list), "0.000009  7000000000");
    QCOMPARE(list.samples.at(0)[decay::amplitudeRow(1)].text, "1"); // one exponential
}

void TestSampleTable::refusesWhatIsNoTable()
{
    QVERIFY(!imports::decodedText(std::string_view("PK\x03\x04\x14\0\x06\0\x08\0", 10)));
    const std::clock_t start = std::clock(); // of the processor, because it may have other work
    std::string lines;
    for (int i = 0; i < 100'000; ++i)
        lines += "1\t2\n";
    QVERIFY(!imports::complaintAboutSize(lines).empty());
    QVERIFY(!imports::complaintAboutSize(std::string(100'000'000, '1')).empty());
    std::string most; // what is just not refused
    while (most.size() + 140 < imports::kMostBytes)
        most += QByteArray("1,2;").repeated(34).toStdString() + "\n";
    QVERIFY(imports::complaintAboutSize(most).empty());
    imports::readSamples(imports::findTable(most, {}));
    QVERIFY((std::clock() - start) / (CLOCKS_PER_SEC / 1000) < support::kWaitLimit);
}

QTEST_APPLESS_MAIN(TestSampleTable)
#include "tst_sampletable.moc"
