#include "plot/graphwindow.h"

#include "plot/axis.h"
#include "plot/samplelist.h"
#include "ui/clipboard.h"
#include "ui/picturesurface.h"
#include "ui/twips.h"

#include <QEvent>
#include <QPushButton>

#include <algorithm>

namespace plot
{
namespace
{

constexpr double kReachTwips = 120; // the largest distance at which the pointer is on a marker
constexpr int kFirstTwips = 5000;   // initial width and height of the surface

QColor color(Color c) { return QColor(c & 0xff, c >> 8 & 0xff, c >> 16 & 0xff); }

/// The drawing primitives on which axes are drawn.
class AxisSurface final : public Surface
{
public:
    explicit AxisSurface(ui::PictureSurface& picture) : m_picture(picture) {}

    double width() const override { return m_picture.widthTwips(); }
    double height() const override { return m_picture.heightTwips(); }
    double twipsPerPixel() const override { return ui::twipsPerPixel(); }
    void clear() override { m_picture.clear(); }
    void setFontSize(int points) override { m_picture.setFontPoints(points); }
    void line(const Segment& segment, Color c) override
    {
        m_picture.drawLine({segment.x1, segment.y1}, {segment.x2, segment.y2}, color(c));
    }
    void text(double x, double y, std::string_view text) override
    {
        m_picture.drawText({x, y}, QString::fromUtf8(text));
    }

private:
    ui::PictureSurface& m_picture;
};

} // namespace

Graph::Graph(QWidget* parent)
    : OutputWindow(parent), m_surface(new ui::PictureSurface(this)), m_copyButton(new QPushButton("CopytoClip", this)),
      m_samples(new SampleList(this))
{
    m_surface->setObjectName("Picture1");
    m_surface->setAccessibleName("Plot");
    m_copyButton->setObjectName("CptoClipBtn");
    m_copyButton->setAccessibleDescription("Copies the plot to the clipboard as a picture.");
    m_copyButton->setShortcut(QKeySequence::Copy);
    m_copyButton->setFocus();
    connect(m_copyButton, &QPushButton::clicked, this, &Graph::copyToClipboard);
    connect(m_samples, &SampleList::sampleChosen, this, &Graph::ringSample);
    m_surface->tipAt = [this](const QPointF& place) {
        const LegendEntry* sample = m_legend.nearest({place.x(), place.y()}, kReachTwips);
        return sample ? QString::fromStdString("Sample " + legendText(*sample)) : QString();
    };
    SetTitle("Graph");
    resize(ui::toPixels(kFirstTwips), ui::toPixels(kFirstTwips + kBarTwips));
}

void Graph::SetTitle(std::string_view title)
{
    setWindowTitle(QString::fromUtf8(title));
    m_surface->setAccessibleDescription(QString::fromUtf8(title));
}

void Graph::SetYFormat(std::string_view str) { m_yFormat = str; }

void Graph::View(double x1, double y1, double x2, double y2)
{
    placeChildren(); // a hidden window has not received its resize event yet
    m_map = ViewMap({x1, y1, x2, y2}, {m_surface->widthTwips(), m_surface->heightTwips()});
}

void Graph::Axis(double& xt, double& yt, int islog)
{
    m_legend.clear();
    m_samples->removeSamples();
    AxisSurface surface(*m_surface);
    const TickSpacing spacing = drawAxis(surface, m_map, {m_yFormat, islog}, {xt, yt});
    xt = spacing.x;
    yt = spacing.y;
}

float Graph::VtoWX(double x) const { return m_map.VtoWX(x); }

float Graph::VtoWY(double y) const { return m_map.VtoWY(y); }

void Graph::VLine(double x1, double y1, double x2, double y2, Color c)
{
    m_surface->drawLine({VtoWX(x1), VtoWY(y1)}, {VtoWX(x2), VtoWY(y2)}, color(c));
}

void Graph::VPset(double x, double y, Color c) { m_surface->drawPoint({VtoWX(x), VtoWY(y)}, color(c)); }

void Graph::beginSample(int number, double Q) { m_legend.beginSample(number, Q); }

void Graph::VCircle(double x, double y, double R, Color c, Fill f)
{
    m_legend.addMarker({VtoWX(x), VtoWY(y)}, c);
    if (!m_legend.entries().empty() && m_legend.entries().back().markers.size() == 1)
        m_samples->addSample(m_legend.entries().back());
    m_surface->drawCircle({VtoWX(x), VtoWY(y)}, R, color(c), f == Fill::Solid ? QBrush(color(c)) : QBrush(Qt::NoBrush));
}

void Graph::VBox(double x1, double y1, double x2, double y2, Color c)
{
    m_surface->drawBox({VtoWX(x1), VtoWY(y1)}, {VtoWX(x2), VtoWY(y2)}, color(c));
}

void Graph::VFill(double x1, double y1, double x2, double y2, Color c)
{
    m_surface->fillBox({VtoWX(x1), VtoWY(y1)}, {VtoWX(x2), VtoWY(y2)}, color(c));
}

bool Graph::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
        placeChildren(); // the list of samples may have become wider
    return OutputWindow::event(event);
}

void Graph::resizeEvent(QResizeEvent*) { placeChildren(); }

void Graph::placeChildren()
{
    const int bar = ui::toPixels(kBarTwips);
    m_surface->setGeometry(0, 0, width(), height() - bar);
    m_copyButton->setGeometry(0, height() - bar, m_copyButton->sizeHint().width(), bar);
    const int beside = m_copyButton->width();
    m_samples->setGeometry(beside, height() - bar, std::min(m_samples->sizeHint().width(), width() - beside), bar);
}

void Graph::ringSample(int number)
{
    QList<QPointF> places;
    for (const LegendEntry& entry : m_legend.entries())
        if (entry.number == number)
            for (const MarkerPlace& marker : entry.markers)
                places << QPointF(marker.x, marker.y);
    m_surface->setRings(places);
}

void Graph::copyToClipboard() { ui::copyImage(m_surface->picture()); }

} // namespace plot
