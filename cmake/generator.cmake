# Builds the generator and runs it while the build is configured, since the lists of the libraries' sources are the
# generator's.

function(run_while_configuring what)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE log ERROR_VARIABLE log RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what} failed:\n${log}")
  endif()
endfunction()

if(ZRFGEN_KERNELGEN)
  if(NOT EXISTS ${ZRFGEN_KERNELGEN} OR IS_DIRECTORY ${ZRFGEN_KERNELGEN})
    message(FATAL_ERROR "ZRFGEN_KERNELGEN is '${ZRFGEN_KERNELGEN}', which is no file. Give the path of a kernelgen that "
      "is built already, or leave it empty to have it built.")
  endif()
  set(kernelgen ${ZRFGEN_KERNELGEN})
  add_executable(kernelgen IMPORTED GLOBAL)
  set_target_properties(kernelgen PROPERTIES IMPORTED_LOCATION ${kernelgen})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${kernelgen})
else()
  set(generatorBuild ${PROJECT_BINARY_DIR}/generator)
  set(kernelgen ${PROJECT_BINARY_DIR}/bin/kernelgen)
  if(NOT EXISTS ${kernelgen})
    message(NOTICE "Building the kernel generator, which takes half a minute on two processors")
  endif()
  run_while_configuring("Configuring the kernel generator" ${CMAKE_COMMAND}
    -S ${PROJECT_SOURCE_DIR}/cmake/generator -B ${generatorBuild} -G ${CMAKE_GENERATOR}
    -DCMAKE_MAKE_PROGRAM=${CMAKE_MAKE_PROGRAM} -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
    -DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS} -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${PROJECT_BINARY_DIR}/bin)
  run_while_configuring("Building the kernel generator" ${CMAKE_COMMAND} --build ${generatorBuild} --parallel)
  include(${generatorBuild}/targets.cmake)
  # A change of the generator or of a recipe configures the build again.
  file(GLOB_RECURSE generatorSources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/kernelgen/* ${PROJECT_SOURCE_DIR}/catalogue/* ${PROJECT_SOURCE_DIR}/*/recipes/*)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${generatorSources}
    ${PROJECT_SOURCE_DIR}/wht/buffer_size.h ${PROJECT_SOURCE_DIR}/dct4/split.h ${PROJECT_SOURCE_DIR}/dct4/tables.h
    ${PROJECT_SOURCE_DIR}/many/gain.h ${PROJECT_SOURCE_DIR}/many/many.h
    ${PROJECT_SOURCE_DIR}/frame/exports.cpp ${PROJECT_SOURCE_DIR}/frame/transforms.h
    ${PROJECT_SOURCE_DIR}/frame/families.inc)
endif()

# Has the kernels of a library generated for a target, each file when it is needed. Gives the folder `generated`, and by
# the generator's list there generatedSources, generatedIncludes and targetOptions.
macro(generate_kernels library target)
  set(generated ${PROJECT_BINARY_DIR}/generated)
  if(NOT ${target} STREQUAL ${libraryTarget})
    string(APPEND generated /${target})
  endif()
  run_while_configuring("Listing the kernels of ${target}" ${kernelgen} --target ${target} list ${generated})
  include(${generated}/${library}.cmake)
  foreach(file IN LISTS generatedSources generatedIncludes)
    add_custom_command(OUTPUT ${generated}/${file}
      COMMAND ${kernelgen} --target ${target} emit ${generated} ${file} DEPENDS ${kernelgen}
      COMMENT "Generating ${target}/${file}" VERBATIM)
  endforeach()
  list(TRANSFORM generatedSources PREPEND ${generated}/)
  list(TRANSFORM generatedIncludes PREPEND ${generated}/)
endmacro()
