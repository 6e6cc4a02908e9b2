// Codes a picture in blocks, by transforms of their rows and then of their columns: what that saves in bits,
// and what it saves in time to transform all blocks at once.

#include "entropy.h"
#include "picture.h"
#include "program.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <zrfgen/many.h>
#include <zrfgen/transforms.hpp>

namespace {

// Transforms in place, one or many; each is orthogonal by its scaling, and its own inverse.
struct NoTransform {
    static constexpr int length = 1;
    static constexpr const char *name = "none";
    static zrfStatus one(float *) { return zrfStatusOk; }
    static zrfStatus many(float *, std::ptrdiff_t, std::ptrdiff_t, std::ptrdiff_t) { return zrfStatusOk; }
};

template <int order> struct WalshHadamard {
    static constexpr int length = 1 << order;
    static constexpr const char *name = "Walsh-Hadamard";
    static zrfStatus one(float *x) { return zrfgen::walshHadamard<length>(x, x, zrfgen::Scale::BySqrtN); }
    static zrfStatus many(float *x, std::ptrdiff_t count, std::ptrdiff_t step, std::ptrdiff_t distance) {
        return zrfmWHT_32f(x, x, order, zrfScaleBySqrtN, count, step, distance, step, distance, nullptr);
    }
};

template <int N> struct Hartley {
    static constexpr int length = N;
    static constexpr const char *name = "Hartley";
    static zrfStatus one(float *x) { return zrfgen::hartley<N>(x, x, zrfgen::Scale::BySqrtN); }
    static zrfStatus many(float *x, std::ptrdiff_t count, std::ptrdiff_t step, std::ptrdiff_t distance) {
        return zrfmHartley_32f(x, x, N, zrfScaleBySqrtN, count, step, distance, step, distance);
    }
};

// A picture of whole blocks of N by N, which repeat its last column and row.
struct Blocks {
    Blocks(const GreyPicture &picture, int N)
        : width((picture.width + N - 1) / N * N), height((picture.height + N - 1) / N * N) {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                levels.push_back(picture.at(std::min(x, picture.width - 1), std::min(y, picture.height - 1)));
    }
    float &at(int x, int y) { return levels[std::size_t(y) * width + x]; }
    float at(int x, int y) const { return levels[std::size_t(y) * width + x]; }

