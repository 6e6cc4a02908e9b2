#!/usr/bin/env bash
# An installed tree by find_package, with the shared and the static library.
. "$(dirname "$0")/readme.sh"
extractPrograms find_package
cd find_package
cat >>CMakeLists.txt <<'TEXT'
add_executable(many many.cpp)
target_link_libraries(many PRIVATE zrfgen::zrfmany)
TEXT

for kind in shared static; do
    cmake -S . -B $kind -DCMAKE_PREFIX_PATH="$TREE" -DCMAKE_LIBRARY_ARCHITECTURE="${LIBRARIES##*/}" \
        -DZRFGEN_USE_STATIC_LIBS=$([ $kind = static ] && echo ON || echo OFF)
    cmake --build $kind
    expectLinkage $kind $kind/hello
    $kind/hello | diff hello-cpp.txt -
    expectLinkage $kind $kind/many zrfmany
    $kind/many
done

# Programs for another major version get no library of this one.
sed -i 's/find_package(zrfgen [0-9]*/find_package(zrfgen 7/' CMakeLists.txt
grep -q 'find_package(zrfgen 7' CMakeLists.txt
! cmake -S . -B other -DCMAKE_PREFIX_PATH="$TREE" -DCMAKE_LIBRARY_ARCHITECTURE="${LIBRARIES##*/}" >other.log 2>&1
grep -q 'with requested version "7"' other.log
