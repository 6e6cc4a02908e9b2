# The ZIP file for Windows: DLLs, import libraries of mingw-w64 and MSVC, static libraries, headers, CMake package.
foreach(name zrfgen zrfcore)
  install(FILES ${PROJECT_BINARY_DIR}/lib/${name}.lib DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE RENAME LICENSE.txt DESTINATION . COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/docs/windows.md RENAME README.md DESTINATION . COMPONENT development)

set(CPACK_GENERATOR ZIP)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_FILE_NAME zrfgen-${PROJECT_VERSION}-windows-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_CHECKSUM SHA256)
include(CPack)
