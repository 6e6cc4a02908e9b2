#!/usr/bin/env bash
# compare_digests.sh TABLE COMMAND... holds what a digest program prints to the table.
set -o pipefail
table=$1
shift
"$@" | diff "$table" -
