#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

// What the programs have in common: how they read paths, and fail.

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The arguments of a program that takes nothing but paths, as its usage line lists them.
std::vector<std::string> parsePaths(int count, char **values, const std::string &usage);

// Throws if both paths are those of one file.
void keepInput(const std::string &input, const std::string &picture);

// Prints the line for the user and returns the program's exit code: 2 for wrong usage, else 1.
int reportFailure(const char *program, const std::exception &error);
