// Vectors of 16 bytes, by SSE3.
#pragma once

#include "elements.h"

#include <pmmintrin.h>

namespace zrfgen {

// Off the boundaries, floats move 16 bytes at a time and doubles 8, or whole vectors of either.
enum class Access { Aligned, Unaligned, UnalignedWhole };

constexpr int signBit = INT32_MIN;

// The element or pair of elements at `source` in the lower half of the vector, zero in the upper half.
inline __m128d loadLowerDoubles(const unsigned char *source) {
    return _mm_set_sd(loadElement<Float64>(source));
}

inline __m128 loadLowerFloats(const unsigned char *source) {
    return _mm_castpd_ps(loadLowerDoubles(source));
}

inline __m128d loadHalvesDoubles(const unsigned char *lower, const unsigned char *upper) {
    return _mm_setr_pd(loadElement<Float64>(lower), loadElement<Float64>(upper));
}

inline __m128 loadHalvesFloats(const unsigned char *lower, const unsigned char *upper) {
    return _mm_castpd_ps(loadHalvesDoubles(lower, upper));
}

inline void storeLower(unsigned char *destination, __m128d value) {
    storeElement(destination, _mm_cvtsd_f64(value));
}

inline void storeUpper(unsigned char *destination, __m128d value) {
    storeElement(destination, value[1]);
}

inline void storeLower(unsigned char *destination, __m128 value) {
    storeLower(destination, _mm_castps_pd(value));
}

inline void storeUpper(unsigned char *destination, __m128 value) {
    storeUpper(destination, _mm_castps_pd(value));
}

// A number in the lowest lane, which is where it lies already. GCC would clear the others first, and Clang
// takes no register for two types.
template <class Vector, class Real> [[gnu::always_inline]] inline Vector inLowestLane(Real value) {
#ifdef __clang__
    return Vector{value};
#else
    Vector vector;
    asm("" : "=x"(vector) : "0"(value));
    return vector;
#endif
}

inline __m128d inVector(Float64 value) {
    return inLowestLane<__m128d>(value);
}

inline __m128 inVector(Float32 value) {
    return inLowestLane<__m128>(value);
}

// One lane as a number.
template <int lane> inline Float64 element(__m128d value) {
    return _mm_cvtsd_f64(lane == 0 ? value : _mm_unpackhi_pd(value, value));
}

template <int lane> inline Float32 element(__m128 value) {
    if constexpr (lane == 1)
        return _mm_cvtss_f32(_mm_movehdup_ps(value));
    return _mm_cvtss_f32(_mm_shuffle_ps(value, value, lane));
}

// Both lanes exchanged, by the one instruction that leaves its source alone.
inline __m128d exchanged(__m128d value) {
#ifdef __AVX__
    return _mm_shuffle_pd(value, value, 1);
#endif
    return _mm_castsi128_pd(_mm_shuffle_epi32(_mm_castpd_si128(value), _MM_SHUFFLE(1, 0, 3, 2)));
}

// Whole vectors.
template <Access access> inline __m128 loadFloats(const unsigned char *source) {
    const auto *floats = reinterpret_cast<const float *>(source);
    return access == Access::Aligned ? _mm_load_ps(floats) : _mm_loadu_ps(floats);
}

template <Access access> inline __m128d loadDoubles(const unsigned char *source) {
    const auto *doubles = reinterpret_cast<const double *>(source);
    if constexpr (access == Access::Unaligned)
        return loadHalvesDoubles(source, source + 8);
    return access == Access::Aligned ? _mm_load_pd(doubles) : _mm_loadu_pd(doubles);
}

template <Access access> inline void storeVector(unsigned char *destination, __m128 value) {
    auto *floats = reinterpret_cast<float *>(destination);
    access == Access::Aligned ? _mm_store_ps(floats, value) : _mm_storeu_ps(floats, value);
}

template <Access access> inline void storeVector(unsigned char *destination, __m128d value) {
    auto *doubles = reinterpret_cast<double *>(destination);
    if constexpr (access == Access::Unaligned) {
        storeLower(destination, value);
        storeUpper(destination + 8, value);
    } else {
        access == Access::Aligned ? _mm_store_pd(doubles, value) : _mm_storeu_pd(doubles, value);
    }
}

} // namespace zrfgen
