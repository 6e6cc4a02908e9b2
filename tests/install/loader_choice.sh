#!/usr/bin/env bash
# Which of the installed libraries the loader takes, by the machine and by what it is told of it.
. "$(dirname "$0")/readme.sh"
extractPrograms loader_choice
cd loader_choice
loader=/lib64/ld-linux-x86-64.so.2

# expectChosen FOLDER COMMAND...: which lists the libraries of a program
expectChosen() {
    local folder=$1 chosen
    shift
    chosen=$("$@" | sed -n 's/.*libzrfgen\.so\.[0-9]* => \([^ ]*\) .*/\1/p')
    [ "$(dirname "$(realpath "$chosen")")" = "$(realpath "$folder")" ]
}

widest=.
for target in x86-64-v3 x86-64-v4; do
    if $loader --help | grep -q "^ *$target (supported"; then
        widest=glibc-hwcaps/$target
    fi
done
echo "this machine's library is in $widest"

flags=$(PKG_CONFIG_PATH=$LIBRARIES/pkgconfig pkg-config --cflags --libs zrfgen)
# shellcheck disable=SC2086 # flags are words
$CC $CFLAGS -std=c99 hello.c $flags -Wl,-rpath,"\$ORIGIN/moved" -o hello
export LD_LIBRARY_PATH=$LIBRARIES
expectChosen "$LIBRARIES/$widest" ldd hello
expectChosen "$LIBRARIES" env GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2 ldd hello
expectChosen "$LIBRARIES" $loader --glibc-hwcaps-mask x86-64-v2 --list ./hello

# Beside the program, with nothing but its own path; each library still finds the one that it needs.
unset LD_LIBRARY_PATH
cp -a "$LIBRARIES" moved
expectChosen "moved/$widest" ldd hello
./hello | diff hello-c.txt -
GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2 ./hello | diff hello-c.txt -
