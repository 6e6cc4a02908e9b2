// Every export with its address, linked in.
#pragma once

#include <zrfgen/transforms.h>

#include <algorithm>
#include <string>
#include <vector>

enum class Entry { FixedSize, AnySize, WhtOrder, WhtAnyOrder, SizeQuery, Dct4, Version };

struct Export {
    std::string_view name, family;
    Entry entry;
    bool isSingle;
    int32_t size; // the length or order, 0 where it is an argument
    void (*address)();

    // The types of the exports, with arrays that may lie at any address.
    using FixedSize = Status(ZRF_CALL *)(const void *, void *, int32_t flag);
    using AnySize = Status(ZRF_CALL *)(const void *, void *, int32_t N, int32_t flag);
    using WhtOrder = Status(ZRF_CALL *)(const void *, void *, int32_t flag, void *buffer);
    using WhtAnyOrder = Status(ZRF_CALL *)(const void *, void *, int32_t order, int32_t flag, void *buffer);
    using SizeQuery = Status(ZRF_CALL *)(int32_t size, int32_t *bytes);
    using Dct4Init = Status(ZRF_CALL *)(Dct4Plan **, int32_t length, void *memory);
    using Dct4InitAlloc = Status(ZRF_CALL *)(Dct4Plan **, int32_t length);
    using Dct4 = Status(ZRF_CALL *)(const void *, void *, const Dct4Plan *);
    using Dct4Free = Status(ZRF_CALL *)(Dct4Plan *);
    template <class Function> Function as() const { return reinterpret_cast<Function>(address); }

    bool isWht() const { return family == "WHT"; }
    bool isComplex() const { return family.ends_with("CToC"); }
    bool takesSize() const { return entry == Entry::AnySize || entry == Entry::WhtAnyOrder; }
    int leastSize() const { return size != 0 ? size : isWht() ? 1 : zrfShortestLength; }
    int mostSize() const { return size != 0 ? size : isWht() ? zrfHighestOrder : zrfLongestLength; }
    bool isOfAllocatedPlan() const {
        return name.find("Alloc") != name.npos || name.find("Free") != name.npos;
    }
    std::size_t numberBytes() const { return isSingle ? sizeof(Float32) : sizeof(Float64); }

    // How many numbers a DFT, Hartley or Walsh-Hadamard transform computes with, and how many its arrays
    // have; a complex element is two.
    int numbers(int n) const { return isWht() ? 1 << n : isComplex() ? 2 * n : n; }
    std::size_t srcCount(int n) const { return family == "DFTInv_CCSToR" ? n / 2 * 2 + 2 : numbers(n); }
    std::size_t dstCount(int n) const { return family == "DFTFwd_RToCCS" ? n / 2 * 2 + 2 : numbers(n); }

    // Where a number stands in its array. Half a spectrum is counted as R[0], R[1], I[1], R[2] and so on.
    int srcPosition(int n, int i) const {
        return position(family == "DFTInv_CCSToR", family == "DFTInv_PermToR", n, i);
    }
    int dstPosition(int n, int i) const {
        return position(family == "DFTFwd_RToCCS", family == "DFTFwd_RToPerm", n, i);
    }

    // Such a transform. Entries of one length or order ignore the size.
    Status transform(const void *src, void *dst, int32_t n, int32_t flag, void *buffer) const {
        switch (entry) {
        case Entry::FixedSize:
            return as<FixedSize>()(src, dst, flag);
        case Entry::AnySize:
            return as<AnySize>()(src, dst, n, flag);
        case Entry::WhtOrder:
            return as<WhtOrder>()(src, dst, flag, buffer);
        default:
            return as<WhtAnyOrder>()(src, dst, n, flag, buffer);
        }
    }

private:
    static int position(bool isCcs, bool isPerm, int n, int i) {
        if (i == 0 || !(isCcs || (isPerm && n % 2 == 0)))
            return i;
        return isPerm && i == n - 1 ? 1 : i + 1;
    }
};

// In export order: by the bytes of the names.
const std::vector<Export> &allExports();

// The file of the library that answers: the loader chooses among several.
std::string libraryFile();

// The export of a name that there is.
inline const Export &exportNamed(std::string_view name) {
    return *std::ranges::lower_bound(allExports(), name, {}, &Export::name);
}

// The DFT or Hartley transform of a length.
inline const Export &transformOf(const std::string &family, int length, bool isSingle) {
    return exportNamed("zrfg" + family + "_" + std::to_string(length) + (isSingle ? "_32f" : "_64f") +
                       (family.ends_with("CToC") ? "c" : ""));
}

inline int32_t whtBufferBytes(int32_t order, bool isSingle) {
    int32_t bytes = -1;
    (isSingle ? zrfgWHTGetBufferSize_32f : zrfgWHTGetBufferSize_64f)(order, &bytes);
    return bytes;
}

// The DCT-IV of an element type.
struct Dct4Functions {
    Export::SizeQuery getSize;
    Export::Dct4Init init;
    Export::Dct4InitAlloc initAlloc;
    Export::Dct4 transform;
    Export::Dct4Free release;

    explicit Dct4Functions(bool isSingle) {
        const auto find = [isSingle]<class Function>(const std::string &name, Function &function) {
            function = exportNamed("zrfgDCT4" + name + (isSingle ? "_32f" : "_64f")).as<Function>();
        };
        find("GetSize", getSize);
        find("Init", init);
        find("InitAlloc", initAlloc);
        find("", transform);
        find("Free", release);
    }
};
