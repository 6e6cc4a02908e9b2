#include "plan.h"

#include "split.h"
#include "twiddles.h"

#include <new>

namespace zrfgen {
namespace {

template <class Element> class PlanBuilder {
public:
    PlanBuilder(void *block, std::int32_t length) : arena(arenaInit(block)), length(length) {}

    Dct4Plan *build() {
        Dct4Plan *root = take<Dct4Plan>(planType<Element>);
        root->outputStages = listCreate(arena);
        root->inputStages = listCreate(arena);
        root->ownedNodes = listCreate(arena);
        root->length = length;
        root->kind = kindOf(length, directLengths);
        if (root->kind == twoStageKind) {
            const Split split = *splitOf(length);
            root->radix = split.radix;
            addOutputStage(root, split);
            addInputStage(root, split);
            root->work = takeWork();
        }
        return root;
    }

private:
    // A record with nothing but its header.
    template <class Record> Record *take() { return take<Record>(Record::type); }
    template <class Record> Record *take(RecordType type) {
        Record *record = new (arenaTake(arena, sizeof(Record))) Record{};
        record->header.destroy = type;
        record->header.recordBytes = sizeof(Record);
        record->header.build = type;
        record->header.arena = arena;
        return record;
    }

    void *takeWork() { return arenaTake(arena, length * static_cast<std::int32_t>(sizeof(Element))); }

    template <class Record> static void append(ListCell *list, Record *record) {
        listAppend(list, &record->header);
    }

    void addOutputStage(Dct4Plan *root, const Split &split) {
        OutputStageNode *stage = take<OutputStageNode>();
        TwiddleSource *source = take<TwiddleSource>();
        source->rowPitch = 2 * split.radix;
        source->denominator = 8 * length;
        source->rows = split.halfLength;
        source->radix = split.radix;
        source->rowPitch2 = 2 * split.radix;
        append(root->ownedNodes, source);

        stage->children = listCreate(arena);
        stage->stages = listCreate(arena);
        stage->ready = 1;
        stage->radix = split.radix;
        stage->length = length;
        stage->pitch = 2 * split.radix;
        stage->halfLength = split.halfLength;
        stage->length2 = length;
        stage->mirror = 2 * length - 1;
        stage->inputLength = split.partLength;
        stage->source = source;
        append(root->ownedNodes, stage);
        append(root->outputStages, stage);
        addOutputKernel(stage);
    }

    void addOutputKernel(OutputStageNode *stage) {
        OutputKernelNode *kernel = take<OutputKernelNode>();
        BlockedTwiddleView *view = take<BlockedTwiddleView>();
        view->pitch = stage->pitch;
        view->blocks = stage->halfLength / laneCount<Element>;
        view->source = stage->source;
        append(stage->children, view);

        kernel->children = listCreate(arena);
        kernel->radixKind = kindOf(stage->radix, outputRadixes);
        kernel->radix = stage->radix;
        kernel->length = length;
        kernel->pitch = stage->pitch;
        kernel->blockPitch = laneCount<Element> * stage->pitch;
        kernel->blocks = view->blocks;
        kernel->length2 = length;
        kernel->mirror = 2 * length - 1;
        kernel->inputLength = stage->inputLength;
        kernel->view = view;
        append(stage->children, kernel);
        append(stage->stages, kernel);
        kernel->table = arenaTake(arena, outputTableBytes(kernel->blocks, kernel->radix));
        fillOutputTable<Element>(kernel);
    }

    void addInputStage(Dct4Plan *root, const Split &split) {
        InputStageNode *stage = take<InputStageNode>();
        stage->children = listCreate(arena);
        stage->stages = listCreate(arena);
        stage->ready = 1;
        stage->inputLength = split.partLength;
        stage->length = length;
        stage->mirror = 2 * length - 1;
        stage->pitch = 2 * split.radix;
        stage->radix = split.radix;
        stage->length2 = length;
        stage->radix2 = split.radix;
        append(root->ownedNodes, stage);
        append(root->inputStages, stage);
        addInputKernel(stage);
    }

    void addInputKernel(InputStageNode *stage) {
        InputKernelNode *kernel = take<InputKernelNode>();
        kernel->children = listCreate(arena);
        kernel->stages = listCreate(arena);
        kernel->kind = kindOf(stage->inputLength, inputLengths);
        kernel->inputLength = stage->inputLength;
        kernel->length = length;
        kernel->mirror = 2 * length - 1;
        kernel->pitch = stage->pitch;
        kernel->columnBlocks = stage->radix / laneCount<Element>;
        kernel->length2 = length;
        kernel->radix = stage->radix;
        append(stage->children, kernel);
        append(stage->stages, kernel);
        if (kernel->kind == splitKind)
            addLevel(kernel, kernel->inputLength, kernel->pitch, kernel->radix);
    }

    // Adds a level to an InputKernelNode or SplitLeafNode.
    template <class Parent> void addLevel(Parent *parent, std::int32_t transformLength,
                                          std::int32_t inputStride, std::int32_t outputStride) {
        const Split split = *splitOf(transformLength);
        RecursiveSplitNode *level = take<RecursiveSplitNode>();
        level->children = listCreate(arena);
        level->combine = listCreate(arena);
        level->leaf = listCreate(arena);
        level->ready = 1;
        level->transformLength = transformLength;
        level->radix = split.radix;
        level->length = length;
        level->length2 = length;
        level->inputStride = inputStride;
        level->length3 = length;
        level->outputStride = outputStride;
        append(parent->children, level);
        append(parent->stages, level);
        addCombine(level, split);
        addLeaf(level, split);
        level->work = takeWork();
    }

    void addCombine(RecursiveSplitNode *level, const Split &split) {
        SplitAngleSource *angles = take<SplitAngleSource>();
        angles->transformLength = level->transformLength;
        angles->radix = split.radix;
        append(level->children, angles);

        SplitCombineNode *combine = take<SplitCombineNode>();
        combine->children = listCreate(arena);
        combine->radixKind = kindOf(split.radix, combineRadixes);
        combine->radix = split.radix;
        combine->length = length;
        combine->outputStride = level->outputStride;
        combine->blockStride = 2 * split.radix * level->outputStride;
        combine->halfLength = split.halfLength;
        combine->length2 = length;
        combine->halfTransform = level->transformLength / 2;
        combine->lastIndex = level->transformLength - 1;
        combine->outputStride2 = level->outputStride;
        combine->leafLength = split.partLength;
        combine->angles = angles;
        append(level->children, combine);
        append(level->combine, combine);
        combine->table = arenaTake(arena, levelTableBytes(split.halfLength, split.radix));
        fillLevelTable<Element>(combine);
    }

    void addLeaf(RecursiveSplitNode *level, const Split &split) {
        SplitLeafNode *leaf = take<SplitLeafNode>();
        leaf->children = listCreate(arena);
        leaf->stages = listCreate(arena);
        leaf->leafLength = split.partLength;
        leaf->kind = kindOf(split.partLength, inputLengths);
        leaf->length = length;
        leaf->length2 = length;
        leaf->leafInputStride = split.radix * level->inputStride;
        leaf->inputStride = level->inputStride;
        leaf->radix = split.radix;
        leaf->length3 = length;
        leaf->leafOutputStride = split.radix * level->outputStride;
        leaf->outputStride = level->outputStride;
        append(level->children, leaf);
        append(level->leaf, leaf);
        if (leaf->kind == splitKind)
            addLevel(leaf, leaf->leafLength, leaf->leafInputStride, leaf->leafOutputStride);
    }

    PlanArena *arena;
    std::int32_t length;
};

} // namespace

template <class Element> Dct4Plan *buildPlan(void *block, std::int32_t length) {
    return PlanBuilder<Element>(block, length).build();
}

template Dct4Plan *buildPlan<Float32>(void *block, std::int32_t length);
template Dct4Plan *buildPlan<Float64>(void *block, std::int32_t length);

} // namespace zrfgen
