#include "size.h"

#include "records.h"
#include "split.h"

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

// Some records are counted twice, and some cells stand for values that find room in a list's head.
template <class Element> std::int32_t planBytes(std::int32_t length) {
    constexpr Bytes start = 2 * planAlign32(1);
    const Bytes rootRecord = charge<Dct4Plan> + cells(3);
    if (kindOf(length, directLengths) != twoStageKind)
        return static_cast<std::int32_t>(rootRecord + start);

    const std::optional<Split> root = splitOf(length);
    constexpr std::int32_t lanes = laneCount<Element>;
    if (!root || root->halfLength % lanes != 0 || root->radix % lanes != 0)
        return zrfStatusSizeError;

    const auto aligned = [](std::int32_t bytes) { return static_cast<Bytes>(planAlign32(bytes)); };
    const Bytes outputPart = aligned(outputTableBytes(root->halfLength / lanes, root->radix)) +
                             charge<OutputKernelNode> + cells(1) + charge<OutputStageNode> + cells(4) +
                             charge<BlockedTwiddleView> + cells(1);
    if (isNegative(outputPart)) // else the whole sum of 2^28 or 2^29 would wrap around to a positive one
        return zrfStatusSizeError;

    const Bytes work =
        aligned(static_cast<std::int32_t>(static_cast<Bytes>(length) * static_cast<Bytes>(sizeof(Element))));
    Bytes inputPart = charge<InputStageNode> + cells(4);
    Bytes head = charge<InputKernelNode>;
    std::int32_t inputLength = root->partLength;
    while (kindOf(inputLength, inputLengths) == splitKind) {
        const std::optional<Split> level = splitOf(inputLength);
        if (!level)
            return zrfStatusSizeError;
        inputPart += aligned(levelTableBytes(level->halfLength, level->radix)) + charge<SplitCombineNode> +
                     cells(1) + work + charge<RecursiveSplitNode> + cells(5) + charge<SplitAngleSource> +
                     cells(3) + head + cells(4);
        head = charge<SplitLeafNode>;
        inputLength = level->partLength;
    }
    inputPart += head + cells(2);

    const Bytes rootPart = work + rootRecord + cells(2) + charge<TwiddleSource> + cells(3);
    const Bytes sum = outputPart + inputPart + rootPart;
    return isNegative(sum) ? zrfStatusSizeError : static_cast<std::int32_t>(sum + start);
}

template std::int32_t planBytes<Float32>(std::int32_t length);
template std::int32_t planBytes<Float64>(std::int32_t length);

} // namespace zrfgen
