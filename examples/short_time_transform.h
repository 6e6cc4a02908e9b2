#pragma once

#include <cstdint>
#include <vector>

// The power of each frequency over time. Bin b stands for the frequency b * sampleRate / length; the columns
// divide the recording evenly, each the mean of the frames that fall into it.
struct Spectrogram {
    int length; // samples in a frame
    int hop;    // samples from one frame to the next
    int bins;   // up to half the sample rate
    int columns;
    std::vector<double> power; // columns * bins values; 1 is a full-scale sine

    std::int64_t frames;
    double transformSeconds; // forward and inverse transforms of all frames
    double roundTripError;   // largest difference between a frame's sample and what came back

    double at(int column, int bin) const { return power[std::size_t(column) * bins + bin]; }
};

// Cuts the samples, at least one frame of them, into overlapping frames and transforms each there and back.
Spectrogram transformFrames(const std::vector<float> &samples, int length, int maxColumns);
