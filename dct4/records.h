// The records of a plan: a small tree in one block, which the builder lays down and the transform reads.
// Every field is a word of 32 bits, and the size of a record is what the arena charges for it. This layout is
// published, with fields that nothing here reads and some that say the same: all of them are filled.
//
// Names: N is the length of the transform, r the root's radix, M = N / (2 r), n = N / r; a level is one
// recursive split of an input transform, with a radix r2 of its own. laneCount values share a vector.
#pragma once

#include "list.h"

#include <zrfgen/transforms.h>

namespace zrfgen {

// A record's type stands for its operations: function addresses would not fit a word on every machine. The
// root's are those of an element type. A plan is known by them, so they are numbers that other memory hardly
// holds.
enum class RecordType : std::int32_t {
    Dct4Plan32f = 0x44433332,
    Dct4Plan64f = 0x44433634,
    TwiddleSource = 1,
    BlockedTwiddleView,
    OutputStageNode,
    OutputKernelNode,
    InputStageNode,
    InputKernelNode,
    RecursiveSplitNode,
    SplitAngleSource,
    SplitCombineNode,
    SplitLeafNode
};

// Opens every record.
struct NodeHeader {
    RecordType destroy;       // whose operation gives back what the record owns, apart from itself
    std::int32_t recordBytes; // the record's charge
    RecordType build;         // whose operation fills the subtree, or yields one value of a table
    Ref<PlanArena> arena;
};

// The cosines and sines of theta(q, c) = pi (2q+1) (2c+1) / (4N).
struct TwiddleSource {
    static constexpr RecordType type = RecordType::TwiddleSource;

    NodeHeader header;
    std::int32_t rowPitch;    // 2 r
    std::int32_t denominator; // 8 N
    std::int32_t rows;        // M
    std::int32_t radix;
    std::int32_t rowPitch2; // 2 r
};

// The same, by blocks of laneCount rows.
struct BlockedTwiddleView {
    static constexpr RecordType type = RecordType::BlockedTwiddleView;

    NodeHeader header;
    std::int32_t pitch;  // 2 r
    std::int32_t blocks; // M / laneCount
    Ref<TwiddleSource> source;
};

struct OutputStageNode {
    static constexpr RecordType type = RecordType::OutputStageNode;

    NodeHeader header;
    PlanList children; // BlockedTwiddleView, OutputKernelNode
    PlanList stages;   // OutputKernelNode
    Ref<void> stageBuffer;
    std::int32_t ready; // 1 if M is a multiple of laneCount
    std::int32_t radix;
    std::int32_t length;
    std::int32_t pitch;      // 2 r
    std::int32_t halfLength; // M
    std::int32_t length2;
    std::int32_t mirror;      // 2 N - 1
    std::int32_t inputLength; // n
    Ref<TwiddleSource> source;
};

struct OutputKernelNode {
    static constexpr RecordType type = RecordType::OutputKernelNode;

    NodeHeader header;
    PlanList children;      // none
    Ref<void> table;        // see fillOutputTable
    std::int32_t radixKind; // 1 to 6 for r = 1 to 32
    std::int32_t radix;
    std::int32_t length;
    std::int32_t pitch;      // 2 r: from row to row in the work table
    std::int32_t blockPitch; // from block to block
    std::int32_t blocks;     // M / laneCount
    std::int32_t length2;
    std::int32_t mirror;      // 2 N - 1
    std::int32_t inputLength; // n: from output to output of one kernel call
    Ref<BlockedTwiddleView> view;
};

struct InputStageNode {
    static constexpr RecordType type = RecordType::InputStageNode;

    NodeHeader header;
    PlanList children; // InputKernelNode
    PlanList stages;   // the same
    Ref<void> stageBuffer;
    std::int32_t ready;       // 1 if r is a multiple of laneCount
    std::int32_t inputLength; // n
    std::int32_t length;
    std::int32_t mirror; // 2 N - 1
    std::int32_t pitch;  // 2 r
    std::int32_t radix;
    std::int32_t length2;
    std::int32_t radix2;
};

struct InputKernelNode {
    static constexpr RecordType type = RecordType::InputKernelNode;

