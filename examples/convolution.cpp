// Filters a signal block by block with a long FIR filter: overlap-save, the filter cut into parts as long as
// a block (uniformly partitioned), so that the result is never later than a block.

#include "plot.h"
#include "program.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <complex>
#include <cstdio>
#include <numbers>
#include <random>
#include <zrfgen/transforms.hpp>

namespace {

constexpr int length = 64, block = length / 2;
constexpr int tapCount = 512, parts = tapCount / block;
constexpr double cutoff = 0.1, attenuation = 80; // in parts of the sample rate; of the stop band, in dB

using Samples = std::array<float, length>;
using Spectrum = std::array<float, length>;
using zrfgen::orThrow, zrfgen::Scale;
constexpr auto layout = zrfgen::Layout::Perm; // no elements that are always zero

Spectrum transform(const Samples &samples) {
    Spectrum spectrum;
    orThrow(zrfgen::realDftForward<layout>(samples, spectrum, Scale::InverseByN));
    return spectrum;
}

class BlockFilter {
public:
    explicit BlockFilter(const std::vector<float> &taps) {
        for (int p = 0; p < parts; ++p) {
            Samples part{}; // the other half stays zero
            std::copy_n(&taps[p * block], block, part.begin());
            filter[p] = transform(part);
        }
    }

    // Takes the next block of a signal and writes the next one of the result, which may be the same array.
    void apply(const float *in, float *out) {
        std::copy(samples.begin() + block, samples.end(), samples.begin());
        std::copy_n(in, block, samples.begin() + block);
        newest = (newest + parts - 1) % parts;
        recent[newest] = transform(samples);

        Spectrum sum{};
        for (int p = 0; p < parts; ++p)
            orThrow(zrfgen::addProductOfSpectra<layout>(filter[p], recent[(newest + p) % parts], sum));
        Samples circular; // its first half is wrapped around
        orThrow(zrfgen::realDftInverse<layout>(sum, circular, Scale::InverseByN));
        std::copy_n(circular.begin() + block, block, out);
    }

private:
    std::array<Spectrum, parts> filter,
        recent{}; // recent[newest] is the last block's, then backwards in time
    int newest = 0;
    Samples samples{};
};

// A low-pass filter: the ideal one's response cut off by a Kaiser window.
std::vector<float> designLowPass() {
    const double beta = 0.1102 * (attenuation - 8.7), middle = (tapCount - 1) / 2.0;
    std::vector<float> taps(tapCount);
    for (int i = 0; i < tapCount; ++i) {
        const double t = i - middle, x = t / middle; // t is never 0, between two taps
        const double window = std::cyl_bessel_i(0, beta * std::sqrt(1 - x * x)) / std::cyl_bessel_i(0, beta);
        taps[i] = float(std::sin(2 * std::numbers::pi * cutoff * t) / (std::numbers::pi * t) * window);
    }
    return taps;
}

// As a plain sum, taps outside so that the compiler makes vectors of the results.
template <typename Real>
std::vector<Real> convolve(const std::vector<Real> &signal, const std::vector<Real> &taps) {
    std::vector<Real> result(signal.size());
    for (std::size_t first = 0; first < signal.size(); first += 1024) { // blocks that stay in the cache
        const std::size_t last = std::min(first + 1024, signal.size());
        for (std::size_t t = 0; t < taps.size(); ++t)
            for (std::size_t i = std::max(first, t); i < last; ++i)
                result[i] += taps[t] * signal[i - t];
    }
    return result;
}

std::vector<float> filterByBlocks(std::vector<float> signal, const std::vector<float> &taps) {
    BlockFilter filter(taps);
    for (std::size_t i = 0; i < signal.size(); i += block)
        filter.apply(&signal[i], &signal[i]);
    return signal;
}

// The level at which a tone comes out when the filter has settled, in dB.
double measureResponse(double frequency, const std::vector<float> &taps) {
    std::vector<float> cosine(2 * tapCount), sine(2 * tapCount);
    for (int i = 0; i < 2 * tapCount; ++i) {
        cosine[i] = float(std::cos(2 * std::numbers::pi * frequency * i));
        sine[i] = float(std::sin(2 * std::numbers::pi * frequency * i));
    }
    return 20 *
           std::log10(std::hypot(filterByBlocks(cosine, taps).back(), filterByBlocks(sine, taps).back()));
}

double definedResponse(double frequency, const std::vector<float> &taps) {
    std::complex<double> sum;
    for (int i = 0; i < tapCount; ++i)
        sum += double(taps[i]) * std::polar(1.0, -2 * std::numbers::pi * frequency * i);
    return 20 * std::log10(std::abs(sum));
}

// The least of many short runs, in nanoseconds for a sample: other work on the machine misses some of them.
template <typename Work> double time(std::size_t samples, const Work &work) {
    double best = 1e300;
    for (int run = 0; run < 100; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
        best = std::min(best, spent.count() / double(samples));
    }
    return best;
}

} // namespace

