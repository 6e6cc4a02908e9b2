#include "short_time_transform.h"

#include <zrfgen/transforms.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <complex>
#include <numbers>
#include <stdexcept>
#include <string>

namespace {

// With this flag both ways, the inverse transform gives the frame back.
constexpr std::int32_t scaling = zrfScaleFwdByN;

void require(Status status) {
    if (status != zrfStatusOk)
        throw std::runtime_error("the library refused a transform (status " + std::to_string(status) +
                                 "); rebuild it and try again");
}

// The largest difference of two frames, relative to the first one's largest sample.
double relativeError(const Complex32 *frame, const Complex32 *back, int length) {
    double peak = 0, error = 0;
    for (int i = 0; i < length; ++i) {
        peak = std::max<double>(peak, std::abs(frame[i].re));
        error = std::max<double>(error, std::hypot(back[i].re - frame[i].re, back[i].im));
    }
    // Next to the smallest float, rounding is no longer relative to the size: such a frame says nothing.
    return peak > 1e-30 ? error / peak : 0;
}

} // namespace

bool isLengthBuilt(int length) {
    std::vector<Complex32> frame(length);
    return zrfgDFTFwd_CToC_32fc(frame.data(), frame.data(), length, scaling) != zrfStatusSizeError &&
           zrfgDFTInv_CToC_32fc(frame.data(), frame.data(), length, scaling) != zrfStatusSizeError;
}

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
    std::vector<Complex32> frames(blockFrames * length), spectra(frames.size()), back(frames.size());
    for (std::int64_t first = 0; first < result.frames; first += blockFrames) {
        const std::int64_t count = std::min(blockFrames, result.frames - first);
        for (std::int64_t f = 0; f < count; ++f)
            for (int i = 0; i < length; ++i)
                frames[f * length + i] = {samples[(first + f) * result.hop + i] * window[i], 0};

        const auto start = std::chrono::steady_clock::now();
        for (std::int64_t f = 0; f < count; ++f)
            require(zrfgDFTFwd_CToC_32fc(&frames[f * length], &spectra[f * length], length, scaling));
        for (std::int64_t f = 0; f < count; ++f)
            require(zrfgDFTInv_CToC_32fc(&spectra[f * length], &back[f * length], length, scaling));
        result.transformSeconds +=
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

        for (std::int64_t f = 0; f < count; ++f) {
            const std::int64_t column = (first + f) * result.columns / result.frames;
            ++framesInColumn[column];
            for (int b = 0; b < result.bins; ++b) {
                // The window halves a sine, and its mirror image above half the rate takes half of the rest.
                const double gain = b == 0 || 2 * b == length ? 2 : 4;
                const Complex32 x = spectra[f * length + b];
                result.power[column * result.bins + b] += std::norm(gain * std::complex<double>(x.re, x.im));
            }
            result.roundTripError = std::max(result.roundTripError,
                                             relativeError(&frames[f * length], &back[f * length], length));
        }
    }
    for (std::size_t i = 0; i < result.power.size(); ++i)
        result.power[i] /= framesInColumn[i / result.bins];
    return result;
}
