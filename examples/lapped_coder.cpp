// Codes a recording with a lapped transform (MDCT): how many decibels of noise a bit buys, for short and long
// blocks and without a transform.

#include "entropy.h"
#include "plot.h"
#include "program.h"
#include "recording.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <unordered_map>
#include <zrfgen/transforms.hpp>

namespace {

// Takes blocks of 2N samples, each N after the one before it, to N lines and back. The transform is
// orthogonal: folding a windowed block leaves N elements for the DCT-IV, and what folding has mixed cancels
// out when the unfolded blocks are added.
class LappedTransform {
public:
    explicit LappedTransform(int lines) : lines(lines), window(2 * lines), folded(lines), dct4(lines) {
        for (int i = 0; i < 2 * lines; ++i)
            window[i] = float(std::sin(std::numbers::pi * (i + 0.5) / (2 * lines)));
    }

    void forward(const float *samples, float *spectrum) {
        const int half = lines / 2;
        const auto windowed = [&](int i) { return window[i] * samples[i]; };
        for (int i = 0; i < half; ++i) {
            folded[i] = -windowed(lines + half - 1 - i) - windowed(lines + half + i);
            folded[half + i] = windowed(i) - windowed(lines - 1 - i);
        }
        transform(folded.data(), spectrum);
    }

    void addInverse(const float *spectrum, float *samples) {
        const int half = lines / 2;
        const auto add = [&](int i, float value) { samples[i] += window[i] * value; };
        transform(spectrum, folded.data());
        for (int i = 0; i < half; ++i) {
            add(lines + half - 1 - i, -folded[i]);
            add(lines + half + i, -folded[i]);
            add(i, folded[half + i]);
            add(lines - 1 - i, -folded[half + i]);
        }
    }

private:
    void transform(const float *in, float *out) { // with this scale, its own inverse
        const std::size_t count = lines;
        zrfgen::orThrow(dct4.transform({in, count}, {out, count}, zrfgen::Scale::BySqrtN));
    }

    int lines;
    std::vector<float> window, folded;
    zrfgen::Dct4<float> dct4;
};

// Block after block of a recording's lines; the recording stands between zeros, so that every sample is in
// two.
std::vector<float> analyse(const std::vector<float> &samples, int lines) {
    const std::size_t blocks = (samples.size() + lines - 1) / lines + 1;
    std::vector<float> padded((blocks + 1) * lines), spectrum(blocks * lines);
    std::copy(samples.begin(), samples.end(), padded.begin() + lines);
    LappedTransform lapped(lines);
    for (std::size_t i = 0; i < spectrum.size(); i += lines)
        lapped.forward(&padded[i], &spectrum[i]);
    return spectrum;
}

std::vector<float> synthesise(const std::vector<float> &spectrum, int lines, std::size_t count) {
    std::vector<float> padded(spectrum.size() + lines);
    LappedTransform lapped(lines);
    for (std::size_t i = 0; i < spectrum.size(); i += lines)
        lapped.addInverse(&spectrum[i], &padded[i]);
    return {padded.begin() + lines, padded.begin() + lines + count};
}

double signalToNoise(const std::vector<float> &signal, const std::vector<float> &approximation) {
    double power = 0, noise = 0;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        power += std::pow(double(signal[i]), 2);
        noise += std::pow(double(approximation[i]) - signal[i], 2);
    }
    return 10 * std::log10(power / noise);
}

// Rounds to multiples of the step and returns the bits it takes, one code for each of 32 bands of lines.
double quantise(std::vector<float> &values, int lines, double step) {
    constexpr int mostBands = 32;
    const int bands = std::min(lines, mostBands);
    std::vector<std::unordered_map<int, int>> counts(bands);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int level = int(std::lrint(values[i] / step));
        ++counts[i % lines * bands / lines][level];
        values[i] = float(level * step);
    }
    double bits = 0;
    for (const std::unordered_map<int, int> &band : counts)
        bits += entropy(band);
    return bits;
}

// The value on the straight line between the two nearest points, as text; x descends.
std::string readCurve(const Curve &curve, double x) {
    for (std::size_t i = 1; i < curve.x.size(); ++i)
        if (curve.x[i] <= x && x <= curve.x[i - 1]) {
            char text[32];
            std::snprintf(
                text, sizeof text, "%.1f",
                std::lerp(curve.y[i], curve.y[i - 1], (x - curve.x[i]) / (curve.x[i - 1] - curve.x[i])));
            return text;
        }
    return "-"; // the curve does not go so far
}

} // namespace

int main(int count, char **values) try {
    const std::vector<std::string> paths = parsePaths(count, values, "lapped_coder INPUT.wav OUTPUT.svg");
    const Recording recording = readRecording(paths[0]);
    keepInput(paths[0], paths[1]);
    const std::vector<float> &samples = recording.samples;
    double loudest = 0;
    for (const float sample : samples)
        loudest = std::max<double>(loudest, std::abs(sample));
    if (loudest == 0)
        throw std::runtime_error("'" + paths[0] + "' is silent; give a recording with sound in it");

    std::printf("recording   %s, %.6g s at %d Hz\n", paths[0].c_str(), recording.duration(),
                recording.sampleRate);
    Plot plot{"Coding a recording: bits against noise", "bits a sample", "signal to noise in dB", {}};
    for (const int lines : {1, 64, 256, 1024}) { // 1 stands for no transform
        const std::vector<float> spectrum = lines == 1 ? samples : analyse(samples, lines);
        if (lines > 1) {
            const std::vector<float> back = synthesise(spectrum, lines, samples.size());
            double largest = 0;
            for (std::size_t i = 0; i < samples.size(); ++i)
                largest = std::max<double>(largest, std::abs(back[i] - samples[i]));
            std::printf("unquantised %4d lines: largest error %.1e of the loudest sample, %.1f dB\n", lines,
                        largest / loudest, -signalToNoise(samples, back));
        }
        Curve curve{lines == 1 ? "no transform" : std::to_string(lines) + " lines", Curve::line, 0, {}, {}};
        curve.colour = int(plot.curves.size()) * 2;
        for (double step = loudest / 4096; step < 2 * loudest; step *= std::numbers::sqrt2) {
            std::vector<float> quantised = spectrum;
            const double bits = quantise(quantised, lines, step);
            curve.x.push_back(bits / double(samples.size()));
            curve.y.push_back(signalToNoise(
                samples, lines == 1 ? quantised : synthesise(quantised, lines, samples.size())));
        }
        plot.curves.push_back(curve);
    }
    std::printf("signal to noise in dB at bits a sample\n");
    std::printf("%-14s %6d %6d %6d\n", "", 1, 2, 3);
    for (const Curve &curve : plot.curves)
        std::printf("%-14s %6s %6s %6s\n", curve.name.c_str(), readCurve(curve, 1).c_str(),
                    readCurve(curve, 2).c_str(), readCurve(curve, 3).c_str());
    writeSvg(plot, paths[1]);
    std::printf("picture     %s\n", paths[1].c_str());
    return 0;
} catch (const std::exception &error) {
    return reportFailure("lapped_coder", error);
}