int main(int count, char **values) try {
    const std::string output = parsePaths(count, values, "convolution OUTPUT.svg")[0];
    const std::vector<float> taps = designLowPass();

    std::mt19937 random(1);
    std::uniform_real_distribution<float> uniform(-1, 1);
    std::vector<float> noise(1 << 17);
    for (float &sample : noise)
        sample = uniform(random);
    const std::vector<double> exact =
        convolve<double>({noise.begin(), noise.end()}, {taps.begin(), taps.end()});
    const std::vector<float> byBlocks = filterByBlocks(noise, taps), direct = convolve(noise, taps);
    double blockError = 0, directError = 0;
    for (std::size_t i = 0; i < noise.size(); ++i) {
        blockError = std::max(blockError, std::abs(byBlocks[i] - exact[i]));
        directError = std::max(directError, std::abs(direct[i] - exact[i]));
    }
    const std::vector<float> piece(noise.begin(), noise.begin() + 4096);
    const double blockTime = time(piece.size(), [&] { filterByBlocks(piece, taps); });
    const double directTime = time(piece.size(), [&] { convolve(piece, taps); });

    Plot plot{"A low-pass filter of 512 taps, in blocks of 32",
              "frequency in parts of the sample rate",
              "gain in dB",
              {}};
    plot.curves = {{"by definition", Curve::line, 0, {}, {}},
                   {"measured with tones", Curve::marks, 5, {}, {}}};
    double passRipple = 0, stopLevel = -1e300;
    const double transition = (attenuation - 7.95) / (14.36 * (tapCount - 1));
    constexpr double from = 0.08, to = 0.14, floor = -120; // the zeros of the response are cut off there
    for (int i = 0; i <= 1000; ++i) {
        const double frequency = std::lerp(from, to, i / 1000.0);
        plot.curves[0].x.push_back(frequency);
        plot.curves[0].y.push_back(std::max(floor, definedResponse(frequency, taps)));
        if (i % 5 != 0)
            continue;
        const double level = measureResponse(frequency, taps);
        plot.curves[1].x.push_back(frequency);
        plot.curves[1].y.push_back(std::max(floor, level));
        if (frequency < cutoff - transition / 2)
            passRipple = std::max(passRipple, std::abs(level));
        if (frequency > cutoff + transition / 2)
            stopLevel = std::max(stopLevel, level);
    }
    std::printf("filter       low-pass, %d taps, cut-off %g of the sample rate, designed for %g dB\n",
                tapCount, cutoff, attenuation);
    std::printf("pass band    within %.1e dB\n", passRipple);
    std::printf("cut-off      %.3f dB\n", measureResponse(cutoff, taps));
    std::printf("stop band    at most %.1f dB\n", stopLevel);
    std::printf("error        largest %.1e, direct in Float32 %.1e; white noise of amplitude 1\n", blockError,
                directError);
    std::printf("time         %.1f ns for a sample, direct in Float32 %.1f ns: 1/%.1f\n", blockTime,
                directTime, directTime / blockTime);
    writeSvg(plot, output);
    std::printf("picture      %s\n", output.c_str());
    return 0;
} catch (const std::exception &error) {
    return reportFailure("convolution", error);
}
