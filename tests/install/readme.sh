# For the scripts beside it: the README's programs, and how to tell whether they work.
set -euo pipefail
trap 'echo "failed at: $BASH_COMMAND" >&2' ERR

# readmeBlock LANGUAGE [NUMBER]: the README's code block of this language, the first if no number is given.
readmeBlock() {
    awk -v fence="\`\`\`$1" -v wanted="${2:-1}" '
        $0 == "```" { inside = 0 }
        inside
        $0 == fence { inside = ++seen == wanted }' "$SOURCES/README.md" | grep .
}

# extractPrograms DIRECTORY: starts an empty directory with the programs and what they should print.
extractPrograms() {
    rm -rf "$1"
    mkdir -p "$1"
    readmeBlock c >"$1/hello.c"
    readmeBlock cpp >"$1/hello.cpp"
    readmeBlock cmake >"$1/CMakeLists.txt"
    readmeBlock text 1 >"$1/hello-c.txt"
    readmeBlock text 2 >"$1/hello-cpp.txt"
}

# expectLinkage shared|static PROGRAM
expectLinkage() {
    local needed
    needed=$(readelf -dW "$2" | grep -c 'NEEDED.*libzrfgen' || true)
    [ "$needed" -eq "$([ "$1" = shared ] && echo 1 || echo 0)" ]
}
