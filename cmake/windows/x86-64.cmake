# 64-bit Windows by Debian's mingw-w64, and Wine to run what it makes.
set(windowsTriple x86_64-w64-mingw32)
set(wine /usr/lib/wine/wine64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
