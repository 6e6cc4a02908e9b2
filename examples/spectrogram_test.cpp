// Runs the program the way a person does, on recordings made here.
#include "run_program.h"

#include <png.h>
#include <sndfile.hh>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr int sampleRate = 48000;

// A sine of half the full scale in both channels.
std::string writeTone(const std::string &path, double frequency, int frames) {
    std::vector<float> samples;
    for (int i = 0; i < frames; ++i)
        samples.insert(samples.end(), 2,
                       0.5f * float(std::sin(2 * std::numbers::pi * frequency * i / sampleRate)));
    SndfileHandle(path, SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 2, sampleRate)
        .writef(samples.data(), frames);
    return path;
}

void expectPicture(const std::string &path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, path.c_str())) << image.message;
    image.format = PNG_FORMAT_RGB;
    std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << image.message;
}

// One line that names the program, no picture.
void expectRefusal(const std::string &arguments, int exitCode, const std::string &reason) {
    const Outcome outcome = run("spectrogram " + arguments);
    EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
    EXPECT_TRUE(outcome.text.starts_with("spectrogram: ")) << outcome.text;
    EXPECT_NE(outcome.text.find(reason), std::string::npos) << outcome.text;
    EXPECT_EQ(outcome.text.find('\n'), outcome.text.size() - 1) << outcome.text;
    EXPECT_FALSE(std::filesystem::exists("refused.png"));
}

TEST(Spectrogram, findsTheTone) {
    for (const int length : {15, 16, 64}) {
        const int binWidth = sampleRate / length, bin = length / 3;
        const std::string tone = writeTone("tone.wav", bin * binWidth, sampleRate / 2);
        const Outcome outcome = run("spectrogram " + tone + " tone.png --length " + std::to_string(length));
        EXPECT_EQ(outcome.exitCode, 0) << outcome.text;
        const std::string loudest =
            " Hz (bin " + std::to_string(bin) + " of " + std::to_string(length / 2) + "), -6.0 dB";
        EXPECT_EQ(numberAfter(outcome.text, "the band from "), (bin - 0.5) * binWidth);
        EXPECT_EQ(numberAfter(textAfter(outcome.text, "the band from "), " to "), (bin + 0.5) * binWidth);
        EXPECT_NE(outcome.text.find(loudest), std::string::npos) << outcome.text;

        const double error = numberAfter(outcome.text, "largest error ");
        EXPECT_GT(error, 0); // no transform of thousands of frames is exact
        // About log2(length) roundings each way, each less than an epsilon of the largest sample.
        EXPECT_LT(error, 0.5 * std::numeric_limits<float>::epsilon() * 2 * std::log2(length));
        expectPicture("tone.png");
    }
}

TEST(Spectrogram, namesTheBandOfATone) {
    for (const int length : {7, 16, 64})
        for (const double frequency : {100, 440, 1000, 15000, 23900}) {
            const std::string tone = writeTone("band.wav", frequency, sampleRate / 2);
            const Outcome outcome =
                run("spectrogram " + tone + " band.png --length " + std::to_string(length));
            const std::string band = textAfter(outcome.text, "the band ");
            EXPECT_LE(numberAfter(band, "from "), frequency) << outcome.text;
            EXPECT_GE(numberAfter(band, " to "), frequency) << outcome.text;
        }
}

TEST(Spectrogram, drawsWhatHasNoTone) {
    const Outcome silence = run("spectrogram " + writeTone("silence.wav", 0, sampleRate) + " silence.png");
    EXPECT_EQ(silence.exitCode, 0);
    EXPECT_NE(silence.text.find("the recording is silent"), std::string::npos) << silence.text;
    expectPicture("silence.png");
    EXPECT_EQ(run("spectrogram " + writeTone("short.wav", 9000, 2) + " short.png --length 2").exitCode, 0);
    expectPicture("short.png");
}

TEST(Spectrogram, saysWhatIsOddAboutARecording) {
    std::vector<float> opposite;
    for (int i = 0; i < sampleRate; ++i)
        opposite.insert(opposite.end(), {float(i % 50) / 50, -float(i % 50) / 50});
    SndfileHandle("opposite.wav", SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 2, sampleRate)
        .writef(opposite.data(), sampleRate);
    const Outcome cancelled = run("spectrogram opposite.wav odd.png");
    EXPECT_EQ(cancelled.exitCode, 0);
    EXPECT_NE(cancelled.text.find("the channels are opposite"), std::string::npos) << cancelled.text;

    writeTone("cut.wav", 440, sampleRate);
    std::filesystem::resize_file("cut.wav", std::filesystem::file_size("cut.wav") / 2);
    const Outcome cut = run("spectrogram cut.wav odd.png");
    EXPECT_EQ(cut.exitCode, 0);
    EXPECT_NE(cut.text.find("the file is cut off"), std::string::npos) << cut.text;
    EXPECT_EQ(numberAfter(cut.text, "header states "), sampleRate * 2 * sizeof(float)) << cut.text;
    EXPECT_LE(numberAfter(cut.text, "the band from "), 440);
}

TEST(Spectrogram, refusesBadRecordings) {
    std::ofstream("text.wav") << "Not a sound at all.\n";
    std::ofstream("nothing.wav");
    expectRefusal("missing.wav refused.png", 1, "check the path");
    expectRefusal(". refused.png", 1, "is a directory");
    expectRefusal("text.wav refused.png", 1, "not a readable recording");
    expectRefusal("nothing.wav refused.png", 1, "not a readable recording");
    expectRefusal(writeTone("empty.wav", 0, 0) + " refused.png", 1, "holds no samples");
    expectRefusal(writeTone("brief.wav", 0, 15) + " refused.png --length 16", 1,
                  "15 samples, fewer than the 16");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    expectRefusal(writeTone("nan.wav", nan, 99) + " refused.png", 1, "no usable numbers");
}

TEST(Spectrogram, refusesBadArguments) {
    const std::string tone = writeTone("arguments.wav", 9000, 99);
    for (const std::string length : {"sixteen", "16x", "1", "65", "-4", "99999999999", "''"})
        expectRefusal(tone + " refused.png --length " + length, 2, "--length must be a whole number");
    for (const std::string arguments : {"", "arguments.wav", "arguments.wav refused.png --length", "a b c"})
        expectRefusal(arguments, 2, "usage is");
    expectRefusal(tone + " missing/refused.png", 1, "cannot write the picture");
    expectRefusal(tone + " .", 1, "cannot write the picture");
    expectRefusal(tone + " " + tone, 1, "would overwrite the input");
}

} // namespace
