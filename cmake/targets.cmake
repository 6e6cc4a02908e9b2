# The machines that libraries are built for: in `libraryTarget` the one of libzrfgen itself, and in `widerTargets`
# those for which the loader finds a library of its own beside it.
option(ZRFGEN_WIDER "Build libraries for machines with wider vectors too, which the loader chooses on them" ON)
set(ZRFGEN_TARGET sse3 CACHE STRING "The machine of libzrfgen: sse3, which is any, x86-64-v3 or x86-64-v4")

set(libraryTarget ${ZRFGEN_TARGET})
set(widerTargets)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  if(NOT ZRFGEN_TARGET STREQUAL sse3)
    message(FATAL_ERROR "ZRFGEN_TARGET is ${ZRFGEN_TARGET}, which has 64-bit code alone; a 32-bit build is for sse3.")
  endif()
  set(libraryTarget i386)
elseif(ZRFGEN_WIDER AND ZRFGEN_TARGET STREQUAL sse3)
  set(widerTargets x86-64-v3 x86-64-v4)
endif()
