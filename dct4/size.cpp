#include "size.h"

namespace zrfgen {
namespace {

// Sums wrap around like signed ones of 32 bits.
using Bytes = std::uint32_t;

template <class Record> constexpr Bytes charge = planAlign32(sizeof(Record));

constexpr Bytes cells(std::int32_t count) {
    return static_cast<Bytes>(planCellBytes(count));
}

bool isNegative(Bytes sum) {
    return static_cast<std::int32_t>(sum) < 0;
}

} // namespace

Status choosePlanRadix(std::int32_t *radixOut, std::int32_t value) {
    std::int32_t radix = value >= 512   ? 32
                         : value >= 128 ? 16
                         : value >= 32  ? 8
                         : value >= 16  ? 4
                         : value >= 4   ? 2
                                        : 1;
    while (value % radix != 0)
        radix /= 2;
    if (radix == 1)
        return zrfStatusSizeError;
    *radixOut = radix;
    return zrfStatusOk;
}

// Some records are counted twice, and some cells stand for values that find room in a list's head.
template <class Element> std::int32_t planBytes(std::int32_t length) {
    constexpr Bytes start = 2 * planAlign32(1);
    const Bytes rootRecord = charge<Dct4Plan> + cells(3);
    if (rootKind(length) != twoStageKind)
        return static_cast<std::int32_t>(rootRecord + start);

    std::int32_t radix;
    if (choosePlanRadix(&radix, length / 2) != zrfStatusOk)
        return zrfStatusSizeError;
    const std::int32_t halfLength = length / (2 * radix), lanes = laneCount<Element>;
    if (halfLength % lanes != 0 || radix % lanes != 0)
        return zrfStatusSizeError;

    const auto aligned = [](std::int32_t bytes) { return static_cast<Bytes>(planAlign32(bytes)); };
    const Bytes outputPart = aligned(outputTableBytes(halfLength / lanes, radix)) + charge<OutputKernelNode> +
                             cells(1) + charge<OutputStageNode> + cells(4) + charge<BlockedTwiddleView> +
                             cells(1);
    if (isNegative(outputPart)) // else the whole sum of 2^28 or 2^29 would wrap around to a positive one
        return zrfStatusSizeError;

    const Bytes work =
        aligned(static_cast<std::int32_t>(static_cast<Bytes>(length) * static_cast<Bytes>(sizeof(Element))));
    Bytes inputPart = charge<InputStageNode> + cells(4);
    Bytes head = charge<InputKernelNode>;
    std::int32_t inputLength = length / radix;
    while (inputKind(inputLength) == splitKind) {
        if (choosePlanRadix(&radix, inputLength / 2) != zrfStatusOk)
            return zrfStatusSizeError;
        inputPart += aligned(levelTableBytes(inputLength / (2 * radix), radix)) + charge<SplitCombineNode> +
                     cells(1) + work + charge<RecursiveSplitNode> + cells(5) + charge<SplitAngleSource> +
                     cells(3) + head + cells(4);
        head = charge<SplitLeafNode>;
        inputLength /= radix;
    }
    inputPart += head + cells(2);

    const Bytes rootPart = work + rootRecord + cells(2) + charge<TwiddleSource> + cells(3);
    const Bytes sum = outputPart + inputPart + rootPart;
    return isNegative(sum) ? zrfStatusSizeError : static_cast<std::int32_t>(sum + start);
}

template std::int32_t planBytes<Float32>(std::int32_t length);
template std::int32_t planBytes<Float64>(std::int32_t length);

} // namespace zrfgen
