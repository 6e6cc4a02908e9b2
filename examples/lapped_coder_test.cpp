// Runs the coder on recordings of which theory says what a bit buys.
#include "run_program.h"

#include <sndfile.hh>

#include <cmath>
#include <numbers>
#include <random>
#include <sstream>
#include <vector>

namespace {

// A sine in white noise.
std::string writeRecording(const std::string &path, double sine, double noise) {
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    std::vector<double> samples(100000);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = sine * std::sin(2 * std::numbers::pi * 0.0301 * double(i)) + noise * normal(random);
    SndfileHandle(path, SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1, 48000)
        .write(samples.data(), sf_count_t(samples.size()));
    return path;
}

// Signal to noise at 2 bits a sample.
double atTwoBits(const std::string &text, const std::string &curve) {
    std::istringstream row(textAfter(textAfter(text, "at bits a sample\n"), curve));
    std::string one; // may be a dash, where the curve does not go so far
    double two = std::numeric_limits<double>::quiet_NaN();
    row >> one >> two;
    return two;
}

TEST(LappedCoder, isExactAndAddsNoNoise) {
    const Outcome outcome = run("lapped_coder " + writeRecording("noise.wav", 0, 0.1) + " noise.svg");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    expectSvg("noise.svg");
    // Two transforms of up to 1024 lines, windows, factors and the overlap's sum round by half an epsilon
    // each.
    for (const std::string lines : {"  64", " 256", "1024"}) {
        const double error = numberAfter(outcome.text, "unquantised " + lines + " lines: largest error ");
        EXPECT_GT(error, 0);
        EXPECT_LT(error, (2 * 10 + 5) * std::numeric_limits<float>::epsilon() / 2);
    }
    // White normal noise stays so under orthogonal transforms. Quantised, it has the entropy of a normal
    // signal with the quantiser's noise added, counted in steps; rounding the blocks up costs a hundredth of
    // the bits.
    const double expected = 10 * std::log10(std::pow(4, 2) * 6 / (std::numbers::pi * std::numbers::e) - 1);
    for (const std::string curve : {"no transform ", "\n64 lines ", "\n256 lines ", "\n1024 lines "})
        EXPECT_NEAR(atTwoBits(outcome.text, curve), expected, 0.01 * 2 * 6.02 + 0.1) << curve;
}

TEST(LappedCoder, gainsWhereTheSpectrumIsUneven) {
    const Outcome outcome = run("lapped_coder " + writeRecording("sine.wav", 0.5, 0.001) + " sine.svg");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    // The noise is 51 dB below the sine, which takes but a few of the lines.
    const double uncoded = atTwoBits(outcome.text, "no transform "),
                 coded = atTwoBits(outcome.text, "\n1024 lines ");
    EXPECT_LT(uncoded, 20);
    EXPECT_GT(coded, 51);
    EXPECT_LT(coded, 51 + 2 * 6.02);
}

TEST(LappedCoder, refusesWhatItCannotCode) {
    const std::string silence = writeRecording("still.wav", 0, 0);
    const struct {
        std::string arguments, reason;
        int exitCode;
    } cases[] = {{"", "usage is", 2},
                 {silence, "usage is", 2},
                 {"missing.wav refused.svg", "check the path", 1},
                 {silence + " refused.svg", "is silent", 1},
                 {silence + " " + silence, "would overwrite", 1}};
    for (const auto &[arguments, reason, exitCode] : cases) {
        const Outcome outcome = run("lapped_coder " + arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
        EXPECT_NE(outcome.text.find("lapped_coder: "), std::string::npos) << outcome.text;
        EXPECT_NE(outcome.text.find(reason), std::string::npos) << outcome.text;
    }
}

} // namespace