    NodeHeader header;
    PlanList children; // RecursiveSplitNode if there is no kernel of length n
    PlanList stages;   // the same
    Ref<void> stageBuffer;
    std::int32_t kind;        // of n
    std::int32_t inputLength; // n
    std::int32_t length;
    std::int32_t mirror;       // 2 N - 1
    std::int32_t pitch;        // 2 r: the input's stride
    std::int32_t columnBlocks; // r / laneCount
    std::int32_t length2;
    std::int32_t radix; // the output's stride
};

struct RecursiveSplitNode {
    static constexpr RecordType type = RecordType::RecursiveSplitNode;

    NodeHeader header;
    PlanList children; // SplitAngleSource, SplitCombineNode, SplitLeafNode
    PlanList combine;  // SplitCombineNode
    PlanList leaf;     // SplitLeafNode
    Ref<void> work;    // length3 elements
    std::int32_t ready;
    std::int32_t transformLength; // the level's
    std::int32_t radix;           // r2
    std::int32_t length;
    std::int32_t length2;
    std::int32_t inputStride; // the level's, 2 r at first
    std::int32_t length3;
    std::int32_t outputStride; // the level's, r at first
};

// The angles (i + 1/2) / (transformLength / radix).
struct SplitAngleSource {
    static constexpr RecordType type = RecordType::SplitAngleSource;

    NodeHeader header;
    std::int32_t transformLength; // the level's
    std::int32_t radix;           // r2
};

struct SplitCombineNode {
    static constexpr RecordType type = RecordType::SplitCombineNode;

    NodeHeader header;
    PlanList children;      // none
    Ref<void> table;        // see fillLevelTable
    std::int32_t radixKind; // 1 to 5 for r2 = 2 to 32
    std::int32_t radix;     // r2
    std::int32_t length;
    std::int32_t outputStride; // the level's
    std::int32_t blockStride;  // 2 r2 times that
    std::int32_t halfLength;   // the level's transform length / (2 r2): the iterations
    std::int32_t length2;
    std::int32_t halfTransform; // half of the level's transform length
    std::int32_t lastIndex;     // the level's transform length - 1
    std::int32_t outputStride2;
    std::int32_t leafLength; // the level's transform length / r2
    Ref<SplitAngleSource> angles;
};

struct SplitLeafNode {
    static constexpr RecordType type = RecordType::SplitLeafNode;

    NodeHeader header;
    PlanList children; // the next RecursiveSplitNode if there is no kernel of leafLength
    PlanList stages;   // the same
    Ref<void> stageBuffer;
    std::int32_t kind;       // of leafLength
    std::int32_t leafLength; // the level's transform length / r2
    std::int32_t length;
    std::int32_t length2;
    std::int32_t leafInputStride; // r2 times the level's
    std::int32_t inputStride;     // the level's
    std::int32_t radix;           // r2
    std::int32_t length3;
    std::int32_t leafOutputStride; // r2 times the level's
    std::int32_t outputStride;     // the level's
};

} // namespace zrfgen

// The root, which callers hold a pointer to. Kinds below twoStageKind have neither tables nor work.
struct zrfDct4Plan {
    zrfgen::NodeHeader header;
    zrfgen::PlanList ownedNodes;   // TwiddleSource, OutputStageNode, InputStageNode
    zrfgen::PlanList outputStages; // OutputStageNode
    zrfgen::PlanList inputStages;  // InputStageNode
    zrfgen::Ref<void> work;        // `length` elements
    std::int32_t kind;
    std::int32_t radix; // r
    std::int32_t length;
};

namespace zrfgen {

static_assert(sizeof(Dct4Plan) == 44 && sizeof(TwiddleSource) == 36 && sizeof(BlockedTwiddleView) == 28 &&
              sizeof(OutputStageNode) == 64 && sizeof(OutputKernelNode) == 64 &&
              sizeof(InputStageNode) == 60 && sizeof(InputKernelNode) == 60 &&
              sizeof(RecursiveSplitNode) == 64 && sizeof(SplitAngleSource) == 24 &&
              sizeof(SplitCombineNode) == 72 && sizeof(SplitLeafNode) == 68);

template <class Element> constexpr RecordType planType = sizeof(Element) == sizeof(Float32)
                                                             ? RecordType::Dct4Plan32f
                                                             : RecordType::Dct4Plan64f;

template <class Element> bool isPlanOf(const Dct4Plan *plan) {
    return plan->header.build == planType<Element>;
}

// A list's value as the record that it heads.
template <class Record> Record *recordCast(NodeHeader *header) {
    return reinterpret_cast<Record *>(header);
}

} // namespace zrfgen
