// Shows what a recording sounds like over time: a picture of its frequencies and a short summary.

#include "program.h"
#include "recording.h"
#include "short_time_transform.h"
#include "spectrogram_picture.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>
#include <zrfgen/transforms.h>

namespace {

constexpr int shortest = zrfShortestLength, longest = zrfLongestLength;

struct Arguments {
    std::string input, output;
    int length = longest;
};

int parseLength(const std::string &text) {
    int length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (error != std::errc() || end != text.data() + text.size() || length < shortest || length > longest)
        throw UsageError("--length must be a whole number from 2 to 64, not '" + text + "'");
    return length;
}

Arguments parseArguments(int count, char **values) {
    Arguments arguments;
    std::vector<std::string> paths;
    for (int i = 1; i < count; ++i) {
        const std::string value = values[i];
        if (value == "--length" && i + 1 < count)
            arguments.length = parseLength(values[++i]);
        else
            paths.push_back(value);
    }
    if (paths.size() != 2 || paths[0].starts_with("--") || paths[1].starts_with("--"))
        throw UsageError("usage is spectrogram INPUT.wav OUTPUT.png [--length N]");
    arguments.input = paths[0];
    arguments.output = paths[1];
    return arguments;
}

double decibels(double power) {
    return 10 * std::log10(power);
}

void printSummary(const Arguments &arguments, const Recording &recording, const Spectrogram &spectrogram,
                  const Picture &picture) {
    double peak = 0, energy = 0;
    for (const double sample : recording.samples) {
        peak = std::max(peak, std::abs(sample));
        energy += sample * sample;
    }
    std::vector<double> binPower(spectrogram.bins);
    for (int column = 0; column < spectrogram.columns; ++column)
        for (int b = 0; b < spectrogram.bins; ++b)
            binPower[b] += spectrogram.at(column, b) / spectrogram.columns;
    // A tone near either end has its mirror image in the same bin, in changing phase: it is measured at half
    // of its power there.
    std::vector<double> tonePower = binPower;
    tonePower.front() *= 2;
    if (spectrogram.length % 2 == 0)
        tonePower.back() *= 2;
    const int loudest = int(std::max_element(tonePower.begin(), tonePower.end()) - tonePower.begin());
    const double binWidth = double(recording.sampleRate) / spectrogram.length;
    const double transforms = 2.0 * double(spectrogram.frames);

    std::printf("recording    %s\n", arguments.input.c_str());
    std::printf("sound        %.6g s at %d Hz, %d channel%s\n", recording.duration(), recording.sampleRate,
                recording.channels, recording.channels == 1 ? "" : "s mixed to one");
    if (!recording.remark.empty())
        std::printf("remark       %s\n", recording.remark.c_str());
    if (peak > 0)
        std::printf("level        peak %.1f dB, mean %.1f dB (0 dB is full scale)\n", decibels(peak * peak),
                    decibels(energy / double(recording.samples.size())));
    std::printf("frames       %lld of %d samples, one every %d\n", (long long)spectrogram.frames,
                spectrogram.length, spectrogram.hop);
    if (recording.loudestInput == 0)
        std::printf("loudest      nothing, the recording is silent\n");
    else if (peak == 0)
        std::printf("loudest      nothing, the channels are opposite and cancel when they are mixed\n");
    else
        std::printf("loudest      the band from %.6g to %.6g Hz (bin %d of %d), %.1f dB on average\n",
                    std::max(0.0, loudest - 0.5) * binWidth,
                    std::min(loudest + 0.5, spectrogram.length / 2.0) * binWidth, loudest,
                    spectrogram.bins - 1, decibels(binPower[loudest]));
    std::printf("transforms   %.0f forward and inverse in %.3f ms, %.2f million per second\n", transforms,
                spectrogram.transformSeconds * 1e3, transforms / spectrogram.transformSeconds / 1e6);
    std::printf("round trip   largest error %.1e of full scale\n", spectrogram.roundTripError);
    std::printf("picture      %s (%d x %d)\n", arguments.output.c_str(), picture.width, picture.height);
}

} // namespace

int main(int count, char **values) try {
    const Arguments arguments = parseArguments(count, values);
    const Recording recording = readRecording(arguments.input);
    if (recording.samples.size() < std::size_t(arguments.length))
        throw std::runtime_error("'" + arguments.input + "' holds " +
                                 std::to_string(recording.samples.size()) + " samples, fewer than the " +
                                 std::to_string(arguments.length) +
                                 " of a frame; give a longer recording or a smaller --length");
    keepInput(arguments.input, arguments.output);

    const Spectrogram spectrogram = transformFrames(recording.samples, arguments.length, plotWidth);
    const Picture picture = drawSpectrogram(spectrogram, recording.duration(), recording.sampleRate);
    writePng(picture, arguments.output);
    printSummary(arguments, recording, spectrogram, picture);
    return 0;
} catch (const std::exception &error) {
    return reportFailure("spectrogram", error);
}
