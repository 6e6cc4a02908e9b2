# How a DLL and its import libraries are made, by mingw-w64. cmake/linking_elf.cmake has the same functions for Linux.
enable_language(RC)
find_program(ZRFGEN_LLVM_DLLTOOL llvm-dlltool REQUIRED)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin) # programs find the DLLs beside them

function(set_shared_properties target)
  set_target_properties(${target} PROPERTIES
    LINKER_LANGUAGE C # no C++ run time
    PREFIX ""
    VERSION ${PROJECT_VERSION})
  target_link_options(${target} PRIVATE -static-libgcc LINKER:--no-insert-timestamp LINKER:-s)
endfunction()

# Exports what the generator lists for a library in a folder, with ordinals in the order of the list.
function(export_entries target library folder)
  file(STRINGS ${folder}/${library}_entries.inc entries)
  set(functions)
  foreach(entry IN LISTS entries)
    string(REGEX MATCH "ENTRY\\((.*), (.*)\\)" matched "${entry}")
    list(APPEND functions ${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
  endforeach()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${folder}/${library}_entries.inc)
  export_functions(${target} ${functions})
endfunction()

# export_functions(TARGET [FUNCTION ARGUMENT_BYTES]...): exports functions by undecorated names, numbered from 1, and makes
# the import libraries: that of mingw-w64 and that of MSVC. The linker's own would ask for decorated names.
function(export_functions target)
  get_target_property(name ${target} OUTPUT_NAME)
  set(ordinal 0)
  set(text "LIBRARY ${name}.dll\nEXPORTS\n")
  while(ARGN)
    list(POP_FRONT ARGN function argumentBytes)
    math(EXPR ordinal "${ordinal} + 1")
    if(CMAKE_SIZEOF_VOID_P EQUAL 4) # as the compiler decorates functions that remove their arguments
      string(APPEND function "@${argumentBytes}")
    endif()
    string(APPEND text "    ${function} @${ordinal}\n")
  endwhile()
  set(definitions ${PROJECT_BINARY_DIR}/${name}.def)
  file(CONFIGURE OUTPUT ${definitions} CONTENT "${text}" @ONLY)
  target_link_options(${target} PRIVATE LINKER:--kill-at ${definitions})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${definitions})
  set(machine $<IF:$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>,i386,i386:x86-64>)
  add_custom_command(TARGET ${target} POST_BUILD WORKING_DIRECTORY $<TARGET_LINKER_FILE_DIR:${target}>
    COMMAND ${CMAKE_DLLTOOL} --deterministic-libraries --temp-prefix ${name} --kill-at
      -d ${definitions} -D ${name}.dll -l $<TARGET_LINKER_FILE_NAME:${target}>
    COMMAND ${ZRFGEN_LLVM_DLLTOOL} -m ${machine} -k -d ${definitions} -D ${name}.dll -l ${name}.lib
    VERBATIM)
endfunction()
