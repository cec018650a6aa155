#include "preparation/preparationwindow.h"

#include "preparation/sampletable.h"
#include "tests/support/recordingprompter.h"
#include "ui/clipboard.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using preparation::Entry;
using preparation::Figure;
using preparation::SheetSamples;

class TestPreparationWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void typingPreparesAtOnce();
    void refusalsGoToTheirCell();
    void blocksArePastedIntoTheColumnsInView();
    void tellsWhetherTheSheetHasChanged();

private:
    template <class Control>
    Control& control(const char* name)
    {
        return *m_window->findChild<Control*>(name);
    }
    void typeCell(int sample, Entry entry, const QString& text)
    {
        table().setCurrentCell(sample - 1, static_cast<int>(entry));
        QTest::keyClicks(table().viewport(), text.first(1)); // opens the editor
        QTest::keyClicks(QApplication::focusWidget(), text.sliced(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(table().hasFocus()); // the editor ends soon after the key
    }
    QTableWidget& table() { return control<QTableWidget>("grdPreparation"); }
    QString cell(int sample, Entry entry) { return table().item(sample - 1, static_cast<int>(entry))->text(); }
    QString cell(int sample, Figure figure)
    {
        return table()
            .item(sample - 1, static_cast<int>(preparation::kEntries.size()) + static_cast<int>(figure))
            ->text();
    }
    void paste(const QString& text, int sample, Entry entry)
    {
        table().setCurrentCell(sample - 1, static_cast<int>(entry));
        ui::copyText(text);
        QTest::keyClick(&table(), Qt::Key_V, Qt::ControlModifier);
    }

    support::RecordingPrompter m_prompter;
    std::unique_ptr<preparation::PreparationWindow> m_window;
};

void TestPreparationWindow::init()
{
    qRegisterMetaType<SheetSamples>();
    m_prompter = {};
    m_window = std::make_unique<preparation::PreparationWindow>(m_prompter);
    m_window->showSheet({{"0", "0.1"}, {"1000", "500"}});
    m_window->show();
    m_window->activateWindow();
    QTRY_VERIFY(m_window->isActiveWindow());
}

void TestPreparationWindow::typingPreparesAtOnce()
{
    QCOMPARE(cell(2, Entry::Reading), "500");
    QVERIFY(table().isColumnHidden(static_cast<int>(Entry::Added)));
    control<QCheckBox>("chkDilution").click();
    QVERIFY(!table().isColumnHidden(static_cast<int>(Entry::Added)));
    auto& V0 = control<QLineEdit>("txtV0");
    QVERIFY(V0.toolTip().startsWith("V0, the volume of the reference: is empty"));
    const QColor tinted = V0.palette().color(QPalette::Base);
    V0.setText("100");
    QVERIFY(V0.toolTip().startsWith("Volume of the reference"));
    QVERIFY(V0.palette().color(QPalette::Base) != tinted);
    control<QLineEdit>("txtStock").setText("2");
    typeCell(2, Entry::Added, "25");
    typeCell(1, Entry::SecondReading, "1010");
    QCOMPARE(cell(1, Figure::PhiBefore), "1000");
    QCOMPARE(cell(1, Figure::PhiAfter), "1005");
    QCOMPARE(cell(2, Figure::QBefore), "0.1");
    QCOMPARE(cell(2, Figure::QAfter), "0.4");
    QCOMPARE(cell(2, Figure::PhiAfter), "625");
    QSignalSpy applied(m_window.get(), &preparation::PreparationWindow::applied);
    QSignalSpy errors(m_window.get(), &preparation::PreparationWindow::errorsKnown);
    table().setCurrentCell(1, static_cast<int>(Entry::Reading));
    QTest::keyClicks(table().viewport(), "6");
    QTest::keyClicks(QApplication::focusWidget(), "00"); // not entered yet
    control<QPushButton>("cmdApplyPreparation").click();
    QCOMPARE(applied.takeFirst().front().value<SheetSamples>(), (SheetSamples{{"0", "0.4"}, {"1005", "750"}}));
    // One pair that differs by 10 around 1005: d = 10 / sqrt(2) / 1005 = 0.704 %, and d / sqrt(2) for its mean.
    QCOMPARE(errors.takeFirst().front().value<std::vector<double>>(), (std::vector<double>{0.00498, 0.00704}));
    control<QCheckBox>("chkHandErrors").click();
    control<QPushButton>("cmdApplyPreparation").click();
    QVERIFY(errors.isEmpty());
}

void TestPreparationWindow::refusalsGoToTheirCell()
{
    control<QCheckBox>("chkInnerFilter").click();
    typeCell(1, Entry::Aex, "0");
    typeCell(1, Entry::Aem, "0");
    typeCell(2, Entry::Aex, "0.1x");
    const QString reason = "Sample 2, Aex: \"0.1x\" is not a number.";
    QCOMPARE(control<QLabel>("lblPreparation").text(), reason);
    QCOMPARE(table().item(1, static_cast<int>(Entry::Aex))->toolTip(), reason);
    QSignalSpy applied(m_window.get(), &preparation::PreparationWindow::applied);
    control<QPushButton>("cmdApplyPreparation").click();
    QCOMPARE(m_prompter.shown, QStringList(reason));
    QVERIFY(applied.isEmpty() && table().hasFocus());
    QCOMPARE(table().currentRow(), 1);
    QCOMPARE(table().currentColumn(), static_cast<int>(Entry::Aex));
    typeCell(2, Entry::Aex, "0.1");
    typeCell(2, Entry::Aem, "0");
    QCOMPARE(table().item(1, static_cast<int>(Entry::Aex))->toolTip(), QString());
    QTest::keyClick(&table(), Qt::Key_F2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); // ends the edit first
    QVERIFY(m_window->isVisible());
    QTest::keyClick(&table(), Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestPreparationWindow::blocksArePastedIntoTheColumnsInView()
{
    control<QCheckBox>("chkReplicates").click();
    control<QCheckBox>("chkBlank").click();
    const std::tuple<QString, QString, QString> blocks[]{// the block, a reading and a blank of the first sample
                                                         {"7,25\t1,5\r\n6\t\r\n", "7.25", "1.5"},
                                                         {"0,5\t1,000\n", "0.5", "1.000"},
                                                         {"1,000\t2\n", "1,000", "2"}, // a thousand or one
                                                         {"1,000.5\t2\n", "1,000.5", "2"},
                                                         {"1\t2\tbeyond\n", "1", "2"}};
    for (const auto& [block, reading, blank] : blocks) {
        paste(block, 1, Entry::Reading);
        QCOMPARE(cell(1, Entry::Reading), reading);
        QCOMPARE(cell(1, Entry::Blank), blank);
    }
    QCOMPARE(cell(2, Entry::Reading), "6");
    QCOMPARE(cell(1, Entry::SecondReading), QString());
    table().setRangeSelected({0, static_cast<int>(Entry::Reading), 1, static_cast<int>(Entry::Blank)}, true);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("1\t2\r\n6\t\r\n"));
    QTest::keyClick(&table(), Qt::Key_Delete);
    QCOMPARE(cell(2, Entry::Reading), QString());
}

void TestPreparationWindow::tellsWhetherTheSheetHasChanged()
{
    const auto& note = control<QLabel>("lblSheetChanged");
    const auto& take = control<QPushButton>("cmdTakeReadings");
    const SheetSamples another{{"0", "1"}, {"3", "2"}};
    m_window->showSheet(another);
    QCOMPARE(cell(1, Entry::Reading), "3"); // nothing was typed
    typeCell(1, Entry::Reading, "4");
    m_window->showSheet({{"0", "1"}, {"9", "8"}});
    QVERIFY(note.isVisible() && note.text().startsWith("The sheet has changed"));
    QCOMPARE(cell(1, Entry::Reading), "4");
    m_window->showSheet(another);
    QVERIFY(!note.isVisible());
    control<QPushButton>("cmdApplyPreparation").click();
    m_window->showSheet({{"0", "1"}, {"4", "2"}});
    QVERIFY(note.text().startsWith("The sheet holds the prepared"));
    QVERIFY(!take.isEnabled()); // they would be corrected twice
    m_window->close();
    m_window->showSheet(another); // after undo
    QVERIFY(take.isEnabled());
    QCOMPARE(cell(1, Entry::Reading), "4");
}

QTEST_MAIN(TestPreparationWindow)
#include "tst_preparationwindow.moc"
