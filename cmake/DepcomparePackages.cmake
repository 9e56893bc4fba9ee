# What the preset package makes packages of: a Debian package per component. Those of ours that need
# each other are of the same version, since the library's interface may change with any.
set(library_package "libdependency-comparisons${PROJECT_VERSION_MAJOR}")
set(same_version "(= ${PROJECT_VERSION})")
set(debian "${CMAKE_CURRENT_LIST_DIR}/debian")

set(CPACK_PACKAGE_CONTACT "The maintainers of depcompare <maintainers@depcompare.invalid>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_SOURCE_DIR}/build/packages")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each description begins with its own
set(CPACK_COMPONENTS_ALL program library development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${debian}/files.cmake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME depcompare)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${library_package} ${same_version}")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "compare two dependency graphs
depcompare compares the dependency graphs of two states of a project and shows
what changed: files, dependencies, cycles, versions. It reads what build tools
and package managers write, and answers as text, as a web page, in a pull
request, or by its exit status.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME "${library_package}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${debian}/triggers")
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "comparison of two dependency graphs (libraries)
The library that depcompare compares with, and those that it is built on: the
graph model, insights, message catalogs, the object model of tables.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libdependency-comparisons-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_package} ${same_version}, libboost-dev (>= 1.74)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "depcompare ${same_version}")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "comparison of two dependency graphs (development)
The headers of the libraries, a CMake package, and a file for pkg-config. The
package depcompare has the guide to embedding and its example.")
include(CPack)

# The program of the relocatable archive (cmake/archive.sh), from the same objects. Libraries of others
# are linked statically if Debian has them so; but ICU would be there twice, for a library of ours needs
# it too. The path to the others is a DT_RPATH, which holds for what they need in turn.
if(DEPCOMPARE_BUILD_HOST)
  set(static_names expat sodium re2 z)
  if(DEPCOMPARE_JEMALLOC)
    list(APPEND static_names jemalloc)
  endif()
  set(static "")
  foreach(name IN LISTS static_names)
    find_library(DEPCOMPARE_STATIC_${name} lib${name}.a)
    if(DEPCOMPARE_STATIC_${name})
      list(APPEND static "${DEPCOMPARE_STATIC_${name}}")
    endif()
  endforeach()
  add_executable(depcompare_archive EXCLUDE_FROM_ALL $<TARGET_OBJECTS:depcompare>)
  set_target_properties(depcompare_archive PROPERTIES
    INSTALL_RPATH "$ORIGIN/../lib"
    LINKER_LANGUAGE CXX
    OUTPUT_NAME depcompare
    RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/archive")
  set(CMAKE_SKIP_INSTALL_RPATH OFF)  # for this program only
  target_link_options(depcompare_archive PRIVATE LINKER:--as-needed,--disable-new-dtags)
  # Whoever comes first provides: the host needs them, and the shared ones come with it, not needed.
  target_link_libraries(depcompare_archive PRIVATE
    "$<TARGET_FILE:depcompare_host>" ${static} depcompare::host)
endif()
