#!/usr/bin/env bash
# The sources as part of another project, in another folder: a program of the README with the kernel that it calls.
# Kernels made there have the same text and, as objects, the same bytes as those of the first build.
. "$(dirname "$0")/readme.sh"
extractPrograms add_subdirectory
cd add_subdirectory
mkdir zrfgen
tar -C "$SOURCES" --exclude=./build --exclude=./.git -c . | tar -C zrfgen -x
sed -i 's/find_package(zrfgen.*/add_subdirectory(zrfgen)/' CMakeLists.txt
grep -q 'add_subdirectory(zrfgen)' CMakeLists.txt

export CCACHE_DISABLE=1 # a cache would hand out the objects of the first build
cmake -S . -B build -G Ninja -DZRFGEN_KERNELGEN="$KERNELGEN" -DZRFGEN_WIDER=OFF -DCMAKE_BUILD_TYPE="$BUILD_TYPE" \
    -DCMAKE_ASM_FLAGS="$ASMFLAGS"
libraries=frame/CMakeFiles
kernel=$libraries/zrfgen_objects.dir/__/generated/dft_6_32fc.cpp.o
stubs=$libraries/zrfgen_real_single_objects.dir/entries.S.o
cmake --build build --target CMakeFiles/hello.dir/hello.cpp.o zrfgen/$kernel zrfgen/$stubs
cmp build/zrfgen/$kernel "$BUILD/$kernel"
cmp build/zrfgen/$stubs "$BUILD/$stubs"
# shellcheck disable=SC2086 # flags are words
$CXX $CXXFLAGS build/CMakeFiles/hello.dir/hello.cpp.o build/zrfgen/$kernel build/zrfgen/$stubs \
    -Wl,--gc-sections -o hello
./hello | diff hello-cpp.txt -
ninja -C build -t query hello | grep 'libzrfgen\.so' >/dev/null # what the whole program is linked with

[ "$(ls build/zrfgen/generated | wc -l)" -gt 500 ]
for file in build/zrfgen/generated/*.*; do
    cmp "$file" "$BUILD/generated/$(basename "$file")"
done
