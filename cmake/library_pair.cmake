# What a shared library and its static twin, <name> and <name>_static, have in common. They go to users by one
# name, zrfgen::<name>.
function(add_library_pair name)
  foreach(target ${name} ${name}_static)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>)
    target_include_directories(${target} PUBLIC
      $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(${target} PROPERTIES
      OUTPUT_NAME ${name}
      EXPORT_NAME ${name}
      LINKER_LANGUAGE C # no C++ run time
      LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib
      ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
  endforeach()
  set_shared_properties(${name})
  if(ZRFGEN_USE_STATIC_LIBS)
    add_library(zrfgen::${name} ALIAS ${name}_static)
  else()
    add_library(zrfgen::${name} ALIAS ${name})
  endif()
  install(TARGETS ${name} EXPORT shared
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime # where a shared library is no LIBRARY but a DLL
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
  install(TARGETS ${name}_static EXPORT static
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endfunction()

# Puts a shared library where the loader looks on machines of the level `machine` before it takes the one called
# <name>: the dynamic loader of the GNU C library, from version 2.33.
function(add_to_loader_folder target name machine)
  set(folder glibc-hwcaps/${machine})
  set_shared_properties(${target})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${name}
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib/${folder}
    INSTALL_RPATH "$ORIGIN:$ORIGIN/../..")
  install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/${folder} COMPONENT runtime NAMELINK_SKIP)
endfunction()
