#include "definition.h"

namespace zrfgen::bench {
namespace {

Definition zeros(int results, int sources) {
    return Definition(results, std::vector<gen::Quad>(sources, 0));
}

// Real numbers in the complex elements 0 to length / 2.
int halfSpectrumSize(int length) {
    return 2 * (length / 2 + 1);
}

} // namespace

Definition complexDft(int length, int sign) {
    Definition definition = zeros(2 * length, 2 * length);
    for (int k = 0; k < length; ++k)
        for (int j = 0; j < length; ++j) {
            const gen::ComplexQuad root = gen::onCircle({sign * j * k, length});
            definition[2 * k][2 * j] = root.re;
            definition[2 * k][2 * j + 1] = -root.im;
            definition[2 * k + 1][2 * j] = root.im;
            definition[2 * k + 1][2 * j + 1] = root.re;
        }
    return definition;
}

Definition realForward(int length) {
    const Definition complex = complexDft(length, -1);
    Definition definition = zeros(halfSpectrumSize(length), length);
    for (int k = 0; k < halfSpectrumSize(length); ++k)
        for (int j = 0; j < length; ++j)
            definition[k][j] = complex[k][2 * j];
    return definition;
}

Definition realInverse(int length) {
    const Definition complex = complexDft(length, +1);
    Definition definition = zeros(length, halfSpectrumSize(length));
    for (int k = 0; k < length; ++k)
        for (int j = 0; j < halfSpectrumSize(length); ++j) {
            const int frequency = j / 2;
            const bool standsAlone = frequency == 0 || 2 * frequency == length; // no conjugate elsewhere
            definition[k][j] = complex[2 * k][j] * (standsAlone ? 1 : 2);
        }
    return definition;
}

Definition hartley(int length) {
    const Definition complex = complexDft(length, -1);
    Definition definition = zeros(length, length);
    for (int k = 0; k < length; ++k)
        for (int j = 0; j < length; ++j)
            definition[k][j] = complex[2 * k][2 * j] + complex[2 * k][2 * j + 1]; // cosine and sine
    return definition;
}

} // namespace zrfgen::bench
