// The library as the linker and the loader see it.
#include "exports.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

extern "C" int callFromC(void);

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string &command) {
    Lines lines;
    std::FILE *pipe = popen(command.c_str(), "r");
    for (char line[1000]; std::fgets(line, sizeof line, pipe) != nullptr;)
        lines.emplace_back(line, std::strcspn(line, "\n"));
    EXPECT_EQ(pclose(pipe), 0) << command;
    return lines;
}

// The dynamic symbols of one kind, without symbol versions, in byte order.
Lines symbols(const std::string &kind, const std::string &library = ZRFGEN_LIBRARY) {
    Lines names;
    for (const std::string &line : linesOf(ZRFGEN_NM " -D -P " + kind + " " + library))
        if (line[line.find(' ') + 1] != 'w') // the loader's optional hooks
            names.push_back(line.substr(0, line.find_first_of("@ ")));
    std::ranges::sort(names);
    return names;
}

Lines expectedExports() {
    Lines names;
    for (const Export &entry : allExports())
        names.emplace_back(entry.name);
    return names;
}

TEST(Surface, ExportsAllFamiliesAndNothingElse) {
    const Lines expected = expectedExports();
    ASSERT_EQ(expected.size(), 1193u);
    EXPECT_EQ(expected.front(), "zrfgDCT4Free_32f");
    EXPECT_EQ(expected.back(), "zrfgenGetLibVersion");
    EXPECT_EQ(symbols("--defined-only"), expected);
    EXPECT_EQ(linesOf(ZRFGEN_KERNELGEN " exports"), expected);
    const Lines ofCore = {"zrfFree", "zrfGetEnabledCpuFeatures", "zrfMalloc"};
    EXPECT_EQ(symbols("--defined-only", ZRFCORE_LIBRARY), ofCore);
}

TEST(Surface, NeedsTheCoreLibraryAndSineAndCosineAlone) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "sanitizers bring imports of their own";
#endif
    const Lines allowed = {"cos", "sin", "zrfFree", "zrfGetEnabledCpuFeatures", "zrfMalloc"};
    const Lines needed = symbols("--undefined-only");
    EXPECT_EQ(needed, allowed);
    bool namesCoreLibrary = false;
    for (const std::string &line : linesOf(ZRFGEN_READELF " -dW " ZRFGEN_LIBRARY)) {
        EXPECT_EQ(line.find("TEXTREL"), std::string::npos) << line;
        EXPECT_EQ(line.find("libstdc++"), std::string::npos) << line;
        namesCoreLibrary |=
            line.find("NEEDED") != std::string::npos && line.find("libzrfcore") != std::string::npos;
    }
    EXPECT_TRUE(namesCoreLibrary);
}

// Stubs of 16 bytes side by side in export order; each jumps through the slot of the same position.
TEST(Surface, StubsAndSlotsStandInExportOrder) {
    const Lines names = expectedExports();
    const std::unique_ptr<void, int (*)(void *)> library(dlopen(ZRFGEN_LIBRARY, RTLD_NOW), dlclose);
    const auto addressOf = [&](const std::string &name) {
        return static_cast<const unsigned char *>(dlsym(library.get(), name.c_str()));
    };
    const unsigned char *first = addressOf(names[0]);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 16, 0u);
    const unsigned char *firstSlot = nullptr;
    for (std::size_t i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i]);
        const unsigned char *stub = addressOf(names[i]);
        ASSERT_EQ(stub, first + 16 * i);
#ifdef __x86_64__
        const int jump = 0, base = 6;
        const unsigned char indirectJump[] = {0xff, 0x25}; // jmp *offset(%rip)
#else
        const int jump = 5, base = 5;
        EXPECT_EQ(stub[0], 0xe8);                          // call: the program counter, in eax
        const unsigned char indirectJump[] = {0xff, 0xa0}; // jmp *offset(%eax)
#endif
        ASSERT_EQ(std::memcmp(stub + jump, indirectJump, 2), 0);
        int32_t offset;
        std::memcpy(&offset, stub + jump + 2, sizeof offset);
        const unsigned char *const slot = stub + base + offset;
        if (i == 0)
            firstSlot = slot;
        EXPECT_EQ(slot, firstSlot + i * sizeof(void *));
    }
}

TEST(Surface, HeaderServesC) {
    EXPECT_EQ(callFromC(), 0);
}

} // namespace
