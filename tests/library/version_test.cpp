// The version record as callers in any language read it: by offsets.
#include <zrfgen/transforms.h>

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>

namespace {

template <class Field> Field fieldAt(const LibraryVersion *record, std::size_t offset) {
    Field field;
    std::memcpy(&field, reinterpret_cast<const unsigned char *>(record) + offset, sizeof field);
    return field;
}

TEST(Version, OneRecordIdentifiesTheLibrary) {
    const LibraryVersion *record = zrfgenGetLibVersion();
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(zrfgenGetLibVersion(), record);
    EXPECT_EQ(fieldAt<int32_t>(record, 0), 8);
    EXPECT_EQ(fieldAt<int32_t>(record, 4), 1);
    EXPECT_EQ(fieldAt<int32_t>(record, 8), 0);
    EXPECT_EQ(fieldAt<int32_t>(record, 12), 41664);
    EXPECT_EQ(std::memcmp(record->targetCode, "v8\0\0", 4), 0);
    EXPECT_EQ(offsetof(LibraryVersion, targetCode), 16u);
    // Pointers have the platform's own width and alignment.
    const std::size_t texts = sizeof(void *) == 4 ? 20 : 24;
    EXPECT_STREQ(fieldAt<const char *>(record, texts), "zrfGEN SSSE3 (v8)");
    EXPECT_STREQ(fieldAt<const char *>(record, texts + sizeof(void *)), "8.1.0 (r41664)");
    EXPECT_STREQ(fieldAt<const char *>(record, texts + 2 * sizeof(void *)), "Jan 15 2014");
}

} // namespace
