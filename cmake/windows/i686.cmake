# 32-bit Windows by Debian's mingw-w64, and Wine to run what it makes.
set(windowsTriple i686-w64-mingw32)
set(wine ${CMAKE_CURRENT_LIST_DIR}/../../build/wine32/usr/lib/wine/wine) # where ./dev windows puts it
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
