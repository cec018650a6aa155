#pragma once

#include "plot/canvas.h"
#include "plot/legend.h"
#include "plot/tabletext.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Stand-ins that write down what charts and tables ask for.
namespace support
{

struct Circle {
    double x, y, R;
    plot::Color c;
    plot::Fill f;
};

struct Line {
    double x1, y1, x2, y2;
    plot::Color c;
};

struct RecordingCanvas final : plot::Canvas {
    std::string title;
    Line view{};
    double xt = 0, yt = 0;
    int islog = -1;
    std::vector<std::string> order; // names of the calls, repeats left out
    std::vector<Circle> circles;
    std::vector<Line> lines;
    plot::Legend legend; // in world coordinates

    void SetTitle(std::string_view text) override { note("SetTitle"), title = text; }
    void View(double x1, double y1, double x2, double y2) override { note("View"), view = {x1, y1, x2, y2, 0}; }
    void Axis(double& x, double& y, int log) override { note("Axis"), xt = x, yt = y, islog = log, legend.clear(); }
    void beginSample(int number, double Conc) override { legend.beginSample(number, Conc); }
    void VLine(double x1, double y1, double x2, double y2, plot::Color c) override
    {
        note("VLine");
        lines.push_back({x1, y1, x2, y2, c});
    }
    void VPset(double, double, plot::Color) override { note("VPset"); }
    void VCircle(double x, double y, double R, plot::Color c, plot::Fill f) override
    {
        note("VCircle");
        circles.push_back({x, y, R, c, f});
        legend.addMarker({x, y}, c);
    }
    void VBox(double, double, double, double, plot::Color) override { note("VBox"); }
    void VFill(double, double, double, double, plot::Color) override { note("VFill"); }

private:
    void note(const std::string& name)
    {
        if (order.empty() || order.back() != name)
            order.push_back(name);
    }
};

struct Label {
    double x, y;
    std::string text;
    bool operator==(const Label&) const = default;
};

struct RecordingSurface final : plot::Surface {
    int fontPoints = 0;
    int clears = 0;
    std::vector<Line> lines;
    std::vector<Label> labels;

    double width() const override { return 5000; }
    double height() const override { return 5000; }
    double twipsPerPixel() const override { return 15; }
    void clear() override { ++clears; }
    void setFontSize(int points) override { fontPoints = points; }
    void line(double x1, double y1, double x2, double y2, plot::Color c) override
    {
        lines.push_back({x1, y1, x2, y2, c});
    }
    void text(double x, double y, std::string_view text) override { labels.push_back({x, y, std::string(text)}); }
};

struct RecordingTable final : plot::TableSink {
    std::string title = "as it was";
    int rows = 0, columns = 0;
    std::map<std::pair<int, int>, std::string> cells{{{1, 1}, "left over"}}; // by row and column
    std::vector<bool> redraws;

    void ClearSheet() override { cells.clear(); }
    void SetTitle(std::string_view text) override { title = text; }
    void Rows(int count) override { rows = count; }
    void Cols(int count) override { columns = count; }
    void Locate(int column, int row) override { m_at = {row, column}; }
    void Value(std::string_view text) override { cells[m_at] = text; }
    void setRedraw(bool on) override { redraws.push_back(on); }

private:
    std::pair<int, int> m_at;
};

} // namespace support
