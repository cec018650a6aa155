#include "plot/graphwindow.h"

#include "plot/axis.h"
#include "ui/clipboard.h"
#include "ui/picturesurface.h"
#include "ui/twips.h"

#include <QPushButton>

namespace plot
{
namespace
{

constexpr int kFirstTwips = 5000; // width and height of the surface until someone sizes the window

QColor color(Color c) { return QColor(c & 0xff, c >> 8 & 0xff, c >> 16 & 0xff); }

/// What axes are drawn on.
class AxisSurface final : public Surface
{
public:
    explicit AxisSurface(ui::PictureSurface& picture) : m_picture(picture) {}

    double width() const override { return m_picture.widthTwips(); }
    double height() const override { return m_picture.heightTwips(); }
    double twipsPerPixel() const override { return ui::twipsPerPixel(); }
    void clear() override { m_picture.clear(); }
    void setFontSize(int points) override { m_picture.setFontPoints(points); }
    void line(double x1, double y1, double x2, double y2, Color c) override
    {
        m_picture.drawLine(x1, y1, x2, y2, color(c));
    }
    void text(double x, double y, std::string_view text) override { m_picture.drawText(x, y, QString::fromUtf8(text)); }

private:
    ui::PictureSurface& m_picture;
};

} // namespace

Graph::Graph(QWidget* parent)
    : OutputWindow(parent), m_surface(new ui::PictureSurface(this)), m_copyButton(new QPushButton("CopytoClip", this))
{
    m_surface->setObjectName("Picture1");
    m_surface->setAccessibleName("Plot");
    m_copyButton->setObjectName("CptoClipBtn");
    m_copyButton->setAccessibleDescription("Copies the plot to the clipboard as a picture.");
    connect(m_copyButton, &QPushButton::clicked, this, &Graph::copyToClipboard);
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
    placeChildren(); // a hidden window has not heard of its new size yet
    m_map = ViewMap({x1, y1, x2, y2}, {m_surface->widthTwips(), m_surface->heightTwips()});
}

void Graph::Axis(double& xt, double& yt, int islog)
{
    AxisSurface surface(*m_surface);
    drawAxis(surface, m_map, m_yFormat, xt, yt, islog);
}

float Graph::VtoWX(double x) const { return m_map.VtoWX(x); }

float Graph::VtoWY(double y) const { return m_map.VtoWY(y); }

void Graph::VLine(double x1, double y1, double x2, double y2, Color c)
{
    m_surface->drawLine(VtoWX(x1), VtoWY(y1), VtoWX(x2), VtoWY(y2), color(c));
}

void Graph::VPset(double x, double y, Color c) { m_surface->drawPoint(VtoWX(x), VtoWY(y), color(c)); }

void Graph::VCircle(double x, double y, double R, Color c, Fill f)
{
    m_surface->drawCircle(VtoWX(x), VtoWY(y), R, color(c), f == Fill::Solid ? QBrush(color(c)) : QBrush(Qt::NoBrush));
}

void Graph::VBox(double x1, double y1, double x2, double y2, Color c)
{
    m_surface->drawBox(VtoWX(x1), VtoWY(y1), VtoWX(x2), VtoWY(y2), color(c));
}

void Graph::VFill(double x1, double y1, double x2, double y2, Color c)
{
    m_surface->fillBox(VtoWX(x1), VtoWY(y1), VtoWX(x2), VtoWY(y2), color(c));
}

void Graph::resizeEvent(QResizeEvent*) { placeChildren(); }

void Graph::placeChildren()
{
    const int bar = ui::toPixels(kBarTwips);
    m_surface->setGeometry(0, 0, width(), height() - bar);
    m_copyButton->setGeometry(0, height() - bar, m_copyButton->sizeHint().width(), bar);
}

void Graph::copyToClipboard() { ui::copyImage(m_surface->picture()); }

} // namespace plot