    int width, height;
    std::vector<float> levels;
};

// The rows of all blocks in one call, and the columns in one call for each row of blocks.
template <class Transform> void transformAtOnce(Blocks &blocks) {
    constexpr int N = Transform::length;
    zrfgen::orThrow(Transform::many(&blocks.at(0, 0), std::ptrdiff_t(blocks.levels.size()) / N, 1, N));
    for (int y = 0; y < blocks.height; y += N)
        zrfgen::orThrow(Transform::many(&blocks.at(0, y), blocks.width, blocks.width, 1));
}

template <class Transform> void transformOneByOne(Blocks &blocks) {
    constexpr int N = Transform::length;
    for (std::size_t i = 0; i < blocks.levels.size(); i += N)
        zrfgen::orThrow(Transform::one(&blocks.levels[i]));
    for (int top = 0; top < blocks.height; top += N)
        for (int x = 0; x < blocks.width; ++x) {
            std::array<float, N> column;
            for (int y = 0; y < N; ++y)
                column[y] = blocks.at(x, top + y);
            zrfgen::orThrow(Transform::one(column.data()));
            for (int y = 0; y < N; ++y)
                blocks.at(x, top + y) = column[y];
        }
}

template <class Run> double milliseconds(Run run) {
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The least times of some runs in turn, there and back.
template <class Transform> void reportTimes(const Blocks &picture) {
    Blocks some = picture, others = picture;
    double atOnce = std::numeric_limits<double>::infinity(), oneByOne = atOnce;
    for (int run = 0; run < 20; ++run) {
        atOnce = std::min(atOnce, milliseconds([&] { transformAtOnce<Transform>(some); }));
        oneByOne = std::min(oneByOne, milliseconds([&] { transformOneByOne<Transform>(others); }));
    }
    if (std::memcmp(&some.at(0, 0), &others.at(0, 0), some.levels.size() * sizeof(float)) != 0)
        throw std::logic_error("transforms at once and single ones gave different bits; please report it");
    std::printf("%10.3f %7.3f %5.2f", atOnce, oneByOne, oneByOne / atOnce);
}

// Rounds to multiples of the step and returns the bits it takes, one code for each place in a block.
double quantise(Blocks &blocks, int N, double step) {
    std::vector<std::unordered_map<int, int>> counts(N * N);
    for (int y = 0; y < blocks.height; ++y)
        for (int x = 0; x < blocks.width; ++x) {
            const int level = int(std::lround(blocks.at(x, y) / step));
            ++counts[y % N * N + x % N][level];
            blocks.at(x, y) = float(level * step);
        }
    double bits = 0;
    for (const std::unordered_map<int, int> &place : counts)
        bits += entropy(place);
    return bits;
}

// The largest level's power by that of the error, in dB.
double peakSignalToNoise(const GreyPicture &picture, const Blocks &coded) {
    double error = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            error += std::pow(double(coded.at(x, y)) - picture.at(x, y), 2);
    return 10 * std::log10(255 * 255 * double(picture.levels.size()) / error);
}

// Prints a line of the table and returns the picture as it comes back from the widest step.
template <class Transform> Blocks report(const GreyPicture &picture) {
    constexpr int N = Transform::length;
    const Blocks original(picture, N);
    Blocks spectrum = original;
    transformAtOnce<Transform>(spectrum);
    Blocks coded = spectrum;
    transformAtOnce<Transform>(coded);
    std::printf("%-15s%2d x %-2d%9.2f", Transform::name, N, N, peakSignalToNoise(picture, coded));
    for (const double step : {4, 16, 64}) {
        coded = spectrum;
        const double bits = quantise(coded, N, step);
        transformAtOnce<Transform>(coded);
        std::printf("%8.3f %5.2f", bits / double(picture.levels.size()), peakSignalToNoise(picture, coded));
    }
    if (N > 1)
        reportTimes<Transform>(original);
    std::printf("\n");
    return coded;
}

// Two by two.
Picture tiled(const std::array<Blocks, 4> &tiles, int width, int height) {
    Picture picture{2 * width, 2 * height, {}};
    for (int y = 0; y < 2 * height; ++y)
        for (int x = 0; x < 2 * width; ++x) {
            const float level = tiles[y / height * 2 + x / width].at(x % width, y % height);
            picture.rgb.insert(picture.rgb.end(), 3, std::uint8_t(std::clamp(level, 0.0f, 255.0f) + 0.5f));
        }
    return picture;
}

} // namespace

int main(int count, char **values) try {
    const std::vector<std::string> paths = parsePaths(count, values, "block_coder INPUT.png OUTPUT.png");
    const GreyPicture picture = readGreyLevels(paths[0]);
    keepInput(paths[0], paths[1]);
    std::printf("original   %s (%d x %d)\n", paths[0].c_str(), picture.width, picture.height);
    std::printf("%-20s%11s%14s%14s%14s%24s\n", "transform", "no step", "step 4", "step 16", "step 64",
                "at once  single ratio");
    std::printf("%31s%14s%14s%14s%18s\n", "dB", "bits    dB", "bits    dB", "bits    dB", "ms      ms");
    report<NoTransform>(picture);
    const Picture pictures = tiled({Blocks(picture, 1), report<WalshHadamard<3>>(picture),
                                    report<WalshHadamard<4>>(picture), report<Hartley<12>>(picture)},
                                   picture.width, picture.height);
    writePng(pictures, paths[1]);
    std::printf("bits are those a pixel takes; transforms at once and single ones gave the same bits\n");
    std::printf("pictures   %s (%d x %d): the original, and as it comes back from step 64\n",
                paths[1].c_str(), pictures.width, pictures.height);
    return 0;
} catch (const std::exception &error) {
    return reportFailure("block_coder", error);
}
