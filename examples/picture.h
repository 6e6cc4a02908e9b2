#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    int width, height;
    std::vector<std::uint8_t> rgb;
};

// Throws std::runtime_error with a line for the user if the file cannot be written.
void writePng(const Picture &picture, const std::string &path);
