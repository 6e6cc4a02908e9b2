#pragma once

#include <string>
#include <vector>

struct Recording {
    std::vector<float> samples; // all channels mixed to one; 1 is full scale
    int sampleRate;
    int channels;
    float loudestInput; // of any channel by itself
    std::string remark; // what is odd about the file, or nothing

    double duration() const { return double(samples.size()) / sampleRate; }
};

// Reads a sound file. Throws std::runtime_error with a line for the user if that cannot be done.
Recording readRecording(const std::string &path);
