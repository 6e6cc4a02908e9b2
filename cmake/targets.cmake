# The machines that libraries are built for: the one of libzrfgen itself, and in `widerTargets` those for which the
# loader finds a library of its own beside it.
option(ZRFGEN_WIDER "Build libraries for machines with wider vectors too, which the loader chooses on them" ON)
set(ZRFGEN_TARGET sse3 CACHE STRING "The machine of libzrfgen: sse3, which is any, x86-64-v3 or x86-64-v4")

set(widerTargets)
if(NOT ZRFGEN_TARGET STREQUAL sse3)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    message(FATAL_ERROR "ZRFGEN_TARGET is ${ZRFGEN_TARGET}, which has 64-bit code alone; a 32-bit build is for sse3.")
  endif()
elseif(ZRFGEN_WIDER AND CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(widerTargets x86-64-v3 x86-64-v4)
endif()
