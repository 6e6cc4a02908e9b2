#include "plot.h"

#include "ticks.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <stdexcept>

namespace {

constexpr double left = 80, top = 50, width = 620, height = 400;
constexpr double right = left + width, bottom = top + height;
constexpr double pictureWidth = right + 220, pictureHeight = bottom + 60;
constexpr double textDrop = 4.5; // from the middle of a line of text to its base

// Told apart by people of all kinds of colour vision (Okabe and Ito).
constexpr std::array colours{"#000000", "#e69f00", "#56b4e9", "#009e73",
                             "#0072b2", "#d55e00", "#cc79a7", "#888888"};

struct Range {
    double low = std::numeric_limits<double>::infinity(), high = -low;

    void include(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    // Outward to whole steps; returns the step.
    double roundOutward(double leastStep, int mostSteps) {
        if (!(low < high))
            throw std::runtime_error("there is nothing to draw: every curve is empty or level");
        const double step = std::max(tickStep(high - low, mostSteps), leastStep);
        low = std::floor(low / step + 1e-9) * step;
        high = std::ceil(high / step - 1e-9) * step;
        return step;
    }
    double part(double value) const { return (value - low) / (high - low); }
};

std::string attribute(const char *name, double value) {
    char text[64];
    std::snprintf(text, sizeof text, " %s=\"%.1f\"", name, value);
    return text;
}

std::string line(double x1, double y1, double x2, double y2, const std::string &style) {
    return "<line" + attribute("x1", x1) + attribute("y1", y1) + attribute("x2", x2) + attribute("y2", y2) +
           " " + style + "/>\n";
}

std::string text(double x, double y, const std::string &words, const std::string &style) {
    return "<text" + attribute("x", x) + attribute("y", y) + " " + style + ">" + words + "</text>\n";
}

std::string mark(double x, double y, const Curve &curve) {
    return "<circle" + attribute("cx", x) + attribute("cy", y) + " r=\"3.5\" fill=\"" +
           colours.at(curve.colour) + "\"/>\n";
}

std::string stroke(const Curve &curve) {
    return std::string("fill=\"none\" stroke-width=\"2\" stroke=\"") + colours.at(curve.colour) + "\"" +
           (curve.style == Curve::dashes ? " stroke-dasharray=\"7 5\"" : "");
}

std::string draw(const Plot &plot) {
    const auto scale = [&](double y) { return plot.logarithmic ? std::log10(y) : y; };
    const auto shown = [&](double y) { return std::isfinite(scale(y)); };
    Range xs, ys;
    for (const Curve &curve : plot.curves)
        for (std::size_t i = 0; i < curve.x.size(); ++i)
            if (shown(curve.y[i])) {
                xs.include(curve.x[i]);
                ys.include(scale(curve.y[i]));
            }
    const double xStep = xs.roundOutward(0, 10), yStep = ys.roundOutward(plot.logarithmic ? 1 : 0, 8);

    std::string svg = "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    const std::string grid = "stroke=\"#ddd\"", centred = "text-anchor=\"middle\"",
                      ended = "text-anchor=\"end\"";
    for (int i = 0; i <= int((xs.high - xs.low) / xStep + 0.5); ++i) {
        const double value = xs.low + i * xStep, x = left + width * xs.part(value);
        svg += line(x, top, x, bottom, grid) + text(x, bottom + 20, tickText(value), centred);
    }
    for (int i = 0; i <= int((ys.high - ys.low) / yStep + 0.5); ++i) {
        const double value = ys.low + i * yStep, y = bottom - height * ys.part(value);
        svg += line(left, y, right, y, grid) +
               text(left - 8, y + textDrop, tickText(plot.logarithmic ? std::pow(10, value) : value), ended);
    }
    svg += "<rect" + attribute("x", left) + attribute("y", top) + attribute("width", width) +
           attribute("height", height) + " fill=\"none\" stroke=\"#555\"/>\n";
    svg += text(left + width / 2, top - 20, plot.title, centred + " font-size=\"16\"");
    svg += text(left + width / 2, bottom + 46, plot.xLabel, centred);
    svg += text(-(top + height / 2), 20, plot.yLabel, centred + " transform=\"rotate(-90)\"");

    for (std::size_t c = 0; c < plot.curves.size(); ++c) {
        const Curve &curve = plot.curves[c];
        const double legendX = right + 16, legendY = top + 12 + 22 * double(c);
        std::string points;
        for (std::size_t i = 0; i < curve.x.size(); ++i) {
            if (!shown(curve.y[i]))
                continue;
            const double x = left + width * xs.part(curve.x[i]);
            const double y = bottom - height * ys.part(scale(curve.y[i]));
            if (curve.style == Curve::marks)
                svg += mark(x, y, curve);
            else
                points += std::to_string(x) + "," + std::to_string(y) + " ";
        }
        if (curve.style == Curve::marks)
            svg += mark(legendX + 14, legendY, curve);
        else
            svg += "<polyline points=\"" + points + "\" " + stroke(curve) + "/>\n" +
                   line(legendX, legendY, legendX + 28, legendY, stroke(curve));
        svg += text(legendX + 36, legendY + textDrop, curve.name, "");
    }
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" font-family=\"sans-serif\" font-size=\"13\" "
           "fill=\"#333\"" +
           attribute("width", pictureWidth) + attribute("height", pictureHeight) + ">\n" + svg + "</svg>\n";
}

} // namespace

void writeSvg(const Plot &plot, const std::string &path) {
    const std::string svg = draw(plot);
    std::ofstream file(path);
    file << svg << std::flush;
    if (!file)
        throw std::runtime_error("cannot write the picture '" + path + "' (" + std::strerror(errno) +
                                 "); choose another place");
}
