// Numbers for the transforms and what is expected of them. A complex array is a list of doubles, real and
// imaginary parts in turn; a double holds the numbers of both element types.
#pragma once

#include "registry.h"

#include <array>
#include <cfloat>
#include <vector>

static_assert(FLT_EVAL_METHOD == 0, "the expectations need arithmetic in the width of the operands");

using Values = std::vector<double>;

// Room for arrays at chosen offsets from a 16-byte boundary, with bytes to spare on both sides.
struct Arena {
    alignas(64) std::array<unsigned char, 4096> bytes;

    explicit Arena(unsigned char fill) { bytes.fill(fill); }
    unsigned char *at(std::size_t offset) { return bytes.data() + 64 + offset; }
};

// The number rounded once to the transform's element type.
double rounded(const Transform &transform, double value);

void encode(const Transform &transform, const Values &values, unsigned char *bytes);
Values decode(const Transform &transform, const unsigned char *bytes);

// Components between -1 and 1, the same on every run.
Values randomValues(const Transform &transform, unsigned seed);

// The output of the transform, on aligned arrays.
Values run(const Transform &transform, const Values &input, int32_t flag);

// Real and imaginary parts exchanged.
Values exchanged(Values values);

// 1/sqrt(n), the exact value rounded once.
template <class Real> Real inverseRoot(int n);

// The cosine and sine of k/n of a turn; exact at quarters of a turn.
long double cosineOfTurn(int k, int n);
long double sineOfTurn(int k, int n);
