#include "short_time_transform.h"

#include "program.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <complex>
#include <numbers>

namespace {

// With this flag both ways, the inverse transform gives the frame back.
constexpr std::int32_t scaling = zrfScaleFwdByN;

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
    const int spectrumLength = 2 * result.bins; // real and imaginary part of each bin
    std::vector<Float32> frames(blockFrames * length), spectra(blockFrames * spectrumLength),
        back(frames.size());
    for (std::int64_t first = 0; first < result.frames; first += blockFrames) {
        const std::int64_t count = std::min(blockFrames, result.frames - first);
        for (std::int64_t f = 0; f < count; ++f)
            for (int i = 0; i < length; ++i)
                frames[f * length + i] = samples[(first + f) * result.hop + i] * window[i];

        const auto start = std::chrono::steady_clock::now();
        for (std::int64_t f = 0; f < count; ++f)
            require(
                zrfgDFTFwd_RToCCS_32f(&frames[f * length], &spectra[f * spectrumLength], length, scaling));
        for (std::int64_t f = 0; f < count; ++f)
            require(zrfgDFTInv_CCSToR_32f(&spectra[f * spectrumLength], &back[f * length], length, scaling));
        result.transformSeconds +=
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

        for (std::int64_t f = 0; f < count; ++f) {
            const std::int64_t column = (first + f) * result.columns / result.frames;
            ++framesInColumn[column];
            for (int b = 0; b < result.bins; ++b) {
                // The window halves a sine, and its mirror image above half the rate takes half of the rest.
                const double gain = b == 0 || 2 * b == length ? 2 : 4;
                const Float32 *x = &spectra[f * spectrumLength + 2 * b];
                result.power[column * result.bins + b] += std::norm(gain * std::complex<double>(x[0], x[1]));
            }
        }
        for (std::int64_t i = 0; i < count * length; ++i)
            result.roundTripError = std::max(result.roundTripError, std::abs(double(back[i]) - frames[i]));
    }
    for (std::size_t i = 0; i < result.power.size(); ++i)
        result.power[i] /= framesInColumn[i / result.bins];
    return result;
}
