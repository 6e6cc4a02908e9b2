// The entries of the DFTs and the Hartley transform.
#include "spectrum_layout.h"
#include "transform_all.h"

#include <zrfgen/many.h>

#include <optional>

namespace zrfgen {

namespace {

struct Family {
    KernelDirection direction;
    std::optional<SpectrumLayout> source = {}, destination = {}; // of real sequences' spectra
};

constexpr Family DFTFwd_CToC{KernelDirection::Forward}, DFTInv_CToC{KernelDirection::Inverse},
    Hartley{KernelDirection::Both}, DFTFwd_RToCCS{KernelDirection::Forward, {}, SpectrumLayout::CCS},
    DFTFwd_RToPack{KernelDirection::Forward, {}, SpectrumLayout::Pack},
    DFTFwd_RToPerm{KernelDirection::Forward, {}, SpectrumLayout::Perm},
    DFTInv_CCSToR{KernelDirection::Inverse, SpectrumLayout::CCS},
    DFTInv_PackToR{KernelDirection::Inverse, SpectrumLayout::Pack},
    DFTInv_PermToR{KernelDirection::Inverse, SpectrumLayout::Perm};

constexpr Contents spectrum(SpectrumLayout layout, int n) {
    if (layout == SpectrumLayout::CCS)
        return {n + 2 - n % 2, 0, 1, n % 2 == 0 ? n + 1 : 1};
    if (layout == SpectrumLayout::Perm && n % 2 == 0)
        return {n, 0, n};
    return {n, 1, 0};
}

constexpr Contents contents(std::optional<SpectrumLayout> layout, int N) {
    return layout ? spectrum(*layout, N) : Contents{N};
}

// The transforms of one length, many or one.
template <class Element> struct OfLength {
    const ManyKernel *kernel;
    Status(ZRF_CALL *single)(const Element *, Element *, std::int32_t flag);
};

template <class Element> Status runSized(const Family &family, const OfLength<Element> *lengths,
                                         const Element *src, Element *dst, std::int32_t N, std::int32_t flag,
                                         std::ptrdiff_t count, Strides from, Strides to) {
    if (N < zrfShortestLength || N > zrfLongestLength || count < 0)
        return zrfStatusSizeError;
    if (count == 0)
        return zrfStatusOk;
    if (src == nullptr || dst == nullptr)
        return zrfStatusNullPointer;
    const auto [kernel, single] = lengths[N - zrfShortestLength];
    alignas(16) unsigned char spare[(zrfLongestLength + 2) * sizeof(Element)];
    return transformAll<Element>(
        {src, from, contents(family.source, N), dst, to, contents(family.destination, N), count}, *kernel,
        kernel->gain, family.direction, flag, spare,
        [single = single, flag](const Element *row, Element *result) { single(row, result, flag); });
}

} // namespace

#define DECLARE_KERNEL(N, family, suffix, Element) extern const ManyKernel many_##family##_##N##_##suffix;
#define OF_LENGTH(N, family, suffix) {&many_##family##_##N##_##suffix, zrfg##family##_##N##_##suffix},

#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    ZRF_FOR_EACH_LENGTH(DECLARE_KERNEL, family, suffix, Element)                                             \
    static constexpr OfLength<Element> family##_##suffix[] = {                                               \
        ZRF_FOR_EACH_LENGTH(OF_LENGTH, family, suffix)};                                                     \
    extern "C" [[gnu::visibility("default")]] Status ZRF_CALL zrfm##family##_##suffix(                       \
        const Element *src, Element *dst, std::int32_t N, std::int32_t flag, std::ptrdiff_t count,           \
        std::ptrdiff_t srcStep, std::ptrdiff_t srcDistance, std::ptrdiff_t dstStep,                          \
        std::ptrdiff_t dstDistance) noexcept {                                                               \
        return runSized(family, family##_##suffix, src, dst, N, flag, count, {srcStep, srcDistance},         \
                        {dstStep, dstDistance});                                                             \
    }
#define ZRF_WHT_FAMILY(suffix, Element)
#define ZRF_DCT4_FAMILY(suffix, Element)
#define ZRF_VERSION_QUERY(name)
#include <zrfgen/families.inc>

} // namespace zrfgen
