# What keeps the bits the same in every build. Everything that computes with floating-point numbers uses it.
if(NOT CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i[3-6]86")
  message(FATAL_ERROR "zrfgen is written for x86; this processor is ${CMAKE_SYSTEM_PROCESSOR}.")
endif()
foreach(flags CMAKE_C_FLAGS CMAKE_CXX_FLAGS CMAKE_C_FLAGS_RELEASE CMAKE_CXX_FLAGS_RELEASE)
  if("${${flags}}" MATCHES "-Ofast|-ffast-math|-funsafe-math-optimizations|-fassociative-math|-freciprocal-math\
|-ffinite-math-only|-fno-signed-zeros")
    message(FATAL_ERROR "${flags} has ${CMAKE_MATCH_0}, and zrfgen promises the same bits from every build: take the "
      "option out. Programs that use the library may be compiled with it.")
  endif()
endforeach()

add_compile_options(-Wall -Wextra)
# GCC 12 warns of overlaps inside std::string's operator+ that cannot happen (GCC bug 105651).
add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
add_compile_options(
  -ffp-contract=off   # no fused multiply-add where the text has two roundings
  -msse2 -mfpmath=sse # no x87: it rounds to other widths
)
