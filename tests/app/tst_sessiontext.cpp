#include "app/sessiontext.h"

#include <QElapsedTimer>
#include <QtTest>

using app::Session;

namespace
{

/// Milliseconds: a second for users; unoptimised and sanitised builds get more, a quadratic step would need hours.
#ifdef NDEBUG
constexpr qint64 kBudget = 1000;
#else
constexpr qint64 kBudget = 10'000;
#endif

Session emptySession(int rows, int columns)
{
    Session session;
    session.rows = rows;
    session.columns = columns;
    session.cells.assign(static_cast<std::size_t>(rows - 1),
                         std::vector<std::string>(static_cast<std::size_t>(columns - 1)));
    return session;
}

Session smallSession()
{
    Session session = emptySession(3, 4);
    session.panel.kq1 = "2e+7";
    session.panel.F = "";
    session.panel.tolerance = "1e-6";
    session.panel.Model = 12;
    session.settings.LogMode = 0;
    session.cells = {{"0", "1e-3", ""}, {"1", "", "τ"}};
    session.results.store({.Method = "SV",
                           .Model = 12,
                           .KorF = 0.5,
                           .Kq1 = 0,
                           .Kq2 = 1.2345e7,
                           .Kq22 = 2e6,
                           .R2 = 0.98765432,
                           .Error = "OK",
                           .R = 0,
                           .Se = 0.0126},
                          app::KorF | app::Kq2 | app::Kq22);
    return session;
}

const std::string kSmallFile = "Vorlo File\r\n"
                               "kq1=2e+7\r\n"
                               "kq2=1e+6\r\n"
                               "K=50\r\n"
                               "F=\r\n"
                               "Cp=50e-6\r\n"
                               "s=0.82\r\n"
                               "Iteration=100\r\n"
                               "residual=1e-6\r\n"
                               "Model=12\r\n"
                               "FitRegion=1e-3\r\n"
                               "Rows=3\r\n"
                               "Cols=4\r\n"
                               "logmode=0\r\n"
                               "Assessmentmode=1\r\n"
                               "Table\r\n"
                               "0\t1e-3\t\r\n"
                               "1\t\tτ\r\n"
                               "SV\t12\t5.000e-01\t0.000e+00\t1.235e+07\t2.000e+06\t0.013\tOK\t0.0\t0.987654\r\n";

std::string replaced(std::string text, std::string_view what, std::string_view by)
{
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

std::string repeated(std::string_view piece, int times)
{
    std::string text;
    for (int i = 0; i < times; ++i)
        text += piece;
    return text;
}

Session readOver(const std::string& lines, const Session& before)
{
    return readSession("Vorlo File\n" + lines, before).value();
}

} // namespace

class TestSessionText : public QObject
{
    Q_OBJECT

private slots:
    void writesExactBytes();
    void readsEveryLineEnd_data();
    void readsEveryLineEnd();
    void hostileTextsComeBack();
    void refusesOtherFirstLines_data();
    void refusesOtherFirstLines();
    void keysComeInAnyOrder();
    void choicesOutOfRangeChangeNothing_data();
    void choicesOutOfRangeChangeNothing();
    void countsAreHeldInRange_data();
    void countsAreHeldInRange();
    void absentLinesLeaveCellsAndRecords();
    void readsAtMostTwentyResults();
    void filesCutOffAnywhereAreRead();
    void damagedFilesAreQuick_data();
    void damagedFilesAreQuick();
};

void TestSessionText::writesExactBytes()
{
    QCOMPARE(QByteArray::fromStdString(writeSession(smallSession())), QByteArray::fromStdString(kSmallFile));
}

void TestSessionText::readsEveryLineEnd_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("CR LF") << QByteArray::fromStdString(kSmallFile);
    QTest::newRow("LF") << QByteArray::fromStdString(replaced(kSmallFile, "\r\n", "\n"));
    QTest::newRow("CR") << QByteArray::fromStdString(replaced(kSmallFile, "\r\n", "\r"));
    QTest::newRow("mixed") << QByteArray::fromStdString(replaced(kSmallFile, "1\r\n", "1\n"));
}

void TestSessionText::readsEveryLineEnd()
{
    QFETCH(const QByteArray, text);
    const auto session = readSession(text.toStdString(), emptySession(10, 21));
    QVERIFY(session);
    QVERIFY(session->panel == smallSession().panel);
    QVERIFY(session->cells == smallSession().cells);
    QCOMPARE(session->settings.LogMode, 0);
    QCOMPARE(session->results.ResultRowEnd, 2);
    QCOMPARE(session->results.ResultCursor, 2);
    QCOMPARE(QByteArray::fromStdString(writeSession(*session)), QByteArray::fromStdString(kSmallFile));
}

