// The inside of a plan of the DCT-IV: arena, lists, records and tables. Compiles the sources of dct4/.
#include "list.h"
#include "plan.h"
#include "release.h"
#include "size.h"
#include "split.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <numbers>
#include <vector>

// The plans' sine and cosine, counted.
static int trigonometricCalls = 0;

static double callNext(const char *name, double x) {
    ++trigonometricCalls;
    return reinterpret_cast<double (*)(double)>(dlsym(RTLD_NEXT, name))(x);
}

extern "C" double sin(double x) noexcept {
    return callNext("sin", x);
}

extern "C" double cos(double x) noexcept {
    return callNext("cos", x);
}

namespace zrfgen {
namespace {

std::ptrdiff_t distance(const void *from, const void *to) {
    return static_cast<const unsigned char *>(to) - static_cast<const unsigned char *>(from);
}

TEST(Dct4Arena, ChargesWholeUnits) {
    EXPECT_EQ(planAlign32(0), 0);
    EXPECT_EQ(planAlign32(1), 32);
    EXPECT_EQ(planAlign32(32), 32);
    EXPECT_EQ(planAlign32(33), 64);
    EXPECT_EQ(planAlign32(INT32_MAX), INT32_MIN);
    EXPECT_EQ(planCellBytes(3), 96);
}

TEST(Dct4Arena, PlacesRecordsOnBoundariesInAnyBlock) {
    alignas(64) unsigned char memory[512];
    for (std::ptrdiff_t offset = 0; offset < 64; ++offset) {
        SCOPED_TRACE(offset);
        unsigned char *block = memory + offset;
        std::memset(memory, 0x5a, sizeof memory);
        PlanArena *arena = arenaInit(block);
        EXPECT_EQ(distance(block, arena), 0);
        void *first = arenaTake(arena, 44);
        EXPECT_EQ(distance(block, first), 64 - offset % 32);
        EXPECT_EQ(distance(first, arenaTake(arena, 32)), 64);
        EXPECT_EQ(distance(first, arenaTake(arena, 0)), 96);
        EXPECT_EQ(arenaGiveBack(arena, nullptr, 33), 64);
        EXPECT_EQ(arenaGiveBack(arena, first, 0), 0);
        EXPECT_EQ(distance(first, arenaTake(arena, 1)), 32);
        for (unsigned char *byte = memory; byte != memory + sizeof memory; ++byte)
            ASSERT_TRUE((byte >= block && byte < block + 4) || *byte == 0x5a) << distance(block, byte);
    }
}

class Dct4List : public testing::Test {
protected:
    // How far the cursor has moved.
    std::ptrdiff_t taken() { return distance(head, arenaTake(arena, 0)); }

    alignas(32) unsigned char memory[512];
    PlanArena *arena = arenaInit(memory + 7);
    ListCell *head = listCreate(arena);
    NodeHeader values[3]; // in reach of references
};

TEST_F(Dct4List, TakesACellForTheSecondValue) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(listAppend(head, &values[i]), &values[i]);
        EXPECT_EQ(taken(), 32 + 32 * i);
        for (int index = -2; index < 5; ++index)
            EXPECT_EQ(listNth(head, index), index < 0 || index > i ? nullptr : &values[index]);
    }
    EXPECT_EQ(head->next->arena, arena);
    listReleaseCells(head);
    EXPECT_EQ(taken(), 32);
    EXPECT_EQ(head->value, &values[0]);
}

// Of values, a whole plan shows it.
TEST_F(Dct4List, DestroysNothingInAnEmptyList) {
    listDestroyValues(nullptr);
    listDestroyValues(head);
    EXPECT_EQ(taken(), 32);
}

