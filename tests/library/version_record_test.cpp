#include "exports.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

// As callers in any language read it: by offsets, with pointers of the platform's own width and alignment.
TEST(Surface, OneVersionRecordIdentifiesTheLibrary) {
    const LibraryVersion *const record = zrfgenGetLibVersion();
    EXPECT_EQ(zrfgenGetLibVersion(), record);
    const int32_t numbers[] = {8, 1, 0, 41664};
    EXPECT_EQ(std::memcmp(record, numbers, sizeof numbers), 0);
    const auto *const bytes = reinterpret_cast<const char *>(record);
    EXPECT_EQ(std::memcmp(bytes + 16, "v8\0\0", 4), 0);
    const char *texts[3];
    std::memcpy(texts, bytes + (sizeof(void *) == 4 ? 20 : 24), sizeof texts);
    EXPECT_STREQ(texts[0], "zrfGEN SSSE3 (v8)");
    EXPECT_STREQ(texts[1], "8.1.0 (r41664)");
    EXPECT_STREQ(texts[2], "Jan 15 2014");
}

} // namespace
