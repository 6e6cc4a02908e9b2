#include "release.h"

#include "size.h"

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

template <class Stage> void destroyStage(Stage *stage, bool hasBuffer) {
    if (hasBuffer)
        arenaGiveBack(stage->header.arena, stage->stageBuffer, 0);
    releaseReferences(stage->stages);
    releaseOwned(stage->children);
}

void destroy(OutputStageNode *stage) {
    destroyStage(stage, stage->ready == 1);
}

void destroy(InputStageNode *stage) {
    destroyStage(stage, stage->ready == 1);
}

void destroy(OutputKernelNode *kernel) {
    arenaGiveBack(kernel->header.arena, kernel->table, outputTableBytes(kernel->blocks, kernel->radix));
    releaseOwned(kernel->children);
}

void destroy(InputKernelNode *kernel) {
    destroyStage(kernel, kernel->kind >= 1 && kernel->kind <= splitKind);
}

void destroy(RecursiveSplitNode *split) {
    if (split->ready == 1)
        arenaGiveBack(split->header.arena, split->work, split->length3 * 4);
    releaseReferences(split->combine);
    releaseReferences(split->leaf);
    releaseOwned(split->children);
}

void destroy(SplitCombineNode *combine) {
    arenaGiveBack(combine->header.arena, combine->table,
                  levelTableBytes(combine->halfLength, combine->radix));
    releaseOwned(combine->children);
}

void destroy(SplitLeafNode *leaf) {
    destroyStage(leaf, leaf->kind >= 1 && leaf->kind <= splitKind);
}

} // namespace

void destroyRecord(NodeHeader *record) {
    switch (record->destroy) {
    case RecordType::Dct4Plan:
    case RecordType::TwiddleSource:
    case RecordType::BlockedTwiddleView:
    case RecordType::SplitAngleSource:
        break;
    case RecordType::OutputStageNode:
        return destroy(recordCast<OutputStageNode>(record));
    case RecordType::OutputKernelNode:
        return destroy(recordCast<OutputKernelNode>(record));
    case RecordType::InputStageNode:
        return destroy(recordCast<InputStageNode>(record));
    case RecordType::InputKernelNode:
        return destroy(recordCast<InputKernelNode>(record));
    case RecordType::RecursiveSplitNode:
        return destroy(recordCast<RecursiveSplitNode>(record));
    case RecordType::SplitCombineNode:
        return destroy(recordCast<SplitCombineNode>(record));
    case RecordType::SplitLeafNode:
        return destroy(recordCast<SplitLeafNode>(record));
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
