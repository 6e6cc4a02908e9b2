// Runs the program the way a person does, on recordings made here.
#include <gtest/gtest.h>

#include <png.h>
#include <sndfile.hh>
#include <sys/wait.h>

#include <cmath>
#include <cstdio>
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

struct Outcome {
    int exitCode;
    std::string text;
};

Outcome run(const std::string &arguments) {
    std::FILE *pipe = popen((PROGRAM " " + arguments + " 2>&1").c_str(), "r");
    std::string text;
    for (int c; (c = std::fgetc(pipe)) != EOF;)
        text += char(c);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
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
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
    EXPECT_TRUE(outcome.text.starts_with("spectrogram: ")) << outcome.text;
    EXPECT_NE(outcome.text.find(reason), std::string::npos) << outcome.text;
    EXPECT_EQ(outcome.text.find('\n'), outcome.text.size() - 1) << outcome.text;
    EXPECT_FALSE(std::filesystem::exists("refused.png"));
}

TEST(Spectrogram, findsTheTone) {
    const std::string tone = writeTone("tone.wav", 9000, sampleRate / 2);
    const Outcome outcome = run(tone + " tone.png --length 16");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.text;
    EXPECT_NE(outcome.text.find("9000 Hz (bin 3 of 8, each 3000 Hz wide), -6.0 dB"), std::string::npos)
        << outcome.text;
    const std::string label = "largest error ";
    EXPECT_LT(std::stod(outcome.text.substr(outcome.text.find(label) + label.size())), 1e-6);
    expectPicture("tone.png");
}

TEST(Spectrogram, drawsWhatHasNoTone) {
    EXPECT_EQ(run(writeTone("silence.wav", 0, sampleRate) + " silence.png").exitCode, 0);
    expectPicture("silence.png");
    EXPECT_EQ(run(writeTone("short.wav", 9000, 2) + " short.png --length 2").exitCode, 0);
    expectPicture("short.png");
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
    expectRefusal(tone + " " + tone, 1, "would overwrite the recording");
}

} // namespace
