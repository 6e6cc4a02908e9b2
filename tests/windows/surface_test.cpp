// The DLLs as the loader and the linker see them.
#include "exports.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include <windows.h>

namespace {

using Names = std::set<std::string>;

// A loaded image, by its headers.
class Image {
public:
    explicit Image(const char *name)
        : base(reinterpret_cast<const unsigned char *>(GetModuleHandleA(name))) {}

    template <class T> const T *at(DWORD address) const {
        return reinterpret_cast<const T *>(base + address);
    }
    template <class T> const T *directory(int which) const {
        const auto *headers = at<IMAGE_NT_HEADERS>(at<IMAGE_DOS_HEADER>(0)->e_lfanew);
        return at<T>(headers->OptionalHeader.DataDirectory[which].VirtualAddress);
    }

    // Their names by ordinal.
    std::map<int, std::string> exported() const {
        const auto *table = directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
        const auto *names = at<DWORD>(table->AddressOfNames);
        const auto *positions = at<WORD>(table->AddressOfNameOrdinals);
        EXPECT_EQ(table->NumberOfFunctions, table->NumberOfNames);
        std::map<int, std::string> result;
        for (DWORD i = 0; i < table->NumberOfNames; ++i)
            result[static_cast<int>(table->Base) + positions[i]] = at<char>(names[i]);
        return result;
    }

    // What is imported from each DLL, names in small letters.
    std::map<std::string, Names> imported() const {
        std::map<std::string, Names> result;
        for (auto *library = directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT);
             library->Name != 0; ++library) {
            std::string name = at<char>(library->Name);
            std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
            for (auto *entry = at<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
                 entry->u1.AddressOfData != 0; ++entry)
                result[name].insert(
                    at<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(entry->u1.AddressOfData))->Name);
        }
        return result;
    }

private:
    const unsigned char *base;
};

template <class Function> Function find(HMODULE module, const char *name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

TEST(Surface, ExportsAllFamiliesByNameAndNumber) {
    std::map<int, std::string> expected;
    for (const Export &entry : allExports())
        expected[static_cast<int>(expected.size()) + 1] = entry.name;
    ASSERT_EQ(expected.size(), 1193u);
    EXPECT_EQ(expected[1], "zrfgDCT4Free_32f");
    EXPECT_EQ(expected[1193], "zrfgenGetLibVersion");
    EXPECT_EQ(Image("zrfgen.dll").exported(), expected);
    const std::map<int, std::string> ofCore = {
        {1, "zrfFree"}, {2, "zrfGetEnabledCpuFeatures"}, {3, "zrfMalloc"}};
    EXPECT_EQ(Image("zrfcore.dll").exported(), ofCore);
}

TEST(Surface, NeedsTheCoreLibraryAndWhatEveryProgramHas) {
    auto imports = Image("zrfgen.dll").imported();
    EXPECT_EQ(imports["zrfcore.dll"], (Names{"zrfFree", "zrfGetEnabledCpuFeatures", "zrfMalloc"}));
    imports.erase("zrfcore.dll");
    imports.merge(Image("zrfcore.dll").imported());
    for (const auto &[name, functions] : imports)
        EXPECT_TRUE(name == "kernel32.dll" || name == "msvcrt.dll") << name;
}

// Stubs of 16 bytes side by side in export order; each jumps through the slot of the same position.
TEST(Surface, StubsAndSlotsStandInExportOrder) {
    const HMODULE module = GetModuleHandleA("zrfgen.dll");
    const unsigned char *stub = nullptr, *slot = nullptr;
    for (const Export &entry : allExports()) {
        SCOPED_TRACE(entry.name);
        const auto *const address = find<const unsigned char *>(module, entry.name.data());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(address) % 16, 0u);
        ASSERT_TRUE(address[0] == 0xff && address[1] == 0x25); // jmp *slot
        int32_t offset;
        std::memcpy(&offset, address + 2, sizeof offset);
#ifdef _WIN64
        const unsigned char *const itsSlot = address + 6 + offset;
#else
        const unsigned char *const itsSlot = reinterpret_cast<const unsigned char *>(offset);
#endif
        if (stub != nullptr) {
            ASSERT_EQ(address, stub + 16);
            ASSERT_EQ(itsSlot, slot + sizeof(void *));
        }
        stub = address;
        slot = itsSlot;
    }
}

// As a program that was not linked to the library: by name, and by number.
TEST(Surface, IsFoundByNameAndNumber) {
    const HMODULE module = LoadLibraryA("zrfgen.dll");
    ASSERT_NE(module, nullptr);
    const auto byNumber = [&]<class Function>(int number, Function) {
        return find<Function>(module, MAKEINTRESOURCEA(number));
    };
    EXPECT_EQ(byNumber(1, &zrfgDCT4Free_32f)(nullptr), zrfStatusNullPointer);
    EXPECT_EQ(byNumber(1193, &zrfgenGetLibVersion)(), zrfgenGetLibVersion());
    const zrfFloat32 source[2] = {1, 2};
    zrfFloat32 result[2];
    EXPECT_EQ(find<decltype(&zrfgHartley_2_32f)>(module, "zrfgHartley_2_32f")(source, result, zrfScaleNone),
              zrfStatusOk);
    EXPECT_EQ(result[0], 3);
    EXPECT_EQ(GetProcAddress(module, MAKEINTRESOURCEA(1194)), nullptr);
    FreeLibrary(module);
}

TEST(Surface, HasAVersionResource) {
    const std::string file = libraryFile();
    std::vector<char> resource(GetFileVersionInfoSizeA(file.c_str(), nullptr));
    ASSERT_TRUE(GetFileVersionInfoA(file.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()));
    void *value = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueA(resource.data(), "\\", &value, &size));
    const auto *const fixed = static_cast<const VS_FIXEDFILEINFO *>(value);
    EXPECT_EQ(fixed->dwFileVersionMS, 8u << 16 | 1);
    EXPECT_EQ(fixed->dwFileVersionLS, 573u);
    ASSERT_TRUE(VerQueryValueA(resource.data(), "\\StringFileInfo\\040904B0\\ProductVersion", &value, &size));
    EXPECT_STREQ(static_cast<const char *>(value), "8.1.0 (r41664)");
}

} // namespace
