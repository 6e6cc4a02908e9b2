#pragma once

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

// What the tests of the programs need.

struct Outcome {
    int exitCode;
    std::string text;
};

// Runs one of the examples; the text is all that it prints.
inline Outcome run(const std::string &command) {
    std::FILE *pipe = popen((PROGRAMS + command + " 2>&1").c_str(), "r");
    std::string text;
    for (int c; (c = std::fgetc(pipe)) != EOF;)
        text += char(c);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
}

// The rest of a text behind a label that it must hold.
inline std::string textAfter(const std::string &text, const std::string &label) {
    const std::size_t found = text.find(label);
    EXPECT_NE(found, std::string::npos) << "no '" << label << "' in\n" << text;
    return found == std::string::npos ? "" : text.substr(found + label.size());
}

inline double numberAfter(const std::string &text, const std::string &label) {
    const std::string rest = textAfter(text, label);
    return rest.empty() ? std::numeric_limits<double>::quiet_NaN() : std::stod(rest);
}

inline void expectSvg(const std::string &path) {
    std::ifstream file(path);
    const std::string svg{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(svg.starts_with("<svg ")) << path;
    EXPECT_TRUE(svg.ends_with("</svg>\n")) << path;
    EXPECT_NE(svg.find("<polyline points=\""), std::string::npos) << path;
    EXPECT_EQ(svg.find("points=\"\""), std::string::npos) << path; // a curve without points
    EXPECT_EQ(svg.find("nan"), std::string::npos) << path;
}
