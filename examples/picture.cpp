#include "picture.h"

#include <png.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

GreyPicture readGreyLevels(const std::string &path) {
    const auto fail = [&path](const std::string &problem) {
        throw std::runtime_error("'" + path + "' " + problem);
    };
    if (access(path.c_str(), R_OK) != 0)
        fail(std::string("cannot be opened (") + std::strerror(errno) + "); check the path");
    if (std::filesystem::is_directory(path))
        fail("is a directory; name a picture in it");

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        fail(std::string("is not a readable picture (") + image.message + "); give a PNG file");
    image.format = PNG_FORMAT_GRAY;
    GreyPicture picture{int(image.width), int(image.height), {}};
    picture.levels.resize(std::size_t(image.width) * image.height, 255);
    if (!png_image_finish_read(&image, nullptr, picture.levels.data(), 0, nullptr))
        fail(std::string("is damaged (") + image.message + "); export the picture again");
    return picture;
}

void writePng(const Picture &picture, const std::string &path) {
    const auto fail = [&path](const std::string &reason) {
        throw std::runtime_error("cannot write the picture '" + path + "' (" + reason +
                                 "); choose another place");
    };
    // Not png_image_write_to_file: on an error it removes whatever stands at the path.
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(path.c_str(), "wb"), std::fclose);
    if (!file)
        fail(std::strerror(errno));
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = png_uint_32(picture.width);
    image.height = png_uint_32(picture.height);
    image.format = PNG_FORMAT_RGB;
    if (!png_image_write_to_stdio(&image, file.get(), 0, picture.rgb.data(), 0, nullptr))
        fail(image.message);
    if (std::fflush(file.get()) != 0)
        fail(std::strerror(errno));
}
