// What Windows calls when the library is loaded.
#include "../load_start.h"

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void *reserved) {
    return zrfgen::entryRoutine(module, reason, reserved);
}