TEST(Dct4Radix, IsTheLargestThatTheValueAllows) {
    constexpr std::int32_t rows[][2] = {{512, 32}, {520, 8}, {511, 0}, {496, 16},     {128, 16}, {136, 8},
                                        {96, 8},   {36, 4},  {16, 4},  {18, 2},       {4, 2},    {3, 0},
                                        {2, 0},    {0, 0},   {-64, 0}, {INT32_MIN, 0}};
    for (const auto &[value, radix] : rows) {
        std::int32_t chosen = 77;
        EXPECT_EQ(choosePlanRadix(&chosen, value), radix == 0 ? zrfStatusSizeError : zrfStatusOk) << value;
        EXPECT_EQ(chosen, radix == 0 ? 77 : radix) << value;
    }
}

std::int32_t logarithm(std::int32_t power) {
    return std::bit_width(static_cast<std::uint32_t>(power)) - 1;
}

std::int32_t inputKind(std::int32_t length) {
    return std::min(logarithm(length), 7);
}

std::ptrdiff_t roundedUp(std::ptrdiff_t bytes) {
    return (bytes + 31) / 32 * 32;
}

template <class Element> class Dct4Records : public testing::Test {
protected:
    static constexpr std::int32_t lanes = sizeof(Element) == 4 ? 4 : 2;

    Dct4Plan *build(std::int32_t length) {
        const auto size = static_cast<std::size_t>(planBytes<Element>(length));
        memory.assign(size + 32, 0x77);
        block = memory.data() + 32 - reinterpret_cast<std::uintptr_t>(memory.data()) % 32;
        return buildPlan<Element>(block, length);
    }

    // How much of the block is in use.
    std::ptrdiff_t used() const {
        return distance(block, arenaTake(reinterpret_cast<PlanArena *>(block), 0));
    }

    // The record is charged these bytes, and its words from `first` on are these.
    template <class Record> void expectRecord(const Record *record, std::int32_t bytes, std::size_t first,
                                              const std::vector<std::int32_t> &expected) const {
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record) % 32, 0u);
        const RecordType type = [] {
            if constexpr (std::is_same_v<Record, Dct4Plan>)
                return planType<Element>;
            else
                return Record::type;
        }();
        EXPECT_EQ(record->header.destroy, type);
        EXPECT_EQ(record->header.recordBytes, bytes);
        EXPECT_EQ(record->header.build, type);
        EXPECT_EQ(distance(block, record->header.arena), 0);
        std::vector<std::int32_t> words(expected.size());
        std::memcpy(words.data(), reinterpret_cast<const std::int32_t *>(record) + first, 4 * words.size());
        EXPECT_EQ(words, expected);
    }

    // The list holds the records, in this order and alone.
    static void expectList(const ListCell *head, const std::vector<const void *> &records) {
        ASSERT_NE(head, nullptr);
        for (std::size_t i = 0; i <= records.size(); ++i)
            EXPECT_EQ(listNth(head, static_cast<std::int32_t>(i)), i < records.size() ? records[i] : nullptr);
    }

    // The table holds these angles, in units of pi: of each group, the cosines of all lanes, then the sines.
    static void expectTable(const void *table, const std::vector<long double> &angles) {
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(table) % 32, 0u);
        const auto *value = static_cast<const Element *>(table);
        for (std::size_t group = 0; group < angles.size(); group += lanes)
            for (const auto function : {cosl, sinl})
                for (std::size_t lane = 0; lane < lanes; ++lane) {
                    const long double exact =
                        function(std::numbers::pi_v<long double> * angles[group + lane]);
                    const long double rounding = std::numeric_limits<Element>::epsilon() / 2 * 1.000001L;
                    ASSERT_NEAR(*value++, exact, rounding * std::fabs(exact) + 1e-15L) << group;
                }
    }

    static std::vector<long double> outputAngles(std::int32_t length, std::int32_t radix) {
        static const std::map<std::int32_t, std::vector<std::int32_t>> columns = {
            {2, {0, 1}},
            {4, {0, 3, 1, 2}},
            {8, {0, 7, 1, 6, 2, 5, 3, 4}},
            {16, {0, 15, 1, 14, 2, 13, 3, 12, 4, 11, 5, 10, 6, 9, 7, 8}},
            {32, {0, 31, 16, 15, 4, 27, 20, 11, 8, 23, 24, 7, 12, 19, 28, 3,
                  1, 30, 17, 14, 5, 26, 21, 10, 9, 22, 25, 6, 13, 18, 29, 2}}};
        std::vector<long double> angles;
        for (std::int32_t firstRow = 0; firstRow < length / (2 * radix); firstRow += lanes)
            for (const std::int32_t c : columns.at(radix))
                for (std::int32_t q = firstRow; q < firstRow + lanes; ++q)
                    // The quotient has the element's precision; for powers of two it is exact.
                    angles.push_back(static_cast<Element>((2 * q + 1) * (2 * c + 1)) /
                                     static_cast<Element>(4 * length));
        return angles;
    }

    static std::vector<long double> levelAngles(std::int32_t length, std::int32_t radix) {
        std::vector<long double> angles;
        const std::int32_t halfLength = length / (2 * radix);
        const auto addPass = [&](std::int32_t turns, std::int32_t factors, std::int32_t scale) {
            for (std::int32_t s = 0; s < halfLength; ++s)
                for (std::int32_t u = 0; u < turns; ++u)
                    for (std::int32_t v = 1; v <= factors; ++v)
                        angles.insert(angles.end(), lanes,
                                      scale * (2 * s + 1 + 4 * halfLength * u) * v /
                                          static_cast<long double>(length));
        };
        if (radix == 8)
            addPass(1, 7, 1);
        else
            addPass(radix == 16 ? 4 : 8, 3, 1), addPass(1, radix == 16 ? 3 : 7, 4);
        return angles;
    }

    std::vector<unsigned char> memory;
    unsigned char *block = nullptr;
};

