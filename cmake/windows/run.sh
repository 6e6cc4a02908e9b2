#!/usr/bin/env bash
# run.sh FOLDER WINE PROGRAM ARGUMENT...: runs a Windows program under Wine, without a screen. Wine's own settings go to
# FOLDER, its server and libraries are looked for beside it.
set -eu
export WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe='
wine=$2
shift 2
case $wine in
*64) export WINEARCH=win64 WINESERVER=${wine%/*}/wineserver64 ;;
*) export WINEARCH=win32 WINESERVER=${wine%/*}/wineserver32 LD_LIBRARY_PATH=${wine%/wine/wine}/i386-linux-gnu ;;
esac
exec "$wine" "$@"
