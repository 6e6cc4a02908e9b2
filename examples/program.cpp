#include "program.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

std::vector<std::string> parsePaths(int count, char **values, const std::string &usage) {
    const std::vector<std::string> paths(values + 1, values + count);
    const bool option =
        std::any_of(paths.begin(), paths.end(), [](auto &path) { return path.starts_with("--"); });
    if (option || std::ssize(paths) != std::count(usage.begin(), usage.end(), ' '))
        throw UsageError("usage is " + usage);
    return paths;
}

void keepInput(const std::string &input, const std::string &picture) {
    std::error_code ignored;
    if (std::filesystem::equivalent(input, picture, ignored))
        throw std::runtime_error("the picture would overwrite the input; name another output");
}

int reportFailure(const char *program, const std::exception &error) {
    std::fprintf(stderr, "%s: %s\n", program, error.what());
    return dynamic_cast<const UsageError *>(&error) ? 2 : 1;
}
