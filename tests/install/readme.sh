# For the scripts beside it: the README's programs and those of libzrfmany's page, and how to tell whether they work.
set -euo pipefail
trap 'echo "failed at: $BASH_COMMAND" >&2' ERR

# codeBlock PAGE LANGUAGE [NUMBER]: the page's code block of this language, the first if no number is given.
codeBlock() {
    awk -v fence="\`\`\`$2" -v wanted="${3:-1}" '
        $0 == "```" { inside = 0 }
        inside
        $0 == fence { inside = ++seen == wanted }' "$SOURCES/$1" | grep .
}

# extractPrograms DIRECTORY: starts an empty directory with the programs and what the README's should print; those of
# libzrfmany return 0 if they find what they say.
extractPrograms() {
    rm -rf "$1"
    mkdir -p "$1"
    codeBlock README.md c >"$1/hello.c"
    codeBlock README.md cpp >"$1/hello.cpp"
    codeBlock README.md cmake >"$1/CMakeLists.txt"
    codeBlock README.md text 1 >"$1/hello-c.txt"
    codeBlock README.md text 2 >"$1/hello-cpp.txt"
    codeBlock docs/reference/many.md c >"$1/many.c"
    codeBlock docs/reference/many.md cpp >"$1/many.cpp"
}

# expectLinkage shared|static PROGRAM [LIBRARY]
expectLinkage() {
    local needed
    needed=$(readelf -dW "$2" | grep -c "NEEDED.*lib${3:-zrfgen}" || true)
    [ "$needed" -eq "$([ "$1" = shared ] && echo 1 || echo 0)" ]
}
