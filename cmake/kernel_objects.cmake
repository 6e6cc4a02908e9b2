# How kernels and what is linked with them are compiled.

# The options of the kernels last generated.
function(set_options library)
  target_compile_options(${library} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:
    -fno-exceptions -fno-rtti -fvisibility=hidden
    ${targetOptions}
    -mstackrealign # callers promise no stack alignment: 4 bytes on 32-bit x86, and no more is asked on 64-bit
    $<$<CXX_COMPILER_ID:GNU>:-maccumulate-outgoing-args> # else exports that end in a jump start dearer
    $<$<CXX_COMPILER_ID:GNU>:-fno-lra-remat> # no sum twice to save a register
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized> # in the casts of GCC 12's own headers
    -fno-tree-slp-vectorize # kernels come vectorised as far as it pays
    -ffunction-sections -fdata-sections # a program with the static library keeps what it calls
  >)
endfunction()

# add_objects(OBJECTS SOURCE...): of the kernels last generated, and what is written by hand.
function(add_objects objects)
  add_library(${objects} OBJECT ${ARGN})
  set_target_properties(${objects} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${objects} PRIVATE
    ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/frame ${PROJECT_BINARY_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR} ${generated})
  set_options(${objects})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT generated STREQUAL ${PROJECT_BINARY_DIR}/generated)
    # Takes most of a second to read the intrinsics of wider targets.
    target_precompile_headers(${objects} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:${generated}/target.h>)
  endif()
endfunction()
