#pragma once

#include "plot/canvas.h"
#include "plot/tablesink.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Test doubles that record the calls of axes and tables.
namespace support
{

struct Line {
    plot::Segment segment;
    plot::Color c;
    bool operator==(const Line&) const = default;
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

    double width() const override { return 6000; }
    double height() const override { return 5000; }
    double twipsPerPixel() const override { return 15; }
    void clear() override { ++clears; }
    void setFontSize(int points) override { fontPoints = points; }
    void line(const plot::Segment& segment, plot::Color c) override { lines.push_back({segment, c}); }
    void text(double x, double y, std::string_view text) override { labels.push_back({x, y, std::string(text)}); }
};

struct RecordingTable final : plot::TableSink {
    std::string title = "as it was";
    int rows = 0, columns = 0;
    std::map<std::pair<int, int>, std::string> cells{{{60, 20}, "left over"}}; // by row and column
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
