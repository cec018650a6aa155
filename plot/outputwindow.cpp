#include "plot/outputwindow.h"

#include "ui/twips.h"

#include <algorithm>
#include <limits>

namespace plot
{
namespace
{

std::int16_t heldTwips(int pixels)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(ui::toTwips(pixels), Limits::min(), Limits::max()));
}

} // namespace

OutputWindow::OutputWindow(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
}

void OutputWindow::SetSize(std::int16_t pTop, std::int16_t pLeft, std::int16_t pWidth, std::int16_t pHeight)
{
    resizeSurface(pWidth, pHeight);
    SetPosition(pTop, pLeft);
}

void OutputWindow::resizeSurface(std::int16_t pWidth, std::int16_t pHeight)
{
    resize(ui::toPixels(pWidth), ui::toPixels(pHeight + kBarTwips));
}

void OutputWindow::SetPosition(std::int16_t pTop, std::int16_t pLeft) { ui::placeFrame(*this, pTop, pLeft); }

void OutputWindow::getPosition(std::int16_t& Top, std::int16_t& Left) const
{
    Top = heldTwips(y());
    Left = heldTwips(x());
}

void OutputWindow::getSize(std::int16_t& Width, std::int16_t& Height) const
{
    Width = heldTwips(width());
    Height = heldTwips(height());
}

void OutputWindow::showFilled()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
}

} // namespace plot
