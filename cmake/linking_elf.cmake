# How a shared library is linked on Linux. cmake/windows/linking.cmake has the same functions for Windows.

# A shared library that finds its like wherever the build or the installation is moved.
function(set_shared_properties target)
  set_target_properties(${target} PROPERTIES
    LINKER_LANGUAGE C # no C++ run time
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    BUILD_WITH_INSTALL_RPATH ON
    INSTALL_RPATH "$ORIGIN")
  # Addresses that the loader fills in are read-only once it has.
  target_link_options(${target} PRIVATE LINKER:-z,relro LINKER:-z,now)
endfunction()

# Exports what the generator lists for a library in a folder, and nothing else.
function(export_entries target library folder)
  target_link_options(${target} PRIVATE LINKER:--version-script=${folder}/${library}.map)
  if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize") # whose run time programs bring
    target_link_options(${target} PRIVATE LINKER:--no-undefined)
  endif()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${folder}/${library}.map)
endfunction()
