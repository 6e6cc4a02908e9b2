#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    int width, height;
    std::vector<std::uint8_t> rgb;
};

struct GreyPicture {
    int width, height;
    std::vector<std::uint8_t> levels;

    std::uint8_t at(int x, int y) const { return levels[std::size_t(y) * width + x]; }
};

// Of a PNG file; what is transparent in it lies on white. Throws std::runtime_error with a line for the user
// if that cannot be done.
GreyPicture readGreyLevels(const std::string &path);

// Throws std::runtime_error with a line for the user if the file cannot be written.
void writePng(const Picture &picture, const std::string &path);
