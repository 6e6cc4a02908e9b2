#include "release.h"

#include "split.h"

namespace zrfgen {
namespace {

// The values of such a list belong to another.
void releaseReferences(ListCell *head) {
    listReleaseCells(head);
    arenaGiveBack(head->arena, head, sizeof(ListCell));
}

void releaseOwned(ListCell *head) {
    listDestroyValues(head);
    releaseReferences(head);
}

// A stage or a kernel that refers to its children. There is no stage buffer to give back.
template <class Stage> void destroyStage(Stage *stage) {
    releaseReferences(stage->stages);
    releaseOwned(stage->children);
}

void destroyOutputKernel(OutputKernelNode *kernel) {
    arenaGiveBack(kernel->header.arena, kernel->table, outputTableBytes(kernel->blocks, kernel->radix));
    releaseOwned(kernel->children);
}

// Charges the work as Float32 in either element type: after a release, no one asks the cursor.
void destroySplit(RecursiveSplitNode *split) {
    arenaGiveBack(split->header.arena, split->work, split->length3 * 4);
    releaseReferences(split->combine);
    releaseReferences(split->leaf);
    releaseOwned(split->children);
}

void destroySplitCombine(SplitCombineNode *combine) {
    arenaGiveBack(combine->header.arena, combine->table,
                  levelTableBytes(combine->halfLength, combine->radix));
    releaseOwned(combine->children);
}

} // namespace

void destroyRecord(NodeHeader *record) {
    switch (record->destroy) {
    case RecordType::Dct4Plan32f:
    case RecordType::Dct4Plan64f:
    case RecordType::TwiddleSource:
    case RecordType::BlockedTwiddleView:
    case RecordType::SplitAngleSource:
        return;
    case RecordType::OutputStageNode:
        return destroyStage(recordCast<OutputStageNode>(record));
    case RecordType::OutputKernelNode:
        return destroyOutputKernel(recordCast<OutputKernelNode>(record));
    case RecordType::InputStageNode:
        return destroyStage(recordCast<InputStageNode>(record));
    case RecordType::InputKernelNode:
        return destroyStage(recordCast<InputKernelNode>(record));
    case RecordType::RecursiveSplitNode:
        return destroySplit(recordCast<RecursiveSplitNode>(record));
    case RecordType::SplitCombineNode:
        return destroySplitCombine(recordCast<SplitCombineNode>(record));
    case RecordType::SplitLeafNode:
        return destroyStage(recordCast<SplitLeafNode>(record));
    }
}

template <class Element> void releasePlan(Dct4Plan *plan) {
    PlanArena *arena = plan->header.arena;
    const std::int32_t workBytes = plan->length * static_cast<std::int32_t>(sizeof(Element));
    arenaGiveBack(arena, plan->work, plan->kind == twoStageKind ? workBytes : 0);
    releaseReferences(plan->outputStages);
    releaseReferences(plan->inputStages);
    releaseOwned(plan->ownedNodes);
    arenaGiveBack(arena, plan, sizeof(Dct4Plan));
}

template void releasePlan<Float32>(Dct4Plan *plan);
template void releasePlan<Float64>(Dct4Plan *plan);

} // namespace zrfgen
