#pragma once

#include "short_time_transform.h"

#include <cstdint>
#include <string>
#include <vector>

// How many time columns the plot can show.
constexpr int plotWidth = 1000;

struct Picture {
    int width, height;
    std::vector<std::uint8_t> rgb;
};

// Time to the right, frequency upwards, the level as colour.
Picture drawSpectrogram(const Spectrogram &spectrogram, double duration, int sampleRate);

// Throws std::runtime_error with a line for the user if the file cannot be written.
void writePng(const Picture &picture, const std::string &path);