void TestSessionText::hostileTextsComeBack()
{
    using namespace std::string_literals;
    Session session = emptySession(2, 7);
    session.panel.kq1 = "Table";
    session.panel.K = "=\ta = b ";
    session.panel.fitRegion = "0\0x\u2028\x01"s;
    session.cells = {{"Vorlo File", "Table", "\"quoted\"", " kq1=1 ", "\0"s, "ﾃﾞｰﾀ 🧪"}};
    session.results.store({.Method = "Table", .Model = -3, .KorF = -1, .Error = "kq1=?", .R = 0, .Se = 0}, app::KorF);
    const Session back = readSession(writeSession(session), emptySession(10, 21)).value();
    QVERIFY(back.panel == session.panel);
    QVERIFY(back.cells == session.cells);
    QVERIFY(back.results.ResultData == session.results.ResultData);

    // Separators cannot be told from those of the file: they come back as blanks, at the same place.
    session.panel.s = "0.\r\n8";
    session.cells[0][2] = "1\t2\n3\r4";
    session.results.ResultData[1].Error = "not\nsatisfied";
    const Session blanked = readSession(writeSession(session), emptySession(10, 21)).value();
    QCOMPARE(blanked.panel.s, "0.  8");
    QCOMPARE(blanked.cells[0][2], "1 2 3 4");
    QCOMPARE(blanked.cells[0][3], session.cells[0][3]);
    QCOMPARE(blanked.results.ResultData[1].Error, "not satisfied");
}

void TestSessionText::refusesOtherFirstLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << QByteArray("Vorlo Fil");
    QTest::newRow("blank after") << QByteArray("Vorlo File \r\n");
    QTest::newRow("case") << QByteArray("vorlo file\r\n");
    QTest::newRow("empty line before") << QByteArray("\r\nVorlo File\r\n");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBFVorlo File\r\n");
}

void TestSessionText::refusesOtherFirstLines()
{
    QFETCH(const QByteArray, text);
    QVERIFY(!app::readSession(text.toStdString(), {}));
    QVERIFY(!app::startsSession(text.first(std::min(text.size(), qsizetype(11))).toStdString()));
}

void TestSessionText::keysComeInAnyOrder()
{
    const std::string shuffled = "Model=7 sites\nKq1=no\n\nunknown=1\n=\nK\nCols=3\nkq1=5\nkq1=6=7\nRows=2\n"
                                 "Assessmentmode=0\nlogmode=0\nTable\na\tb\tdropped\n";
    const Session session = readOver(shuffled, emptySession(10, 21));
    QCOMPARE(session.panel.kq1, "6=7");
    QCOMPARE(session.panel.K, app::PanelState().K);
    QCOMPARE(session.panel.Model, 7);
    QCOMPARE(session.settings.LogMode, 0);
    QCOMPARE(session.settings.AssessmentMode, 0);
    QVERIFY((session.cells == std::vector<std::vector<std::string>>{{"a", "b"}}));
    QCOMPARE(session.results.ResultRowEnd, 1);
}

void TestSessionText::choicesOutOfRangeChangeNothing_data()
{
    QTest::addColumn<QByteArray>("value");
    for (const char* value : {"", "-1", "0.4", "x", "14", "1e400", "99999999999"})
        QTest::newRow(value) << QByteArray(value);
}

void TestSessionText::choicesOutOfRangeChangeNothing()
{
    QFETCH(const QByteArray, value);
    const std::string text = value.toStdString();
    const Session session =
        readOver("logmode=" + text + "\nAssessmentmode=" + text + "\nModel=" + text + "\n", emptySession(10, 21));
    QCOMPARE(session.settings.LogMode, 1);
    QCOMPARE(session.settings.AssessmentMode, 1);
    QCOMPARE(session.panel.Model, 1);
}

void TestSessionText::countsAreHeldInRange_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("count");
    QTest::newRow("least") << QByteArray("2") << 2;
    QTest::newRow("most") << QByteArray("100") << 100;
    QTest::newRow("below") << QByteArray("1") << 2;
    QTest::newRow("negative") << QByteArray("-2147483649") << 2;
    QTest::newRow("no number") << QByteArray("many") << 2;
    QTest::newRow("above") << QByteArray("101") << 100;
    QTest::newRow("beyond every type") << QByteArray("1e400") << 100;
}

