#!/usr/bin/env bash
# The README's C++ program with an installed tree, by find_package and mingw-w64: with the DLLs beside it, and with the
# static libraries. Takes the toolchain file and the command that runs programs of Windows.
. "$SOURCES/tests/install/readme.sh"
toolchain=$1
shift
extractPrograms find_package
cd find_package
for kind in shared static; do
    cmake -S . -B $kind -G Ninja --toolchain "$toolchain" -DCMAKE_PREFIX_PATH="$TREE" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_EXE_LINKER_FLAGS='-static -Wl,--fatal-warnings' \
        -DZRFGEN_USE_STATIC_LIBS=$([ $kind = static ] && echo ON || echo OFF)
    cmake --build $kind
    [ $kind = static ] || cp "$TREE"/bin/*.dll $kind
    "$@" $kind/hello.exe | tr -d '\r' | diff hello-cpp.txt -
done
