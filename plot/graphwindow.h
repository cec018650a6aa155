#pragma once

#include "plot/canvas.h"
#include "plot/legend.h"
#include "plot/outputwindow.h"
#include "plot/viewmap.h"

#include <string>

class QPushButton;

namespace ui
{
class PictureSurface;
}

namespace plot
{

class SampleList;

/// A plot window: a surface above a bar with a copy button and a legend. It stores the picture, not the data, so a
/// resized window shows the old picture until the next View and Axis.
class Graph : public OutputWindow, public Canvas
{
    Q_OBJECT

public:
    explicit Graph(QWidget* parent = nullptr);

    void SetTitle(std::string_view title) override;
    /// Number pattern of the y labels of linear axes.
    void SetYFormat(std::string_view str);
    void View(double x1, double y1, double x2, double y2) override;
    void Axis(double& xt, double& yt, int islog) override;
    float VtoWX(double x) const;
    float VtoWY(double y) const;
    void beginSample(int number, double Q) override;
    void VLine(double x1, double y1, double x2, double y2, Color c) override;
    void VPset(double x, double y, Color c) override;
    void VCircle(double x, double y, double R, Color c, Fill f) override;
    void VBox(double x1, double y1, double x2, double y2, Color c) override;
    void VFill(double x1, double y1, double x2, double y2, Color c) override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeChildren();
    void copyToClipboard();
    void ringSample(int number);

    ui::PictureSurface* m_surface;
    QPushButton* m_copyButton;
    SampleList* m_samples;
    Legend m_legend;
    ViewMap m_map;
    std::string m_yFormat = "##0";
};

} // namespace plot
