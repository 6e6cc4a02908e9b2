#!/bin/sh
# inline_families.sh HEADER: the header with the list that it includes in its place, for Doxygen.
exec sed -e "/^#include \"families.inc\"/{r $(dirname "$1")/families.inc" -e 'd}' "$1"
