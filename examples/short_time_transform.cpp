#include "short_time_transform.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <complex>
#include <numbers>
#include <span>
#include <zrfgen/transforms.hpp>

namespace {

// With this scale both ways, the inverse transform gives the frame back.
constexpr auto scale = zrfgen::Scale::ForwardByN;

} // namespace

Spectrogram transformFrames(const std::vector<float> &samples, int length, int maxColumns) {
    Spectrogram result{};
    result.length = length;
    result.hop = std::max(1, length / 4);
    result.bins = length / 2 + 1;
    result.frames = std::int64_t(samples.size() - length) / result.hop + 1;
    result.columns = int(std::min<std::int64_t>(result.frames, maxColumns));
    result.power.resize(std::size_t(result.columns) * result.bins);

    std::vector<float> window(length); // Hann
    for (int i = 0; i < length; ++i)
        window[i] = float(0.5 - 0.5 * std::cos(2 * std::numbers::pi * i / length));
    std::vector<int> framesInColumn(result.columns);

    // A block of frames at a time, so that reading the clock costs little beside the transforms.
    constexpr std::int64_t blockFrames = 256;
    std::vector<float> frames(blockFrames * length), back(frames.size());
    std::vector<std::complex<float>> spectra(blockFrames * result.bins);
    const auto frame = [length](std::vector<float> &all, std::int64_t f) {
        return std::span(&all[f * length], length);
    };
    const auto spectrum = [&](std::int64_t f) { return std::span(&spectra[f * result.bins], result.bins); };
    for (std::int64_t first = 0; first < result.frames; first += blockFrames) {
        const std::int64_t count = std::min(blockFrames, result.frames - first);
        for (std::int64_t f = 0; f < count; ++f)
            for (int i = 0; i < length; ++i)
                frames[f * length + i] = samples[(first + f) * result.hop + i] * window[i];

        const auto start = std::chrono::steady_clock::now();
        for (std::int64_t f = 0; f < count; ++f)
            zrfgen::orThrow(
                zrfgen::realDftForward<zrfgen::Layout::CCS>(frame(frames, f), spectrum(f), scale));
        for (std::int64_t f = 0; f < count; ++f)
            zrfgen::orThrow(zrfgen::realDftInverse<zrfgen::Layout::CCS>(spectrum(f), frame(back, f), scale));
        result.transformSeconds +=
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

        for (std::int64_t f = 0; f < count; ++f) {
            const std::int64_t column = (first + f) * result.columns / result.frames;
            ++framesInColumn[column];
            for (int b = 0; b < result.bins; ++b) {
                // The window halves a sine, and its mirror image above half the rate takes half of the rest.
                const double gain = b == 0 || 2 * b == length ? 2 : 4;
                result.power[column * result.bins + b] +=
                    std::norm(gain * std::complex<double>(spectrum(f)[b]));
            }
        }
        for (std::int64_t i = 0; i < count * length; ++i)
            result.roundTripError = std::max(result.roundTripError, std::abs(double(back[i]) - frames[i]));
    }
    for (std::size_t i = 0; i < result.power.size(); ++i)
        result.power[i] /= framesInColumn[i / result.bins];
    return result;
}
