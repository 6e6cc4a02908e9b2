#!/bin/sh
# page_for_doxygen.sh PAGE: a page with a label, and its links to other pages by theirs. Doxygen makes labels of paths
# otherwise, and finds none in a folder with spaces. Pictures it finds by their names alone.
set -eu
case $1 in
*/docs/README.md) label=mainpage ;;
*) label=page_$(basename "$1" .md) ;;
esac
sed -e "1s/\$/ {#$label}/" -e 's:](.*figures/:](:' \
    -e 's:](docs/README\.md):](@ref index):' -e 's:](\([a-z.]*/\)*\([a-z0-9-]*\)\.md):](@ref page_\2):g' "$1"
if [ $label = mainpage ]; then
    printf '\n@ref functions, family by family.\n'
fi