template <class Record> Record *nth(const ListCell *head, std::int32_t index) {
    return recordCast<Record>(listNth(head, index));
}

using Elements = testing::Types<Float32, Float64>;
TYPED_TEST_SUITE(Dct4Records, Elements);

TYPED_TEST(Dct4Records, TwoStagePlansHoldTheirRecordsAndTables) {
    const std::int32_t lanes = this->lanes;
    for (const std::int32_t N : {9, 17, 33, 64, 65, 128, 256, 1024, 2048, 4096, 4097, 16384, 65536, 131072}) {
        if (N < 33 && lanes == 4)
            continue;
        SCOPED_TRACE(N);
        const std::int32_t r = splitOf(N)->radix, n = N / r, M = n / 2;
        const std::ptrdiff_t workBytes = roundedUp(N * static_cast<std::ptrdiff_t>(sizeof(TypeParam)));
        Dct4Plan *root = this->build(N);
        this->expectRecord(root, 44, 8, {6, r, N});
        EXPECT_EQ(distance(this->block, root->work) + workBytes, this->used());
        const auto *source = nth<TwiddleSource>(root->ownedNodes, 0);
        const auto *output = nth<OutputStageNode>(root->ownedNodes, 1);
        const auto *input = nth<InputStageNode>(root->ownedNodes, 2);
        this->expectList(root->ownedNodes, {source, output, input});
        this->expectList(root->outputStages, {output});
        this->expectList(root->inputStages, {input});
        this->expectRecord(source, 36, 4, {2 * r, 8 * N, M, r, 2 * r});

        this->expectRecord(output, 64, 6, {0, 1, r, N, 2 * r, M, N, 2 * N - 1, n});
        EXPECT_EQ(output->source, source);
        const auto *view = nth<BlockedTwiddleView>(output->children, 0);
        const auto *outputKernel = nth<OutputKernelNode>(output->children, 1);
        this->expectList(output->children, {view, outputKernel});
        this->expectList(output->stages, {outputKernel});
        this->expectRecord(view, 28, 4, {2 * r, M / lanes});
        EXPECT_EQ(view->source, source);
        this->expectRecord(outputKernel, 64, 6,
                           {logarithm(r) + 1, r, N, 2 * r, lanes * 2 * r, M / lanes, N, 2 * N - 1, n});
        this->expectList(outputKernel->children, {});
        EXPECT_EQ(outputKernel->view, view);
        this->expectTable(outputKernel->table, this->outputAngles(N, r));

        this->expectRecord(input, 60, 6, {0, 1, n, N, 2 * N - 1, 2 * r, r, N, r});
        const auto *inputKernel = nth<InputKernelNode>(input->children, 0);
        this->expectList(input->children, {inputKernel});
        this->expectList(input->stages, {inputKernel});
        this->expectRecord(inputKernel, 60, 6, {0, inputKind(n), n, N, 2 * N - 1, 2 * r, r / lanes, N, r});

        const ListCell *children = inputKernel->children, *stages = inputKernel->stages;
        const void *outerWork = root->work;
        std::ptrdiff_t kept = 0; // on release: a level gives its work back as Float32 in either element type
        std::int32_t length = n, inputStride = 2 * r, outputStride = r;
        while (length > 64) {
            const std::int32_t r2 = splitOf(length)->radix, leafLength = length / r2;
            const auto *level = nth<RecursiveSplitNode>(children, 0);
            this->expectList(children, {level});
            this->expectList(stages, {level});
            this->expectRecord(level, 64, 8, {1, length, r2, N, N, inputStride, N, outputStride});
            EXPECT_EQ(distance(level->work, outerWork), workBytes);
            kept += workBytes - roundedUp(4 * std::ptrdiff_t{N});
            outerWork = level->work;
            const auto *angles = nth<SplitAngleSource>(level->children, 0);
            const auto *combine = nth<SplitCombineNode>(level->children, 1);
            const auto *leaf = nth<SplitLeafNode>(level->children, 2);
            this->expectList(level->children, {angles, combine, leaf});
            this->expectList(level->combine, {combine});
            this->expectList(level->leaf, {leaf});
            this->expectRecord(angles, 24, 4, {length, r2});
            this->expectRecord(combine, 72, 6,
                               {logarithm(r2), r2, N, outputStride, 2 * r2 * outputStride, leafLength / 2, N,
                                length / 2, length - 1, outputStride, leafLength});
            this->expectList(combine->children, {});
            EXPECT_EQ(combine->angles, angles);
            this->expectTable(combine->table, this->levelAngles(length, r2));
            this->expectRecord(leaf, 68, 6,
                               {0, inputKind(leafLength), leafLength, N, N, r2 * inputStride, inputStride, r2,
                                N, r2 * outputStride, outputStride});
            children = leaf->children;
            stages = leaf->stages;
            length = leafLength;
            inputStride *= r2;
            outputStride *= r2;
        }
        this->expectList(children, {});
        this->expectList(stages, {});
        releasePlan<TypeParam>(root);
        EXPECT_EQ(this->used(), 64 + kept);
    }
}

// One call for each value of a table that differs by lane: N of the output table, and two for each of the
// (r2 - 1) n / (2 r2) groups of a level, here with r2 = 8 and n = 128.
TYPED_TEST(Dct4Records, TakeAsManySinesAndCosinesAsTheyMust) {
    constexpr int rows[][2] = {{2, 0}, {32, 0}, {64, 64}, {2048, 2048}, {4096, 4096 + 2 * 7 * 8}};
    for (const auto &[length, calls] : rows) {
        trigonometricCalls = 0;
        Dct4Plan *plan = this->build(length);
        EXPECT_EQ(trigonometricCalls, calls) << length;
        releasePlan<TypeParam>(plan);
        EXPECT_TRUE(length > 32 || this->used() == 64) << length;
    }
}

} // namespace
} // namespace zrfgen
