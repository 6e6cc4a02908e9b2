#!/usr/bin/env bash
# fetch_wine32.sh FOLDER unpacks Debian's 32-bit Wine, as far as programs without windows need it, into a folder. It is
# not installed, since that takes a second architecture for the whole system, all of whose package lists would have to
# be sound from then on.
set -euo pipefail
mkdir -p "$1"
cd "$1"
[ -e usr/lib/wine/wineserver32 ] && exit
mkdir -p apt/lists/partial apt/archives/partial packages
touch apt/status
options=(-qq -o APT::Architecture=i386 -o APT::Architectures=i386 -o APT::Sandbox::User= -o Debug::NoLocking=1
    -o Dir::State="$PWD/apt" -o Dir::State::status="$PWD/apt/status" -o Dir::Cache="$PWD/apt")
echo "Fetching 32-bit Wine"
# A list that a mirror does not have right is not missed, unless a package comes from it.
apt-get "${options[@]}" update 2>apt/update.log || true
(cd packages && apt-get "${options[@]}" download wine32 libwine libz-mingw-w64 libunwind8 liblzma5) || {
    cat apt/update.log >&2
    echo "fetch_wine32: no 32-bit Wine from apt; sources that are for [arch=amd64] alone have none" >&2
    exit 1
}
for package in packages/*.deb; do
    dpkg-deb -x "$package" unpacked
done
# A library of another package, marked as one of Wine's own, as the package does when it is installed.
zlib=unpacked/usr/i686-w64-mingw32/lib/zlib1.dll
{
    head -c 64 "$zlib"
    printf 'Wine builtin DLL'
    head -c 16 /dev/zero
    tail -c +97 "$zlib"
} >unpacked/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll
mv unpacked/usr usr # all of it is there now
rm -r apt packages unpacked
