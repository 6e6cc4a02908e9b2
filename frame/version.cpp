#include "entry.h"

namespace {

constexpr LibraryVersion libraryVersion = {
    8, 1, 0, 41664, {'v', '8', 0, 0}, "zrfGEN SSSE3 (v8)", "8.1.0 (r41664)", "Jan 15 2014"};

} // namespace

extern "C" const LibraryVersion *ZRF_CALL ZRF_BODY(zrfgenGetLibVersion)() {
    return &libraryVersion;
}