void TestSessionText::countsAreHeldInRange()
{
    QFETCH(const QByteArray, value);
    QFETCH(const int, count);
    const std::string text = value.toStdString();
    const Session session = readOver("Rows=" + text + "\nCols=" + text + "\nTable\n", emptySession(10, 21));
    QCOMPARE(session.rows, count);
    QCOMPARE(session.columns, count);
    QCOMPARE(session.cells.size(), std::size_t(count - 1));
    QCOMPARE(session.cells.back().size(), std::size_t(count - 1));
}

void TestSessionText::absentLinesLeaveCellsAndRecords()
{
    Session before = emptySession(4, 4);
    before.cells = {{"1", "2", "3"}, {"4", "5", "6"}, {"7", "8", "9"}};
    before.results.store({.Method = "SV", .Model = 1, .Error = "OK"}, app::Kq2);
    const Session session = readOver("Table\nnew\n\nx\ty\tz\n\nDecay\n\r\rSV\t2\t3\n", before);
    QVERIFY(
        (session.cells == std::vector<std::vector<std::string>>{{"new", "2", "3"}, {"", "5", "6"}, {"x", "y", "z"}}));
    QCOMPARE(session.results.ResultRowEnd, 3);
    QVERIFY((session.results.ResultData[1] == app::ResultRecord{.Method = "Decay", .Error = {}}));
    QVERIFY((session.results.ResultData[2] == app::ResultRecord{.Method = "SV", .Model = 2, .KorF = 3, .Error = {}}));
    QVERIFY(readOver("", before).cells == before.cells);
}

void TestSessionText::readsAtMostTwentyResults()
{
    const std::string head = "Rows=2\nCols=2\nTable\n0\n";
    const Session nineteen = readOver(head + repeated("SV\t1\n", 19), emptySession(10, 21));
    QCOMPARE(nineteen.results.ResultRowEnd, 20);
    QCOMPARE(nineteen.results.ResultCursor, 20);
    const Session all = readOver(head + repeated("SV\t1\n", 25), emptySession(10, 21));
    QCOMPARE(all.results.ResultRowEnd, 21);
    QCOMPARE(all.results.ResultCursor, 1);
    QCOMPARE(all.results.ResultData[20].Method, "SV");
}

void TestSessionText::filesCutOffAnywhereAreRead()
{
    const Session whole = readSession(kSmallFile, emptySession(10, 21)).value();
    for (std::size_t length = 0; length <= kSmallFile.size(); ++length) {
        const auto session = readSession(kSmallFile.substr(0, length), emptySession(10, 21));
        QCOMPARE(session.has_value(), length >= app::kSessionFirstLine.size());
        if (!session)
            continue;
        QVERIFY(whole.panel.kq1.starts_with(session->panel.kq1) || session->panel.kq1 == app::PanelState().kq1);
        QVERIFY(session->cells.size() == static_cast<std::size_t>(session->rows - 1));
        QVERIFY(session->results.ResultRowEnd <= whole.results.ResultRowEnd);
    }
}

void TestSessionText::damagedFilesAreQuick_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("endless value") << QByteArray("kq1=") << QByteArray("τ");
    QTest::newRow("endless number") << QByteArray("Rows=") << QByteArray("9");
    QTest::newRow("many keys") << QByteArray() << QByteArray("kq1=1\n");
    QTest::newRow("counts back and forth") << QByteArray() << QByteArray("Cols=2\nCols=100\nRows=2\nRows=100\n");
    QTest::newRow("many lines") << QByteArray() << QByteArray("\n");
    QTest::newRow("many lines after the table") << QByteArray("Table\n") << QByteArray("\n");
    QTest::newRow("endless row of cells") << QByteArray("Table\n") << QByteArray("\t");
    QTest::newRow("NUL bytes") << QByteArray() << QByteArray("\0", 1);
}

void TestSessionText::damagedFilesAreQuick()
{
    QFETCH(const QByteArray, head);
    QFETCH(const QByteArray, piece);
    const std::string text =
        "Vorlo File\n" + (head + piece.repeated(app::kMaxSessionBytes / piece.size())).toStdString();
    QElapsedTimer timer;
    timer.start();
    const auto session = readSession(text, emptySession(10, 21));
    QVERIFY2(timer.elapsed() < kBudget, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(session);
}

QTEST_APPLESS_MAIN(TestSessionText)
#include "tst_sessiontext.moc"
