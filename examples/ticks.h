#pragma once

#include <cmath>
#include <cstdio>
#include <string>

// A step of 1, 2 or 5 times a power of ten that divides the range into at most `most` parts.
inline double tickStep(double range, int most) {
    const double power = std::pow(10, std::floor(std::log10(range / most)));
    for (const double factor : {1, 2, 5})
        if (factor * power * most >= range)
            return factor * power;
    return 10 * power;
}

inline std::string tickText(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}
