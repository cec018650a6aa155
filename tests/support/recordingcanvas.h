#pragma once

#include "plot/canvas.h"

#include <QStringList>

namespace support
{

/// Records each call of a chart as a line of text: numbers with six digits, colours as red, green and blue.
struct RecordingCanvas final : plot::Canvas {
    QStringList calls;

    void SetTitle(std::string_view text) override { calls << "title " + QString::fromUtf8(text.data()); }
    void View(double x1, double y1, double x2, double y2) override { note("view", {x1, y1, x2, y2}); }
    void Axis(double& xt, double& yt, int islog) override { note("axis", {xt, yt, double(islog)}); }
    void beginSample(int number, double Q) override { note("sample", {double(number), Q}); }
    void VLine(double x1, double y1, double x2, double y2, plot::Color c) override
    {
        note("line", {x1, y1, x2, y2}, hex(c));
    }
    void VPset(double x, double y, plot::Color c) override { note("point", {x, y}, hex(c)); }
    void VCircle(double x, double y, double R, plot::Color c, plot::Fill f) override
    {
        note("circle", {x, y, R}, hex(c) + (f == plot::Fill::Solid ? " solid" : " transparent"));
    }
    void VBox(double x1, double y1, double x2, double y2, plot::Color c) override
    {
        note("box", {x1, y1, x2, y2}, hex(c));
    }
    void VFill(double x1, double y1, double x2, double y2, plot::Color c) override
    {
        note("fill", {x1, y1, x2, y2}, hex(c));
    }

    static QString hex(plot::Color c)
    {
        return QString(" #%1").arg((c & 0xffU) << 16 | (c & 0xff00U) | c >> 16, 6, 16, QChar('0'));
    }

private:
    void note(const char* name, std::initializer_list<double> numbers, const QString& rest = {})
    {
        QString line = name;
        for (double number : numbers)
            line += ' ' + QString::number(number);
        calls << line + rest;
    }
};

} // namespace support
