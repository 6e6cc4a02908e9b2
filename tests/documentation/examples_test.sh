#!/bin/sh
# examples_test.sh PROJECT COMPILER EXTENSION OPTION...: compiles and runs the examples of the README, of docs/ and of the
# reference pages in one language, each a complete program that returns 0 if it found what it says.
set -eu
project=$1 compiler=$2 language=$3
shift 3
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

examples=0
for page in "$project"/README.md "$project"/docs/*.md "$project"/docs/reference/*.md; do
    example=$work/$(basename "$(dirname "$page")")-$(basename "$page" .md)
    awk -v fence='```'"$language" '$0 == fence { isCode = 1; next } /^```/ { isCode = 0 } isCode' "$page" \
        >"$example.$language"
    [ -s "$example.$language" ] || continue
    examples=$((examples + 1))
    "$compiler" -o "$example" "$example.$language" "$@"
    "$example" || {
        echo "the example of $page fails at step $?" >&2
        exit 1
    }
done
echo "$examples examples"
[ "$examples" -gt 0 ]
