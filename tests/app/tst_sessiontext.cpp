#include "app/sessiontext.h"

#include "tests/support/waitlimit.h"

#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

using app::Session;

namespace
{

Session emptySession(int rows, int columns)
{
    Session session;
    session.rows = rows;
    session.columns = columns;
    session.cells.assign(static_cast<std::size_t>(rows - 1),
                         std::vector<std::string>(static_cast<std::size_t>(columns - 1)));
    return session;
}

std::string smallFile()
{
    QFile file(VORLO_TEST_DATA "/small.vrl");
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "cannot be read";
}

std::string replaced(std::string text, std::string_view what, std::string_view by)
{
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
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
    void readsAFileAndWritesItsExactBytes();
    void hostileTextsComeBack();
    void refusesOtherFirstLines();
    void keysComeInAnyOrder();
    void valuesAreHeldInRange();
    void absentLinesLeaveCellsAndRecords();
    void readsAtMostTwentyResults();
    void damagedFilesAreQuick();
};

void TestSessionText::readsAFileAndWritesItsExactBytes()
{
    const std::string bytes = smallFile();
    for (const std::string& text :
         {bytes, replaced(bytes, "\r\n", "\n"), replaced(bytes, "\r\n", "\r"), replaced(bytes, "1\r\n", "1\n")}) {
        const Session session = readSession(text, emptySession(10, 21)).value();
        const app::PanelState panel{.kq1 = "2e+7", .F = "", .tolerance = "1e-6", .Model = 12};
        QVERIFY(session.panel == panel);
        QCOMPARE(session.settings.LogMode, 0);
        QVERIFY((session.cells == std::vector<std::vector<std::string>>{{"0", "1e-3", ""}, {"1", "", "τ"}}));
        QCOMPARE(session.results.ResultCursor, 2);
        QCOMPARE(QByteArray::fromStdString(writeSession(session)), QByteArray::fromStdString(bytes));
    }
}

void TestSessionText::hostileTextsComeBack()
{
    using namespace std::string_literals;
    Session session = emptySession(2, 7);
    session.panel.kq1 = "Table";
    session.panel.K = "=\ta = b ";
    session.panel.fitRegion = "0\0x\u2028\x01"s;
    session.cells = {{"Vorlo File", "Table", "\"quoted\"", " kq1=1 ", "\0"s, "ﾃﾞｰﾀ 🧪"}};
    session.results.store({.Method = "Table", .Model = -3, .KorF = -1, .Error = "kq1=?", .R = 0, .Se = 0},
                          models::KorF);
    const Session back = readSession(writeSession(session), emptySession(10, 21)).value();
    QVERIFY(back.panel == session.panel);
    QVERIFY(back.cells == session.cells);
    QVERIFY(back.results.ResultData == session.results.ResultData);

    // Separators in a text look like separators of the file, so they come back as blanks in the same place.
    session.panel.s = "0.\r\n8";
    session.cells[0][2] = "1\t2\n3\r4";
    session.results.ResultData[1].Error = "not\nsatisfied";
    const Session blanked = readSession(writeSession(session), emptySession(10, 21)).value();
    QCOMPARE(blanked.panel.s, "0.  8");
    QCOMPARE(blanked.cells[0][2], "1 2 3 4");
    QCOMPARE(blanked.cells[0][3], session.cells[0][3]);
    QCOMPARE(blanked.results.ResultData[1].Error, "not satisfied");
}

void TestSessionText::refusesOtherFirstLines()
{
    for (const std::string text :
         {"", "Vorlo Fil", "Vorlo File \r\n", "vorlo file\r\n", "\r\nVorlo File\r\n", "\xEF\xBB\xBFVorlo File\r\n"}) {
        QVERIFY2(!app::readSession(text, {}), text.c_str());
        QVERIFY2(!app::startsSession(text.substr(0, 11)), text.c_str());
    }
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

void TestSessionText::valuesAreHeldInRange()
{
    const auto readChoices = [](const std::string& value, int before) {
        Session session = emptySession(10, 21);
        session.settings = {.LogMode = before, .AssessmentMode = before};
        return readOver("logmode=" + value + "\nAssessmentmode=" + value + "\nModel=" + value + "\n", session);
    };
    for (const std::string value : {"-1", "14", "1e400", "99999999999"}) {
        const Session session = readChoices(value, 1);
        QVERIFY2(session.settings.LogMode == 1, value.c_str());
        QVERIFY2(session.settings.AssessmentMode == 1, value.c_str());
        QVERIFY2(session.panel.Model == 1, value.c_str());
    }
    const std::pair<std::string, int> choices[]{{"0 normal", 0}, {"0.4", 0},         {"", 0}, {"x", 0}, {"1", 1},
                                                {" 1", 1},       {"1.0 log mode", 1}};
    for (const auto& [value, choice] : choices) {
        const Session session = readChoices(value, 1 - choice);
        QVERIFY2(session.settings.LogMode == choice, value.c_str());
        QVERIFY2(session.settings.AssessmentMode == choice, value.c_str());
    }
    const std::pair<std::string, int> counts[]{{"2", 2},    {"100", 100}, {"1", 2},      {"-2147483649", 2},
                                               {"many", 2}, {"101", 100}, {"1e400", 100}};
    for (const auto& [value, count] : counts) {
        const Session session = readOver("Rows=" + value + "\nCols=" + value + "\nTable\n", emptySession(10, 21));
        QCOMPARE(session.rows, count);
        QCOMPARE(session.columns, count);
        QCOMPARE(session.cells.size(), std::size_t(count - 1));
        QCOMPARE(session.cells.back().size(), std::size_t(count - 1));
    }
}

void TestSessionText::absentLinesLeaveCellsAndRecords()
{
    Session before = emptySession(4, 4);
    before.cells = {{"1", "2", "3"}, {"4", "5", "6"}, {"7", "8", "9"}};
    before.results.store({.Method = "SV", .Model = 1, .Error = "OK"}, models::Kq2);
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
    std::string lines = "Rows=2\nCols=2\nTable\n0\n";
    for (int results = 1; results <= 25; ++results) {
        lines += "SV\t1\n";
        const Session session = readOver(lines, emptySession(10, 21));
        QCOMPARE(session.results.ResultRowEnd, std::min(results, 20) + 1);
        QCOMPARE(session.results.ResultCursor, results < 20 ? results + 1 : 1);
        QCOMPARE(session.results.ResultData[20].Method, results < 20 ? "" : "SV");
    }
}

void TestSessionText::damagedFilesAreQuick()
{
    const std::pair<QByteArray, QByteArray> cases[]{{"kq1=", "τ"},
                                                    {"Rows=", "9"},
                                                    {"", "kq1=1\n"},
                                                    {"", "\n"},
                                                    {"", "Cols=2\nCols=100\nRows=2\nRows=100\n"},
                                                    {"Table\n", "\n"},
                                                    {"Table\n", "\t"},
                                                    {"", QByteArray("\0", 1)}};
    for (const auto& [head, piece] : cases) {
        const QByteArray text = "Vorlo File\n" + head + piece.repeated(app::kMaxSessionBytes / piece.size());
        QElapsedTimer timer;
        timer.start();
        const auto session = readSession(text.toStdString(), emptySession(10, 21));
        QVERIFY2(timer.elapsed() < support::kWaitLimit,
                 (head + piece + QByteArray::number(timer.elapsed())).constData());
        QVERIFY(session);
    }
}

QTEST_APPLESS_MAIN(TestSessionText)
#include "tst_sessiontext.moc"
