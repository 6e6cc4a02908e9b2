// Runs the coder on pictures of which theory says what a transform saves.
#include "run_program.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numbers>
#include <random>
#include <sstream>
#include <vector>

namespace {

struct Grey {
    int width, height;
    std::vector<png_byte> levels;
};

std::string writeGrey(const std::string &path, const Grey &grey) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = png_uint_32(grey.width);
    image.height = png_uint_32(grey.height);
    image.format = PNG_FORMAT_GRAY;
    EXPECT_TRUE(png_image_write_to_file(&image, path.c_str(), 0, grey.levels.data(), 0, nullptr));
    return path;
}

Grey readGrey(const std::string &path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_file(&image, path.c_str())) << image.message;
    image.format = PNG_FORMAT_GRAY;
    Grey grey{int(image.width), int(image.height), std::vector<png_byte>(PNG_IMAGE_SIZE(image))};
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, grey.levels.data(), 0, nullptr)) << image.message;
    return grey;
}

constexpr double correlation = 0.95, variance = 35 * 35;

// Normal levels, correlated with their neighbours in rows and columns (autoregressive, of first order).
Grey correlatedPicture(int side) {
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    std::vector<double> field(side * side);
    std::generate(field.begin(), field.end(), [&] { return normal(random); });
    for (const int step : {1, side})
        for (int i = 0; i < side * side; ++i)
            if (step == 1 ? i % side > 0 : i >= side)
                field[i] =
                    correlation * field[i - step] + std::sqrt(1 - correlation * correlation) * field[i];
    Grey grey{side, side, {}};
    for (const double value : field)
        grey.levels.push_back(png_byte(std::clamp(std::lround(128 + std::sqrt(variance) * value), 0l, 255l)));
    return grey;
}

// A line of the table: decibels unquantised, then bits and decibels for each step.
std::vector<double> lineOf(const std::string &text, const std::string &transform) {
    std::istringstream line(textAfter(text, "\n" + transform));
    std::vector<double> numbers;
    std::string number; // may be infinite
    while (numbers.size() < 7 && line >> number)
        numbers.push_back(std::stod(number));
    numbers.resize(7, std::numeric_limits<double>::quiet_NaN());
    return numbers;
}

using Transform = std::function<double(int k, int j)>; // an element of its matrix

// The variances of a block's coefficients by that of the levels.
std::vector<double> sharesOfVariance(int N, const Transform &transform) {
    std::vector<double> ofRows(N), all;
    for (int k = 0; k < N; ++k)
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j)
                ofRows[k] += transform(k, i) * transform(k, j) * std::pow(correlation, std::abs(i - j));
    for (const double a : ofRows)
        for (const double b : ofRows)
            all.push_back(a * b);
    return all;
}

TEST(BlockCoder, savesWhatTheoryPromises) {
    const Outcome outcome =
        run("block_coder " + writeGrey("correlated.png", correlatedPicture(960)) + " coded.png");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    const auto none = [](int, int) { return 1.0; };
    const auto walshHadamard = [](int N) {
        return [N](int k, int j) { return (__builtin_parity(k & j) ? -1 : 1) / std::sqrt(N); };
    };
    const auto hartley = [](int k, int j) {
        const double angle = 2 * std::numbers::pi * k * j / 12;
        return (std::cos(angle) + std::sin(angle)) / std::sqrt(12);
    };
    const struct {
        std::string name;
        int N;
        Transform transform;
    } cases[] = {{"none            1 x 1 ", 1, none},
                 {"Walsh-Hadamard  8 x 8 ", 8, walshHadamard(8)},
                 {"Walsh-Hadamard 16 x 16", 16, walshHadamard(16)},
                 {"Hartley        12 x 12", 12, hartley}};
    constexpr double step = 4, rounding = 1 / 12.0; // the variance of what rounding to whole numbers leaves
    for (const auto &[name, N, transform] : cases) {
        SCOPED_TRACE(name);
        // The entropy of normal coefficients in steps, with the noise of rounding the levels and then these.
        // So what a transform saves is half the logarithm of the variances' arithmetic by their geometric
        // mean.
        double bits = 0;
        for (const double share : sharesOfVariance(N, transform)) {
            const double inSteps = (variance * share + rounding) / (step * step) + rounding;
            bits += std::log2(2 * std::numbers::pi * std::numbers::e * inSteps) / 2 / (N * N);
        }
        // The picture's own variance scatters by 3 percent, or 0.02 bits. Coefficients of half a step and
        // less take up to 0.015 bits less on the whole.
        const std::vector<double> line = lineOf(outcome.text, name);
        EXPECT_NEAR(line[1], bits, 0.05);
        // Whole levels are off by 0, 1, 2 and 1; coefficients are anything.
        const double error = N == 1 ? 1.5 : step * step * rounding;
        EXPECT_NEAR(line[2], 10 * std::log10(255 * 255 / error), 0.1);
    }
}

