# Installs the program, the libraries with their headers, and what finds them: the CMake package and a
# file for pkg-config. The components are program, library and development.
# Included last, when every target has its headers.
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY DEPCOMPARE_LIBRARIES)
get_property(aliases GLOBAL PROPERTY DEPCOMPARE_ALIASES)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/depcompare")

foreach(library IN LISTS libraries)
  install(TARGETS ${library} EXPORT depcompare-targets
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    FILE_SET HEADERS COMPONENT development
    FILE_SET generated COMPONENT development)
endforeach()
if(TARGET depcompare)
  install(TARGETS depcompare EXPORT depcompare-targets RUNTIME COMPONENT program)
  set(completions "${PROJECT_SOURCE_DIR}/share/completions")
  install(FILES "${completions}/depcompare.bash" RENAME depcompare COMPONENT program
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES "${completions}/_depcompare" COMPONENT program
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
  install(FILES "${completions}/depcompare.fish" COMPONENT program
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
  # In the folders of the source tree, so that the links between the pages hold.
  install(
    FILES
      "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
      "${PROJECT_SOURCE_DIR}/CONTRIBUTING.md"
      "${PROJECT_SOURCE_DIR}/README.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT program)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/examples"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT program
    FILES_MATCHING PATTERN "*.md" PATTERN "page.png" PATTERN "scale.svg" PATTERN "report.schema.json"
    PATTERN "notes-*" PATTERN "terms-*" PATTERN "embed/*")
endif()

install(EXPORT depcompare-targets
  NAMESPACE depcompare::
  DESTINATION "${package_dir}"
  COMPONENT development)
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/depcompareConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/depcompareConfig.cmake"
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/depcompareConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(
  FILES
    "${PROJECT_BINARY_DIR}/depcompareConfig.cmake"
    "${PROJECT_BINARY_DIR}/depcompareConfigVersion.cmake"
  DESTINATION "${package_dir}"
  COMPONENT development)

# For pkg-config, the library with what it needs and the texts; the file may be moved with the rest.
list(REMOVE_ITEM libraries dependency_insight)
list(REVERSE libraries)
list(TRANSFORM libraries PREPEND "-l")
list(JOIN libraries " " linked)
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH to_prefix "${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir}" "${CMAKE_INSTALL_PREFIX}")
cmake_path(SET to_prefix NORMALIZE "${to_prefix}.")
configure_file("${CMAKE_CURRENT_LIST_DIR}/depcompare.pc.in" "${PROJECT_BINARY_DIR}/depcompare.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/depcompare.pc"
  DESTINATION "${pkgconfig_dir}"
  COMPONENT development)
