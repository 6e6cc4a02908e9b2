// Draws the spectrum layouts as the kernels have them: layouts DIRECTORY writes layouts_8.svg and
// layouts_7.svg.
#include "spectrum_layout.h"

#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using zrfgen::SpectrumLayout;

constexpr int cellWidth = 44, cellHeight = 30, labelWidth = 56, gap = 12, margin = 8;

struct Cell {
    std::string letter; // R or I; none for a zero
    int index = 0;
};

// The spectrum of n real elements, cell by cell. CCS alone has cells that no entry stands in: its zeros.
template <SpectrumLayout layout> std::vector<Cell> cells(int n) {
    std::vector<Cell> result(layout == SpectrumLayout::CCS ? n / 2 * 2 + 2 : n);
    for (int entry = 0; entry < n; ++entry)
        result[zrfgen::spectrumElement<layout>(n, entry)] = {entry % 2 == 1 || entry == 0 ? "R" : "I",
                                                             (entry + 1) / 2};
    return result;
}

void drawText(std::ostream &out, int x, int y, const std::string &attributes, const std::string &text) {
    out << "<text x=\"" << x << "\" y=\"" << y << "\"" << attributes << ">" << text << "</text>\n";
}

void drawRow(std::ostream &out, int top, const std::string &label, const std::vector<Cell> &row) {
    drawText(out, margin, top + 20, "", label);
    int x = margin + labelWidth;
    for (const Cell &cell : row) {
        const char *fill = cell.letter == "R" ? "#cfe3f7" : cell.letter == "I" ? "#fbdcc0" : "#eeeeee";
        out << "<rect x=\"" << x << "\" y=\"" << top << "\" width=\"" << cellWidth << "\" height=\""
            << cellHeight << "\" fill=\"" << fill << "\" stroke=\"#555555\"/>\n";
        drawText(out, x + cellWidth / 2, top + 20, " text-anchor=\"middle\"",
                 cell.letter.empty() ? "0" : cell.letter + "[" + std::to_string(cell.index) + "]");
        x += cellWidth;
    }
}

void draw(std::ostream &out, int n) {
    const std::vector<Cell> ccs = cells<SpectrumLayout::CCS>(n);
    const int columns = static_cast<int>(ccs.size());
    const int width = 2 * margin + labelWidth + columns * cellWidth;
    const int height = 2 * margin + 20 + 3 * cellHeight + 3 * gap;
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height
        << "\" font-family=\"sans-serif\" font-size=\"14\">\n"
        << "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    int top = margin;
    drawText(out, margin, top + 14, "", "N = " + std::to_string(n));
    for (int i = 0; i < columns; ++i)
        drawText(out, margin + labelWidth + i * cellWidth + cellWidth / 2, top + 14,
                 " text-anchor=\"middle\" fill=\"#777777\"", std::to_string(i));
    top += 20;
    drawRow(out, top, "CCS", ccs);
    drawRow(out, top += cellHeight + gap, "Pack", cells<SpectrumLayout::Pack>(n));
    drawRow(out, top += cellHeight + gap, "Perm", cells<SpectrumLayout::Perm>(n));
    out << "</svg>\n";
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: layouts DIRECTORY\n";
        return 2;
    }
    for (const int n : {8, 7}) {
        const std::string path = std::string(argv[1]) + "/layouts_" + std::to_string(n) + ".svg";
        std::ofstream file(path);
        draw(file, n);
        if (!file.flush()) {
            std::cerr << "layouts: cannot write " << path << "\n";
            return 1;
        }
    }
}
