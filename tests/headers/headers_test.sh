#!/bin/sh
# headers_test.sh INCLUDES COMPILER OPTION...: what a C++ compiler takes of the headers, and what it says where it
# refuses them.
set -eu
here=$(dirname "$0") includes=$1 compiler=$2
shift 2
compile() {
    LC_ALL=C "$compiler" -fsyntax-only "-I$includes" "$@" 2>&1
}

for names in AFTER_NOTHING AFTER_XLIB ZRF_NO_SHORT_NAMES; do
    echo "$names"
    compile "$@" -std=c++20 -Wall -Wextra -pedantic-errors -Werror -D$names "$here/accepted.cpp"
done

# An older standard: one line that says what to do.
messages=$(echo '#include <zrfgen/transforms.hpp>' | compile "$@" -std=c++17 -x c++ -) && exit 1
[ "$(echo "$messages" | grep -c 'error:')" -eq 1 ]
echo "$messages" | grep -q -e '-std=c++20'

# An array that does not fit: one error for each, with the numbers.
messages=$(compile "$@" -std=c++20 "$here/refused.cpp") && exit 1
calls=$(grep -c '^    // ' "$here/refused.cpp")
[ "$(echo "$messages" | grep -c 'error:')" -eq "$calls" ] || {
    echo "$messages" | grep 'error:'
    exit 1
}
# Clang prints numbers with their type's suffix, 15UL.
plain=$(echo "$messages" | sed 's/\([0-9]\)UL*/\1/g; s/requirement .\([0-9]* == [0-9]*\). /(\1)/')
sed -n 's/^    \/\/ //p' "$here/refused.cpp" | while read -r message; do
    echo "$plain" | grep -qF "$message" || {
        echo "no message with: $message"
        exit 1
    }
done
