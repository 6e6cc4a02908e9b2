// Numbers for the transforms and what is expected of them. An array is a list of doubles, a complex one with
// real and imaginary parts in turn; a double holds the numbers of both element types.
#pragma once

#include "registry.h"

#include <array>
#include <cfloat>
#include <cstdint>
#include <limits>
#include <vector>

static_assert(FLT_EVAL_METHOD == 0, "the expectations need arithmetic in the width of the operands");

using Values = std::vector<double>;

constexpr int32_t scalingFlags[] = {zrfScaleFwdByN, zrfScaleInvByN, zrfScaleBySqrtN, zrfScaleNone};
constexpr double notFinite[] = {std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()};

// Room for arrays at chosen offsets from a 16-byte boundary, with bytes to spare on both sides.
struct Arena {
    alignas(64) std::array<unsigned char, 4096> bytes;

    explicit Arena(unsigned char fill) { bytes.fill(fill); }
    unsigned char *at(std::size_t offset) { return bytes.data() + 64 + offset; }
};

// The number rounded once to the transform's element type.
double rounded(const Transform &transform, double value);

void encode(const Transform &transform, const Values &source, unsigned char *bytes);
Values decode(const Transform &transform, const unsigned char *destination);

// A source between -1 and 1, the same on every run.
Values randomValues(const Transform &transform, unsigned seed);

// The output of the transform, on aligned arrays.
Values run(const Transform &transform, const Values &input, int32_t flag);

// For comparisons in which +0 differs from -0 and NaN equals itself.
std::vector<std::uint64_t> bitsOf(const Values &values);

// What stands at a position of an array: a part of the element or spectrum entry of this index.
struct Part {
    int index;
    bool isImaginary;
    bool operator==(const Part &) const = default;
};
Part partAt(Layout layout, int length, int position);

// The positions of a spectrum's array that hold zero whatever the real elements are.
std::vector<int> zeroPositions(Layout layout, int length);

// The number by which the transform multiplies a source position on its way to a destination position, by
// definition, before scaling.
long double coefficient(const Transform &transform, int dstPosition, int srcPosition);

// The factor that the flag stands for.
double scaleFactor(const Transform &transform, int32_t flag);

// The cosine and sine of k/n of a turn; exact at quarters of a turn.
long double cosineOfTurn(int k, int n);
long double sineOfTurn(int k, int n);
