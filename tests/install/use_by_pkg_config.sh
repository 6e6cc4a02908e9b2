#!/usr/bin/env bash
# An installed tree by pkg-config, from strict C99 and from C++, with the shared and the static library.
. "$(dirname "$0")/readme.sh"
extractPrograms pkg_config
cd pkg_config
export PKG_CONFIG_PATH=$LIBRARIES/pkgconfig LD_LIBRARY_PATH=$LIBRARIES

for kind in shared static; do
    mode=$([ $kind = static ] && echo --static || true)
    flags=$(pkg-config $mode --cflags --libs zrfgen)
    # shellcheck disable=SC2086 # flags are words
    {
        $CC $CFLAGS -std=c99 -pedantic-errors -Wall -Werror ${mode#-} hello.c $flags -o hello-c
        $CXX $CXXFLAGS -std=c++20 -pedantic-errors -Wall -Werror ${mode#-} hello.cpp $flags -o hello-cpp
    }
    for program in hello-c hello-cpp; do
        expectLinkage $kind $program
        ./$program | diff $program.txt -
    done

    flags=$(pkg-config $mode --cflags --libs zrfmany)
    # shellcheck disable=SC2086
    {
        $CC $CFLAGS -std=c99 -pedantic-errors -Wall -Werror ${mode#-} many.c $flags -lm -o many-c
        $CXX $CXXFLAGS -std=c++20 -pedantic-errors -Wall -Werror ${mode#-} many.cpp $flags -o many-cpp
    }
    for program in many-c many-cpp; do
        expectLinkage $kind $program zrfmany
        ./$program
    done
done
