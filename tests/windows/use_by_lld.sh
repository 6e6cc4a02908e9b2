#!/usr/bin/env bash
# A program with the import libraries for MSVC, by Clang for MSVC's targets and lld-link, no warning allowed. Takes the
# command that runs programs of Windows.
set -euo pipefail
rm -rf lld
mkdir lld
cd lld
target=${PROCESSOR}-pc-windows-msvc machine=i386
[ "$PROCESSOR" = i686 ] || machine=i386:x86-64
cat >program.c <<'TEXT'
#include <zrfcore/zrfcore.h>
#include <zrfgen/transforms.h>

__declspec(dllimport) void __stdcall ExitProcess(unsigned);
int _fltused; /* for what the C run time would do */

int start(void) {
    const zrfFloat64 x[2] = {30, 12};
    zrfFloat64 X[2] = {0, 0};
    void *block = zrfMalloc(64);
    const zrfStatus status = zrfgHartley_2_64f(x, X, zrfScaleNone);
    zrfFree(block);
    ExitProcess(status == zrfStatusOk && block && X[1] == 18 ? (unsigned)X[0] : 1);
    return 0;
}
TEXT
printf 'LIBRARY kernel32.dll\nEXPORTS\n    ExitProcess%s\n' "$([ "$PROCESSOR" = i686 ] && echo @4)" >kernel32.def
llvm-dlltool -m "$machine" -k -d kernel32.def -l kernel32.lib
clang --target="$target" -ffreestanding -nostdlibinc -O1 -Wall -Wextra -Werror "-I$TREE/include" -c program.c -o program.obj
lld-link /WX /nodefaultlib /entry:start /subsystem:console program.obj "$TREE/lib/zrfgen.lib" "$TREE/lib/zrfcore.lib" kernel32.lib \
    /out:program.exe
cp "$TREE"/bin/*.dll .
status=0
"$@" program.exe || status=$?
[ $status -eq 42 ] || {
    echo "the program ended with $status, and not with 42"
    exit 1
}
