#include "spectrogram_picture.h"

#include "ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace {

using Colour = std::array<double, 3>;

constexpr int plotLeft = 90, plotTop = 40, plotHeight = 400;
constexpr int plotRight = plotLeft + plotWidth, plotBottom = plotTop + plotHeight;
constexpr int barLeft = plotRight + 24, barWidth = 18;
constexpr double shownDecibels = 80;
constexpr Colour paper{255, 255, 255}, ink{60, 60, 70};

// From black to pale yellow; even steps in the level look like even steps in the colour.
Colour levelColour(double level) {
    constexpr std::array ramp{0x000004, 0x1d1147, 0x51127c, 0x832681, 0xb73779,
                              0xe75263, 0xfc8961, 0xfec488, 0xfcfdbf};
    const double position = std::clamp(level, 0.0, 1.0) * (ramp.size() - 1);
    const std::size_t i = std::min(std::size_t(position), ramp.size() - 2);
    const auto channel = [&](int shift) {
        return std::lerp(ramp[i] >> shift & 255, ramp[i + 1] >> shift & 255, position - double(i));
    };
    return {channel(16), channel(8), channel(0)};
}

void fill(Picture &picture, int left, int top, int width, int height, const Colour &colour) {
    for (int y = top; y < top + height; ++y)
        for (int x = left; x < left + width; ++x)
            for (int c = 0; c < 3; ++c)
                picture.rgb[(std::size_t(y) * picture.width + x) * 3 + c] = std::uint8_t(colour[c] + 0.5);
}

// What numbers and units need: 5 by 7 dots each, row after row, the first dot in bit 34.
constexpr std::string_view glyphNames = "0123456789.-ekHzsdB";
constexpr std::array<std::uint64_t, glyphNames.size()> glyphs{
    0x3a318c62e, 0x11842108e, 0x3a211111f, 0x7c441062e, 0x08ca97c42, 0x7e1e0862e, 0x1910f462e,
    0x7c2222108, 0x3a317462e, 0x3a317844c, 0x00000018c, 0x0000f8000, 0x000e8fe0e, 0x4212a6292,
    0x4631fc631, 0x001f1111f, 0x000e8383e, 0x042d9c62f, 0x7a31f463e};
constexpr int dot = 2, advance = 6 * dot, textHeight = 7 * dot;

int textWidth(std::string_view text) {
    return int(text.size()) * advance - dot;
}

void write(Picture &picture, int left, int top, std::string_view text) {
    for (const char character : text) {
        const std::size_t name = glyphNames.find(character);
        const std::uint64_t glyph = name < glyphs.size() ? glyphs[name] : 0;
        for (int i = 0; i < 35; ++i)
            if (glyph >> (34 - i) & 1)
                fill(picture, left + i % 5 * dot, top + i / 5 * dot, dot, dot, ink);
        left += advance;
    }
}

void drawAxes(Picture &picture, double seconds, double kilohertz, double top) {
    constexpr int tick = 6, gap = 12;
    const double timeStep = tickStep(seconds, 8);
    for (int i = 0; i <= int(seconds / timeStep + 1e-6); ++i) {
        const int x = plotLeft + int(i * timeStep / seconds * (plotWidth - 1));
        const std::string text = tickText(i * timeStep) + " s";
        fill(picture, x, plotBottom, 1, tick, ink);
        write(picture, x - textWidth(text) / 2, plotBottom + gap, text);
    }

    const double frequencyStep = tickStep(kilohertz, 8);
    for (int i = 0; i <= int(kilohertz / frequencyStep + 1e-6); ++i) {
        const int y = plotBottom - 1 - int(i * frequencyStep / kilohertz * (plotHeight - 1));
        const std::string text = tickText(i * frequencyStep);
        fill(picture, plotLeft - tick, y, tick, 1, ink);
        write(picture, plotLeft - gap - textWidth(text), y - textHeight / 2, text);
    }
    write(picture, plotLeft - gap - textWidth("kHz"), plotTop - gap - textHeight, "kHz");

    for (int y = 0; y < plotHeight; ++y)
        fill(picture, barLeft, plotTop + y, barWidth, 1, levelColour(1 - y / (plotHeight - 1.0)));
    for (int below = 0; below <= shownDecibels; below += 20) {
        const int y = plotTop + int(below / shownDecibels * (plotHeight - 1));
        fill(picture, barLeft + barWidth, y, tick, 1, ink);
        write(picture, barLeft + barWidth + gap, y - textHeight / 2, tickText(top - below));
    }
    write(picture, barLeft, plotTop - gap - textHeight, "dB");
}

// A smooth curve through evenly spaced values (Catmull-Rom), read at a position between them.
double smoothAt(const std::vector<double> &values, double position) {
    const int last = int(values.size()) - 1;
    position = std::clamp<double>(position, 0, last);
    const int i = int(position);
    const double t = position - i;
    const auto value = [&](int index) { return values[std::clamp(index, 0, last)]; };
    const double a = value(i - 1), b = value(i), c = value(i + 1), d = value(i + 2);
    return b + t / 2 * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}

} // namespace

Picture drawSpectrogram(const Spectrogram &spectrogram, double duration, int sampleRate) {
    Picture picture{plotRight + 110, plotBottom + 40, {}};
    picture.rgb.resize(std::size_t(picture.width) * picture.height * 3);
    fill(picture, 0, 0, picture.width, picture.height, paper);

    // Digital silence has no level; it shows as black all over.
    const auto decibels = [](double power) { return 10 * std::log10(std::max(power, 1e-20)); };
    const double loudest = *std::max_element(spectrogram.power.begin(), spectrogram.power.end());
    const double top = loudest > 0 ? std::ceil(decibels(loudest) / 10) * 10 + 0.0 : 0; // never -0

    std::vector<double> levels(spectrogram.bins);
    for (int x = 0; x < plotWidth; ++x) {
        const double time =
            std::clamp((x + 0.5) * spectrogram.columns / plotWidth - 0.5, 0.0, spectrogram.columns - 1.0);
        const int column = int(time), next = std::min(column + 1, spectrogram.columns - 1);
        for (int b = 0; b < spectrogram.bins; ++b)
            levels[b] = std::lerp(decibels(spectrogram.at(column, b)), decibels(spectrogram.at(next, b)),
                                  time - column);
        for (int y = 0; y < plotHeight; ++y) {
            const double bin = y / (plotHeight - 1.0) * spectrogram.length / 2;
            const double level = 1 + (smoothAt(levels, bin) - top) / shownDecibels;
            fill(picture, plotLeft + x, plotBottom - 1 - y, 1, 1, levelColour(level));
        }
    }
    drawAxes(picture, duration, sampleRate / 2000.0, top);
    return picture;
}