// On a picture that is not made of whole blocks.
TEST(BlockCoder, comesBackAsItSays) {
    Grey noise{53, 31, {}};
    std::mt19937 random(2);
    for (int i = 0; i < noise.width * noise.height; ++i)
        noise.levels.push_back(png_byte(96 + random() % 64)); // what comes back is between 0 and 255
    const Outcome outcome = run("block_coder " + writeGrey("noise.png", noise) + " pictures.png");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    EXPECT_EQ(lineOf(outcome.text, "none            1 x 1 ")[0], std::numeric_limits<double>::infinity());

    const Grey pictures = readGrey("pictures.png");
    ASSERT_EQ(pictures.width, 2 * noise.width);
    ASSERT_EQ(pictures.height, 2 * noise.height);
    const auto decibels = [&](int left, int top) {
        double error = 0;
        for (int i = 0; i < noise.width * noise.height; ++i) {
            const int x = left + i % noise.width, y = top + i / noise.width;
            error += std::pow(double(pictures.levels[y * pictures.width + x]) - noise.levels[i], 2);
        }
        return 10 * std::log10(255 * 255 * double(noise.levels.size()) / error);
    };
    EXPECT_EQ(decibels(0, 0), std::numeric_limits<double>::infinity()); // the original
    const struct {
        std::string name;
        int left, top;
    } cases[] = {{"Walsh-Hadamard  8 x 8 ", noise.width, 0},
                 {"Walsh-Hadamard 16 x 16", 0, noise.height},
                 {"Hartley        12 x 12", noise.width, noise.height}};
    for (const auto &[name, left, top] : cases) {
        const std::vector<double> line = lineOf(outcome.text, name);
        // Rows and columns, there and back: four sums in a row and a scaling at most, each rounded by half an
        // epsilon of what the block's power allows.
        EXPECT_GT(line[0], -20 * std::log10(4 * (4 + 2) * std::numeric_limits<float>::epsilon() / 2));
        EXPECT_NEAR(line[6], decibels(left, top), 0.02) << name; // the pictures have whole levels
    }
    EXPECT_NE(outcome.text.find("gave the same bits"), std::string::npos) << outcome.text;
}

TEST(BlockCoder, refusesWhatItCannotCode) {
    const std::string dot = writeGrey("dot.png", {1, 1, {77}});
    EXPECT_EQ(run("block_coder " + dot + " dots.png").exitCode, 0);
    std::ofstream("text.png") << "Not a picture at all.\n";
    std::filesystem::copy_file(writeGrey("whole.png", correlatedPicture(48)), "cut.png",
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file("cut.png", std::filesystem::file_size("cut.png") / 2);
    const struct {
        std::string arguments, reason;
        int exitCode;
    } cases[] = {{"", "usage is", 2},
                 {dot, "usage is", 2},
                 {"missing.png refused.png", "check the path", 1},
                 {". refused.png", "is a directory", 1},
                 {"text.png refused.png", "not a readable picture", 1},
                 {"cut.png refused.png", "is damaged", 1},
                 {dot + " " + dot, "would overwrite", 1},
                 {dot + " missing/refused.png", "cannot write the picture", 1}};
    for (const auto &[arguments, reason, exitCode] : cases) {
        const Outcome outcome = run("block_coder " + arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
        EXPECT_NE(outcome.text.find("block_coder: "), std::string::npos) << outcome.text;
        EXPECT_NE(outcome.text.find(reason), std::string::npos) << outcome.text;
        EXPECT_FALSE(std::filesystem::exists("refused.png"));
    }
}

} // namespace
