// What every compiler has to take without a warning, whatever has been included before.
#ifdef AFTER_XLIB // the macros of <X11/Xlib.h> that are names of ours
#define Status int
#define None 0L
#define Complex 0
#define Bool int
#define Success 0
#endif
#ifdef ZRF_NO_SHORT_NAMES
enum class Status { Good };
struct Float32 {};
struct Float64 {};
struct Complex32 {};
struct Complex64 {};
struct Dct4Plan {};
struct LibraryVersion {};
#endif

#include <zrfgen/transforms.hpp>

#include <array>
#include <vector>

using zrfgen::Layout, zrfgen::Scale;

zrfStatus useAll() {
    constexpr Scale scale = Scale::By1;
    std::array<std::complex<float>, 16> x{}, X{};
    const std::array<double, 16> reals{};
    std::array<std::complex<double>, 9> bins{};
    std::vector<double> measured(16), ccs(18);
    zrfComplex32 plain[16] = {};
    zrfgen::orThrow(zrfgen::dftForward(x, X, scale));
    zrfgen::orThrow(zrfgen::dftInverse<16>(plain, plain + 0, scale));
    zrfgen::orThrow(zrfgen::realDftForward<Layout::CCS>(reals, bins, scale));
    zrfgen::orThrow(zrfgen::realDftForward<Layout::CCS>(reals, ccs, scale));
    zrfgen::orThrow(zrfgen::realDftInverse<Layout::CCS, 16>(bins.data(), measured, scale));
    zrfgen::orThrow(zrfgen::multiplySpectra<Layout::CCS>(bins, bins, bins));
    zrfgen::orThrow(zrfgen::addProductOfSpectra<Layout::Perm>(measured, reals, measured));
    zrfgen::orThrow(zrfgen::hartley(std::span(reals), measured, scale));
    zrfgen::orThrow(zrfgen::walshHadamard(reals, measured, scale));
    zrfgen::Dct4<float> dct(256);
    const bool isMirrored = zrfgen::bin(Layout::CCS, bins, 16, -1) == std::conj(bins[1]);
    const zrfLibraryVersion *const version = zrfgenGetLibVersion();
    return version->majorVersion == 8 && isMirrored && dct.length() == 256 ? zrfStatusOk : zrfStatusSizeError;
}

#ifndef ZRF_NO_SHORT_NAMES
Status shortNames(const Float32 *x, Float32 *X, const LibraryVersion *&version, Dct4Plan *&plan) {
    version = zrfgenGetLibVersion();
    if (const Status status = zrfgDCT4InitAlloc_64f(&plan, 8))
        return status;
    return zrfgHartley_8_32f(x, X, zrfScaleNone);
}
#endif
