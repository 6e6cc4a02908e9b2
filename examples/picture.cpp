#include "picture.h"

#include <png.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

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
