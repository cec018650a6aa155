#include "plot/graphwindow.h"
#include "ui/picturesurface.h"
#include "ui/twips.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QTest>

#include <cstdint>

namespace
{

const QColor kWhite(Qt::white);
const QColor kRed(255, 0, 0);
constexpr int kTwipsPerPixel = 15;

// Positions are in pixels of the window, at any scale of the screen.
QColor colorAt(const QImage& picture, int x, int y)
{
    return picture.pixelColor(QPoint(x, y) * picture.devicePixelRatio());
}

} // namespace

class TestGraph : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void sizesIncludeTheBar();
    void drawsInWorldCoordinates();
    void axesClearTheSurfaceAndShowTheFormat();
    void resizingKeepsThePictureAndTheMapping();
    void copiesThePicture();
    void tellsSamplesApartWithoutColour();
    void isShownWithoutTakingTheFocus();

private:
    ui::PictureSurface& surface() { return *m_graph->findChild<ui::PictureSurface*>("Picture1"); }
    QImage picture() { return surface().picture(); }
    QColor at(int x, int y) { return colorAt(picture(), x, y); }
    QColor atWorldY(int x, double y) { return at(x, static_cast<int>(m_graph->VtoWY(y)) / kTwipsPerPixel); }
    /// A red dot in the middle of a world of 100 by 10.
    void drawDot()
    {
        m_graph->View(0, 10, 100, 0);
        m_graph->VCircle(50, 5, 150, plot::kBrightRed, plot::Fill::Solid);
    }

    std::unique_ptr<plot::Graph> m_graph;
};

void TestGraph::init()
{
    m_graph = std::make_unique<plot::Graph>();
    m_graph->SetSize(0, 0, 6000, 4000); // a surface of 400 by 267 pixels
}

void TestGraph::sizesIncludeTheBar()
{
    std::int16_t width = 0, height = 0, top = 0, left = 0;
    m_graph->getSize(width, height);
    QCOMPARE(width, 6000);
    QCOMPARE(height, 4380);
    m_graph->SetPosition(300, 1500);
    m_graph->getPosition(top, left);
    QCOMPARE(top, 300);
    QCOMPARE(left, 1500);
    m_graph->resize(20, 5000); // 75000 twips
    m_graph->getSize(width, height);
    QCOMPARE(height, 32767);
    m_graph->move(3000, 200); // on a second screen
    m_graph->resizeSurface(6000, 4000);
    QVERIFY(m_graph->x() >= 3000);
    QCOMPARE(m_graph->size(), QSize(400, 292));
}

void TestGraph::drawsInWorldCoordinates()
{
    m_graph->VCircle(1, 1, 50, plot::kBrightRed, plot::Fill::Solid); // before any View: at the origin
    QCOMPARE(at(0, 0), kRed);
    drawDot();
    QCOMPARE(at(200, 133), kRed);
    QCOMPARE(at(200, 150), kWhite);
    m_graph->VCircle(75, 5, 150, plot::kBrightRed, plot::Fill::Transparent);
    QCOMPARE(at(300, 133), kWhite);
    m_graph->VFill(5, 9.5, 10, 9, plot::rgb(0, 0, 255));
    QCOMPARE(at(30, 20), QColor(0, 0, 255));
    m_graph->VBox(80, 9.5, 90, 8, plot::kBlack);
    QCOMPARE(at(320, 30), QColor(Qt::black));
    QCOMPARE(at(340, 30), kWhite);
    m_graph->VLine(0, 2, 100, 2, plot::kBrightRed);
    QCOMPARE(atWorldY(10, 2), kRed);
    m_graph->VPset(25, 5, plot::kBrightRed);
    QCOMPARE(atWorldY(100, 5), kRed);
    m_graph->VLine(1e300, -1e300, -1e300, 1e300, plot::kBrightRed); // clamped to the coordinate limits
    QCOMPARE(m_graph->VtoWX(1e300), 32767.0f);
}

void TestGraph::axesClearTheSurfaceAndShowTheFormat()
{
    m_graph->View(-10, 10, 100, -10);
    m_graph->VFill(0, 10, 100, -10, plot::kBrightRed);
    double xt = 20, yt = 5;
    m_graph->Axis(xt, yt, 0);
    QCOMPARE(yt, -5.0);
    QCOMPARE(at(399, 1), kWhite);
    QCOMPARE(atWorldY(200, 0), QColor(Qt::black));
    QCOMPARE(at(static_cast<int>(m_graph->VtoWX(20)) / kTwipsPerPixel, 2), QColor(192, 192, 192));
    const QImage plain = picture();
    m_graph->Axis(xt, yt, 0);
    QCOMPARE(picture(), plain); // the same call draws the same picture
    m_graph->SetYFormat("0.00000#");
    m_graph->Axis(xt, yt, 0);
    QVERIFY(picture() != plain);
}

