// The lines that a command prints.
#pragma once

#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

inline std::vector<std::string> linesOf(const std::string &command) {
    std::vector<std::string> lines;
    std::FILE *pipe = popen(command.c_str(), "r");
    for (char line[1000]; std::fgets(line, sizeof line, pipe) != nullptr;)
        lines.emplace_back(line, std::strcspn(line, "\n"));
    EXPECT_EQ(pclose(pipe), 0) << command;
    return lines;
}
