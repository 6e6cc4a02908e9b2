// The library as the linker and the loader see it.
#include "command.h"
#include "exports.h"

// Of the unwinder, which has no header for it.
struct UnwindBases {
    const void *text, *data, *function;
};
extern "C" const void *_Unwind_Find_FDE(const void *address, UnwindBases *bases);

namespace {

using Lines = std::vector<std::string>;

// The dynamic symbols of one kind, without symbol versions, in byte order.
Lines symbols(const std::string &kind, const std::string &library) {
    Lines names;
    for (const std::string &line : linesOf(ZRFGEN_NM " -D -P " + kind + " " + library))
        if (line[line.find(' ') + 1] != 'w') // the loader's optional hooks
            names.push_back(line.substr(0, line.find_first_of("@ ")));
    std::ranges::sort(names);
    return names;
}

TEST(Surface, ExportsAllFamiliesAndNothingElse) {
    Lines expected;
    for (const Export &entry : allExports())
        expected.emplace_back(entry.name);
    ASSERT_EQ(expected.size(), 1193u);
    EXPECT_EQ(expected.front(), "zrfgDCT4Free_32f");
    EXPECT_EQ(expected.back(), "zrfgenGetLibVersion");
    EXPECT_EQ(symbols("--defined-only", libraryFile()), expected);
    EXPECT_EQ(linesOf(ZRFGEN_KERNELGEN " exports zrfgen"), expected);
    Lines ofMany = linesOf(ZRFGEN_KERNELGEN " exports zrfmany");
    std::ranges::sort(ofMany);
    EXPECT_EQ(ofMany.size(), 22u);
    EXPECT_EQ(symbols("--defined-only", ZRFMANY_LIBRARY), ofMany);
    const Lines ofCore = {"zrfFree", "zrfGetEnabledCpuFeatures", "zrfMalloc"};
    EXPECT_EQ(symbols("--defined-only", ZRFCORE_LIBRARY), ofCore);
}

TEST(Surface, NeedsTheCoreLibraryAndSineAndCosineAlone) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "sanitizers bring imports of their own";
#endif
    const Lines allowed = {"cos", "sin", "zrfFree", "zrfGetEnabledCpuFeatures", "zrfMalloc"};
    EXPECT_EQ(symbols("--undefined-only", libraryFile()), allowed);
    bool namesCoreLibrary = false, bindsAtOnce = false, protectsAddresses = false;
    for (const std::string &line : linesOf(ZRFGEN_READELF " -dlW " + libraryFile())) {
        const auto has = [&](const char *text) { return line.find(text) != std::string::npos; };
        EXPECT_FALSE(has("TEXTREL") || has("libstdc++")) << line;
        namesCoreLibrary |= has("NEEDED") && has("libzrfcore");
        bindsAtOnce |= has("BIND_NOW");
        protectsAddresses |= has("GNU_RELRO");
    }
    EXPECT_TRUE(namesCoreLibrary && bindsAtOnce && protectsAddresses);
}

// Stubs of 16 bytes side by side in export order; each jumps through the slot of the same position, and has
// an unwind entry of its own.
TEST(Surface, StubsAndSlotsStandInExportOrder) {
#ifdef __CET__
    const int mark = 4; // in front, for indirect jumps
#else
    const int mark = 0;
#endif
#ifdef __x86_64__
    const int jump = mark, base = mark + 6;
    const unsigned char code[] = {0xff, 0x25}; // jmp *offset(%rip)
#else
    const int jump = mark + 5, base = jump;
    const unsigned char code[] = {0xff,
                                  0xa0}; // jmp *offset(%eax), behind a call: the program counter, in eax
#endif
    const unsigned char *stub = nullptr, *slot = nullptr;
    for (const Export &entry : allExports()) {
        SCOPED_TRACE(entry.name);
        const auto *const address = reinterpret_cast<const unsigned char *>(entry.address);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(address) % 16, 0u);
        ASSERT_TRUE(std::equal(code, code + 2, address + jump));
        UnwindBases bases = {};
        EXPECT_NE(_Unwind_Find_FDE(address + jump, &bases), nullptr);
        EXPECT_EQ(bases.function, address);
        int32_t offset;
        std::memcpy(&offset, address + jump + 2, sizeof offset);
        if (stub != nullptr) {
            ASSERT_EQ(address, stub + 16);
            ASSERT_EQ(address + base + offset, slot + sizeof(void *));
        }
        stub = address;
        slot = address + base + offset;
    }
}

} // namespace
