// Runs the examples that need no recording and holds their figures to theory.
#include "run_program.h"

#include <cmath>
#include <sstream>
#include <vector>

namespace {

constexpr double halfEpsilon = std::numeric_limits<float>::epsilon() / 2;

TEST(Examples, ofdmErrorsAreThoseOfTheory) {
    const Outcome outcome = run("ofdm_modem ofdm.svg");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    expectSvg("ofdm.svg");
    EXPECT_EQ(numberAfter(outcome.text, "no noise "), 0);
    const double bits = numberAfter(outcome.text, "bits  ");

    // Textbook rates of QPSK and Gray-coded 16-QAM in white noise.
    std::istringstream rows(textAfter(outcome.text, "\n"));
    for (int decibels = 0; decibels <= 8; ++decibels) {
        double row, qpsk, qam;
        std::vector<double> qpskRates(6), qamRates(1);
        rows >> row >> qpsk;
        for (double &rate : qpskRates)
            rows >> rate;
        rows >> qam >> qamRates[0];
        ASSERT_TRUE(rows && row == decibels) << outcome.text;
        const double e = std::pow(10, decibels / 10.0), x = std::sqrt(0.4 * e);
        EXPECT_NEAR(qpsk, std::erfc(std::sqrt(e)) / 2, 1e-3 * qpsk);
        EXPECT_NEAR(qam, (3 * std::erfc(x) + 2 * std::erfc(3 * x) - std::erfc(5 * x)) / 8, 1e-3 * qam);

        // Bits of QPSK err independently of each other, those of 16-QAM never more often together than so:
        // counts scatter at most like binomial ones. Past 4.5 deviations, and a count for the skewed tail of
        // small ones, lies less than one set of 63 counts in a thousand.
        const auto expectRates = [&](const std::vector<double> &rates, double expected) {
            for (const double rate : rates)
                EXPECT_NEAR(rate, expected, 4.5 * std::sqrt(expected * (1 - expected) / bits) + 1 / bits)
                    << decibels << " dB";
        };
        expectRates(qpskRates, qpsk);
        expectRates(qamRates, qam);
    }
    // The mean square of 63 deviations: 1, give or take 4.5 times the root of 2/63.
    EXPECT_NEAR(std::pow(numberAfter(outcome.text, "root mean square "), 2), 1, 4.5 * std::sqrt(2 / 63.0));
}

TEST(Examples, rotationMakesEveryVectorNormal) {
    const Outcome outcome = run("rotated_quantisation rotated.svg");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    expectSvg("rotated.svg");
    // Twenty levels of sums and two scalings round by at most half an epsilon each, one independent of the
    // other.
    EXPECT_LT(numberAfter(outcome.text, "round trip   error "), 20 * std::log10(std::sqrt(22) * halfEpsilon));

    // The mean square of the largest of 1024 normal elements.
    double largest = 0;
    for (double x = 0; x < 10; x += 1e-3)
        largest += 2 * x * (1 - std::pow(std::erf(x / std::sqrt(2)), 1024)) * 1e-3;
    std::istringstream rows(textAfter(outcome.text, "outliers\n"));
    for (int bits = 2; bits <= 8; ++bits) {
        double row, normal, normalRotated, student, studentRotated, outliers, outliersRotated;
        rows >> row >> normal >> normalRotated >> student >> studentRotated >> outliers >> outliersRotated;
        ASSERT_TRUE(rows && row == bits) << outcome.text;
        if (bits < 4)
            continue; // the error is not yet spread evenly over a step
        // The mean over 200 vectors scatters by 1.5 percent, as the largest elements' squares do.
        const double expected = 10 * std::log10(largest / 12 / std::pow((1 << (bits - 1)) - 1, 2));
        EXPECT_NEAR(normal, expected, 0.25);
        EXPECT_NEAR(normalRotated, expected, 0.25);
        EXPECT_NEAR(studentRotated, expected, 0.25);
        EXPECT_LT(outliersRotated, expected + 0.25); // sums of ten large elements have shorter tails
        EXPECT_GT(student, expected + 6);
        EXPECT_GT(outliers, expected + 6);
    }
}

TEST(Examples, convolutionIsTheDirectOne) {
    const Outcome outcome = run("convolution convolution.svg");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.text;
    expectSvg("convolution.svg");
    // Results are about 1 at most; 12 stages of the DFTs and 16 sums of products round on the way.
    const double error = numberAfter(outcome.text, "error        largest ");
    EXPECT_GT(error, 0);
    EXPECT_LT(error, (12 + 16) * halfEpsilon);
    // What a window of this attenuation promises: ripple of one part in ten thousand, half the amplitude at
    // the cut-off.
    EXPECT_LT(numberAfter(outcome.text, "pass band    within "), 20 * std::log10(1 + 1.1e-4));
    EXPECT_NEAR(numberAfter(outcome.text, "cut-off      "), 20 * std::log10(0.5), 0.01);
    EXPECT_LT(numberAfter(outcome.text, "stop band    at most "), -80);
    EXPECT_GT(numberAfter(outcome.text, "time         "), 0);
}

TEST(Examples, refuseBadArguments) {
    for (const std::string program : {"ofdm_modem", "rotated_quantisation", "convolution"})
        for (const std::string arguments : {"", "a b", "--help"}) {
            const Outcome outcome = run(program + " " + arguments);
            EXPECT_EQ(outcome.exitCode, 2) << program;
            EXPECT_EQ(outcome.text, program + ": usage is " + program + " OUTPUT.svg\n");
        }
    const Outcome outcome = run("rotated_quantisation missing/refused.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.text.find("rotated_quantisation: cannot write the picture"), std::string::npos)
        << outcome.text;
}

} // namespace
