// The same functions in C and by the typed interface. Where that knows the length, the compiler makes of both
// the same object file, to the byte.
#include <zrfgen/transforms.hpp>

#include <array>

using std::array, std::complex, std::span, zrfgen::Scale, zrfgen::Layout;

#ifdef WRITTEN_IN_C
#define EITHER(inC, face) inC
#else
#define EITHER(inC, face) face
#endif

extern "C" {

Status complexForward(const array<complex<float>, 16> &x, array<complex<float>, 16> &X) {
    return EITHER(zrfgDFTFwd_CToC_16_32fc(reinterpret_cast<const Complex32 *>(x.data()),
                                          reinterpret_cast<Complex32 *>(X.data()), zrfScaleNone),
                  zrfgen::dftForward(x, X, Scale::None));
}

Status complexInverse(const Complex64 (&X)[64], Complex64 (&x)[64], Scale scale) {
    return EITHER(zrfgDFTInv_CToC_64_64fc(X, x, static_cast<int32_t>(scale)),
                  zrfgen::dftInverse(X, x, scale));
}

Status realForward(const double *x, double *X) {
    return EITHER(zrfgDFTFwd_RToCCS_7_64f(x, X, zrfScaleFwdByN),
                  (zrfgen::realDftForward<Layout::CCS>(span<const double, 7>(x, 7), span<double, 8>(X, 8),
                                                       Scale::ForwardByN)));
}

Status realInverse(const array<float, 32> &X, array<float, 32> &x) {
    return EITHER(zrfgDFTInv_PermToR_32_32f(X.data(), x.data(), zrfScaleInvByN),
                  zrfgen::realDftInverse<Layout::Perm>(X, x, Scale::InverseByN));
}

Status hartleyInPlace(array<float, 3> &x) {
    return EITHER(zrfgHartley_3_32f(x.data(), x.data(), zrfScaleBySqrtN),
                  zrfgen::hartley(x, x, Scale::BySqrtN));
}

Status walshHadamard(const array<double, 1024> &x, array<double, 1024> &X) {
    return EITHER(zrfgWHT_10_64f(x.data(), X.data(), zrfScaleNone, nullptr),
                  zrfgen::walshHadamard(x, X, Scale::None));
}

} // extern "C"
