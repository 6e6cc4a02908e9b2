#include "exports.h"

#include <windows.h>

std::string libraryFile() {
    char name[MAX_PATH] = "";
    GetModuleFileNameA(GetModuleHandleA("zrfgen.dll"), name, sizeof name);
    return name;
}
