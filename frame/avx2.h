// Vectors of 32 bytes, by AVX2. They move as fast from any address.
#pragma once

#include "sse3.h"

#include <immintrin.h>

namespace zrfgen {

inline __m256 load256Floats(const unsigned char *source) {
    return _mm256_loadu_ps(reinterpret_cast<const float *>(source));
}

inline __m256d load256Doubles(const unsigned char *source) {
    return _mm256_loadu_pd(reinterpret_cast<const double *>(source));
}

inline __m256 copiesOf256Floats(const unsigned char *source) {
    return _mm256_set1_ps(loadElement<Float32>(source));
}

inline __m256d copiesOf256Doubles(const unsigned char *source) {
    return _mm256_set1_pd(loadElement<Float64>(source));
}

inline __m256 loadHalves256Floats(const unsigned char *lower, const unsigned char *upper) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(loadFloats<Access::UnalignedWhole>(lower)),
                                loadFloats<Access::UnalignedWhole>(upper), 1);
}

inline __m256d loadHalves256Doubles(const unsigned char *lower, const unsigned char *upper) {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(loadDoubles<Access::UnalignedWhole>(lower)),
                                loadDoubles<Access::UnalignedWhole>(upper), 1);
}

inline void storeWide(unsigned char *destination, __m256 value) {
    _mm256_storeu_ps(reinterpret_cast<float *>(destination), value);
}

inline void storeWide(unsigned char *destination, __m256d value) {
    _mm256_storeu_pd(reinterpret_cast<double *>(destination), value);
}

inline void storeHalves(unsigned char *lower, unsigned char *upper, __m256 value) {
    storeVector<Access::UnalignedWhole>(lower, _mm256_castps256_ps128(value));
    storeVector<Access::UnalignedWhole>(upper, _mm256_extractf128_ps(value, 1));
}

inline void storeHalves(unsigned char *lower, unsigned char *upper, __m256d value) {
    storeVector<Access::UnalignedWhole>(lower, _mm256_castpd256_pd128(value));
    storeVector<Access::UnalignedWhole>(upper, _mm256_extractf128_pd(value, 1));
}

} // namespace zrfgen
