#pragma once

#include <string>
#include <vector>

struct Curve {
    enum Style { line, dashes, marks };

    std::string name;
    Style style;
    int colour; // from 0 to 7
    std::vector<double> x, y;
};

// A line plot. Values that are not finite, or have no logarithm on a logarithmic scale, are left out. The
// texts hold no characters that are special in XML.
struct Plot {
    std::string title, xLabel, yLabel;
    std::vector<Curve> curves;
    bool logarithmic = false; // y, by powers of ten
};

// Throws std::runtime_error with a line for the user if the file cannot be written.
void writeSvg(const Plot &plot, const std::string &path);
