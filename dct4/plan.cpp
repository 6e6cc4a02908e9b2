#include "plan.h"

#include "size.h"
#include "twiddles.h"

#include <bit>
#include <new>

namespace zrfgen {
namespace {

std::int32_t binaryLogarithm(std::int32_t radix) {
    return std::countr_zero(static_cast<std::uint32_t>(radix));
}

template <class Element> class PlanBuilder {
public:
    PlanBuilder(void *block, std::int32_t length) : arena(arenaInit(block)), length(length) {}

    Dct4Plan *build() {
        Dct4Plan *root = take<Dct4Plan>();
        root->outputStages = listCreate(arena);
        root->inputStages = listCreate(arena);
        root->ownedNodes = listCreate(arena);
        root->length = length;
        root->kind = rootKind(length);
        if (root->kind == twoStageKind) {
            root->radix = radix = radixOf(length);
            halfLength = length / (2 * radix);
            inputLength = length / radix;
            addOutputStage(root);
            addInputStage(root);
            root->work = takeWork();
        }
        return root;
    }

private:
    // A record with nothing but its header.
    template <class Record> Record *take() {
        Record *record = new (arenaTake(arena, sizeof(Record))) Record{};
        record->header.destroy = Record::type;
        record->header.recordBytes = sizeof(Record);
        record->header.build = Record::type;
        record->header.arena = arena;
        return record;
    }

    void *takeWork() { return arenaTake(arena, length * static_cast<std::int32_t>(sizeof(Element))); }

    static std::int32_t radixOf(std::int32_t transformLength) {
        std::int32_t chosen = 0;
        choosePlanRadix(&chosen, transformLength / 2);
        return chosen;
    }

    template <class Record> static void append(ListCell *list, Record *record) {
        listAppend(list, &record->header);
    }

    void addOutputStage(Dct4Plan *root) {
        OutputStageNode *stage = take<OutputStageNode>();
        TwiddleSource *source = take<TwiddleSource>();
        source->rowPitch = 2 * radix;
        source->denominator = 8 * length;
        source->rows = halfLength;
        source->radix = radix;
        source->rowPitch2 = 2 * radix;
        append(root->ownedNodes, source);

        stage->children = listCreate(arena);
        stage->stages = listCreate(arena);
        stage->ready = 1;
        stage->radix = radix;
        stage->length = length;
        stage->pitch = 2 * radix;
        stage->halfLength = halfLength;
        stage->length2 = length;
        stage->mirror = 2 * length - 1;
        stage->inputLength = inputLength;
        stage->source = source;
        append(root->ownedNodes, stage);
        append(root->outputStages, stage);
        addOutputKernel(stage);
    }

    void addOutputKernel(OutputStageNode *stage) {
        OutputKernelNode *kernel = take<OutputKernelNode>();
        BlockedTwiddleView *view = take<BlockedTwiddleView>();
        view->pitch = 2 * radix;
        view->blocks = halfLength / laneCount<Element>;
        view->source = stage->source;
        append(stage->children, view);

        kernel->children = listCreate(arena);
        kernel->radixKind = binaryLogarithm(radix) + 1;
        kernel->radix = radix;
        kernel->length = length;
        kernel->pitch = 2 * radix;
        kernel->blockPitch = laneCount<Element> * 2 * radix;
        kernel->blocks = view->blocks;
        kernel->length2 = length;
        kernel->mirror = 2 * length - 1;
        kernel->inputLength = inputLength;
        kernel->view = view;
        append(stage->children, kernel);
        append(stage->stages, kernel);
        kernel->table = arenaTake(arena, outputTableBytes(kernel->blocks, radix));
        fillOutputTable<Element>(kernel);
    }

    void addInputStage(Dct4Plan *root) {
        InputStageNode *stage = take<InputStageNode>();
        stage->children = listCreate(arena);
        stage->stages = listCreate(arena);
        stage->ready = 1;
        stage->inputLength = inputLength;
        stage->length = length;
        stage->mirror = 2 * length - 1;
        stage->pitch = 2 * radix;
        stage->radix = radix;
        stage->length2 = length;
        stage->radix2 = radix;
        append(root->ownedNodes, stage);
        append(root->inputStages, stage);
        addInputKernel(stage);
    }

    void addInputKernel(InputStageNode *stage) {
        InputKernelNode *kernel = take<InputKernelNode>();
        kernel->children = listCreate(arena);
        kernel->stages = listCreate(arena);
        kernel->kind = inputKind(inputLength);
        kernel->inputLength = inputLength;
        kernel->length = length;
        kernel->mirror = 2 * length - 1;
        kernel->pitch = 2 * radix;
        kernel->columnBlocks = radix / laneCount<Element>;
        kernel->length2 = length;
        kernel->radix = radix;
        append(stage->children, kernel);
        append(stage->stages, kernel);
        if (kernel->kind == splitKind)
            addSplit(kernel, inputLength, 2 * radix, radix);
    }

    // Adds a level to an InputKernelNode or SplitLeafNode.
    template <class Parent> void addSplit(Parent *parent, std::int32_t transformLength,
                                          std::int32_t inputStride, std::int32_t outputStride) {
        RecursiveSplitNode *split = take<RecursiveSplitNode>();
        split->children = listCreate(arena);
        split->combine = listCreate(arena);
        split->leaf = listCreate(arena);
        split->ready = 1;
        split->transformLength = transformLength;
        split->radix = radixOf(transformLength);
        split->length = length;
        split->length2 = length;
        split->inputStride = inputStride;
        split->length3 = length;
        split->outputStride = outputStride;
        append(parent->children, split);
        append(parent->stages, split);
        addSplitCombine(split);
        addSplitLeaf(split);
        split->work = takeWork();
    }

    void addSplitCombine(RecursiveSplitNode *split) {
        SplitAngleSource *angles = take<SplitAngleSource>();
        angles->transformLength = split->transformLength;
        angles->radix = split->radix;
        append(split->children, angles);

        SplitCombineNode *combine = take<SplitCombineNode>();
        combine->children = listCreate(arena);
        combine->radixKind = binaryLogarithm(split->radix);
        combine->radix = split->radix;
        combine->length = length;
        combine->outputStride = split->outputStride;
        combine->blockStride = 2 * split->radix * split->outputStride;
        combine->halfLength = split->transformLength / (2 * split->radix);
        combine->length2 = length;
        combine->halfTransform = split->transformLength / 2;
        combine->lastIndex = split->transformLength - 1;
        combine->outputStride2 = split->outputStride;
        combine->leafLength = split->transformLength / split->radix;
        combine->angles = angles;
        append(split->children, combine);
        append(split->combine, combine);
        combine->table = arenaTake(arena, levelTableBytes(combine->halfLength, combine->radix));
        fillLevelTable<Element>(combine);
    }

    void addSplitLeaf(RecursiveSplitNode *split) {
        SplitLeafNode *leaf = take<SplitLeafNode>();
        leaf->children = listCreate(arena);
        leaf->stages = listCreate(arena);
        leaf->leafLength = split->transformLength / split->radix;
        leaf->kind = inputKind(leaf->leafLength);
        leaf->length = length;
        leaf->length2 = length;
        leaf->leafInputStride = split->radix * split->inputStride;
        leaf->inputStride = split->inputStride;
        leaf->radix = split->radix;
        leaf->length3 = length;
        leaf->leafOutputStride = split->radix * split->outputStride;
        leaf->outputStride = split->outputStride;
        append(split->children, leaf);
        append(split->leaf, leaf);
        if (leaf->kind == splitKind)
            addSplit(leaf, leaf->leafLength, leaf->leafInputStride, leaf->leafOutputStride);
    }

    PlanArena *arena;
    std::int32_t length;
    // Of plans in two stages.
    std::int32_t radix = 0, halfLength = 0, inputLength = 0;
};

} // namespace

template <class Element> Dct4Plan *buildPlan(void *block, std::int32_t length) {
    return PlanBuilder<Element>(block, length).build();
}

template Dct4Plan *buildPlan<Float32>(void *block, std::int32_t length);
template Dct4Plan *buildPlan<Float64>(void *block, std::int32_t length);

} // namespace zrfgen
