#!/usr/bin/env bash
# The sources as part of another project, in another folder. That also builds the libraries a second time: they
# have the same bytes as those of the first.
. "$(dirname "$0")/readme.sh"
extractPrograms add_subdirectory
cd add_subdirectory
mkdir zrfgen
tar -C "$SOURCES" --exclude=./build --exclude=./.git -c . | tar -C zrfgen -x
sed -i 's/find_package(zrfgen.*/add_subdirectory(zrfgen)/' CMakeLists.txt
grep -q 'add_subdirectory(zrfgen)' CMakeLists.txt

export CCACHE_DISABLE=1 # a cache would hand out the objects of the first build
cmake -S . -B build -DZRFGEN_WIDER=OFF -DCMAKE_BUILD_TYPE="$BUILD_TYPE" -DCMAKE_ASM_FLAGS="$ASMFLAGS"
cmake --build build --parallel --target hello zrfgen_static
expectLinkage shared build/hello
build/hello | diff hello-cpp.txt -

for library in libzrfgen.so libzrfcore.so libzrfgen.a libzrfcore.a; do
    cmp "build/zrfgen/lib/$library" "$BUILD/lib/$library"
done
