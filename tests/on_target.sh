#!/usr/bin/env bash
# on_target.sh TARGET FOLDER COMMAND... runs a program with one of the libraries that the loader chooses from: the
# base library, or the one of a wider target, which lies in FOLDER.
set -eu
target=$1 folder=$2
shift 2
if [ "$target" = sse3 ]; then
    export GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2 # as if the machine had no wider vectors
elif /lib64/ld-linux-x86-64.so.2 --help | grep -q "^ *$target (supported"; then
    export LD_LIBRARY_PATH=$folder
else
    echo "Skipped: this machine is below $target"
    exit 77
fi
exec "$@"