void TestGraph::resizingKeepsThePictureAndTheMapping()
{
    drawDot();
    m_graph->show();
    m_graph->resize(800, 600);
    QTRY_COMPARE(surface().size(), QSize(800, 600 - ui::toPixels(380)));
    QCOMPARE(m_graph->findChild<QPushButton*>("CptoClipBtn")->y(), 600 - ui::toPixels(380));
    QCOMPARE(at(200, 133), kRed);
    QCOMPARE(m_graph->VtoWX(100), 6000.0f);
    m_graph->close();
    m_graph->show();
    QCOMPARE(at(200, 133), kRed);
}

void TestGraph::copiesThePicture()
{
    drawDot();
    auto* button = m_graph->findChild<QPushButton*>("CptoClipBtn");
    QCOMPARE(button->text(), "CopytoClip");
    QTest::mouseClick(button, Qt::LeftButton);
    const QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.size(), QSize(400, 292 - ui::toPixels(380)) * m_graph->devicePixelRatio());
    QCOMPARE(colorAt(copied, 200, 133), kRed);
    QCOMPARE(colorAt(copied, 5, 5), kWhite);
}

void TestGraph::tellsSamplesApartWithoutColour()
{
    const auto draw = [this] {
        double xt = 20, yt = 5;
        m_graph->View(0, 10, 100, 0);
        m_graph->Axis(xt, yt, 0);
        m_graph->beginSample(1, 0);
        m_graph->VCircle(25, 5, 30, plot::kBrightRed, plot::Fill::Solid);
        m_graph->beginSample(2, 2e-6);
        m_graph->VCircle(50, 5, 30, plot::rgb(0, 0, 255), plot::Fill::Solid);
        m_graph->VCircle(75, 5, 30, plot::rgb(0, 0, 255), plot::Fill::Solid);
    };
    m_graph->show();
    draw();
    draw(); // a new chart has its own samples only
    auto& samples = *m_graph->findChild<QComboBox*>("cboSamples");
    QCOMPARE(samples.count(), 3);
    QCOMPARE(samples.itemText(2).remove(QChar(0x200e)), "2: 0.000002 M"); // the mark of left-to-right texts
    QCOMPARE(samples.itemIcon(2).pixmap(8).toImage().pixelColor(4, 4), QColor(0, 0, 255));
    QCOMPARE(surface().tipAt(QPointF(50 * 60, 4000 / 2)), "Sample 2: 0.000002 M");
    QCOMPARE(surface().tipAt(QPointF(35 * 60, 4000 / 2)), QString());

    const QImage plain = surface().grab().toImage();
    const QImage copied = picture();
    samples.setFocus();
    QTest::keyClick(&samples, '2');
    const QImage ringed = surface().grab().toImage();
    const auto around = [](const QImage& seen, int point) {
        const qreal scale = seen.devicePixelRatio();
        return seen.copy(QRectF((100 * point - 10) * scale, 123 * scale, 20 * scale, 20 * scale).toRect());
    };
    QCOMPARE(around(ringed, 1), around(plain, 1));
    QVERIFY(around(ringed, 2) != around(plain, 2));
    QVERIFY(around(ringed, 3) != around(plain, 3));
    QCOMPARE(picture(), copied);
    draw();
    QCOMPARE(around(surface().grab().toImage(), 2), around(plain, 2)); // nothing is chosen in a new chart
}

void TestGraph::isShownWithoutTakingTheFocus()
{
    plot::Graph graph;
    QCOMPARE(graph.size(), QSize(ui::toPixels(5000), ui::toPixels(5380)));
    graph.SetTitle("Decay Curves");
    QCOMPARE(graph.windowTitle(), "Decay Curves");
    QCOMPARE(graph.findChild<ui::PictureSurface*>("Picture1")->accessibleDescription(), "Decay Curves");
    graph.showFilled();
    QVERIFY(graph.isVisible());
    QVERIFY(graph.testAttribute(Qt::WA_ShowWithoutActivating));
    graph.resize(700, 500);
    graph.close();
    graph.showFilled();
    QCOMPARE(graph.size(), QSize(700, 500));
    graph.showMinimized();
    graph.showFilled();
    QVERIFY(!graph.isMinimized());
}

QTEST_MAIN(TestGraph)
#include "tst_graphwindow.moc"
