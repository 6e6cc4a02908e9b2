// Vectors of 64 bytes, by AVX-512.
#pragma once

#include "avx2.h"

namespace zrfgen {

inline __m512 load512Floats(const unsigned char *source) {
    return _mm512_loadu_ps(source);
}

inline __m512d load512Doubles(const unsigned char *source) {
    return _mm512_loadu_pd(source);
}

inline __m512 copiesOf512Floats(const unsigned char *source) {
    return _mm512_set1_ps(loadElement<Float32>(source));
}

inline __m512d copiesOf512Doubles(const unsigned char *source) {
    return _mm512_set1_pd(loadElement<Float64>(source));
}

inline __m512 loadHalves512Floats(const unsigned char *lower, const unsigned char *upper) {
    return _mm512_insertf32x8(_mm512_castps256_ps512(load256Floats(lower)), load256Floats(upper), 1);
}

inline __m512d loadHalves512Doubles(const unsigned char *lower, const unsigned char *upper) {
    return _mm512_insertf64x4(_mm512_castpd256_pd512(load256Doubles(lower)), load256Doubles(upper), 1);
}

inline void storeWide(unsigned char *destination, __m512 value) {
    _mm512_storeu_ps(destination, value);
}

inline void storeWide(unsigned char *destination, __m512d value) {
    _mm512_storeu_pd(destination, value);
}

inline void storeHalves(unsigned char *lower, unsigned char *upper, __m512 value) {
    storeWide(lower, _mm512_castps512_ps256(value));
    storeWide(upper, _mm512_extractf32x8_ps(value, 1));
}

inline void storeHalves(unsigned char *lower, unsigned char *upper, __m512d value) {
    storeWide(lower, _mm512_castpd512_pd256(value));
    storeWide(upper, _mm512_extractf64x4_pd(value, 1));
}

} // namespace zrfgen
