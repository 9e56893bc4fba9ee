# The target docs: the reference of the public headers, as HTML in the folder docs of the build's
# parent.
find_package(Doxygen REQUIRED)

get_property(libraries GLOBAL PROPERTY DEPCOMPARE_LIBRARIES)
set(headers "")
foreach(library IN LISTS libraries)
  get_target_property(files ${library} HEADER_SET)
  list(APPEND headers ${files})
endforeach()

set(DOXYGEN_PROJECT_NAME "${PROJECT_NAME}")
set(DOXYGEN_PROJECT_BRIEF "${PROJECT_DESCRIPTION}")
set(DOXYGEN_OUTPUT_DIRECTORY "${PROJECT_SOURCE_DIR}/build/docs")
set(DOXYGEN_STRIP_FROM_INC_PATH
  "${PROJECT_SOURCE_DIR}/include" "${PROJECT_SOURCE_DIR}/graph/include"
  "${PROJECT_SOURCE_DIR}/insight/include")
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_BUILTIN_STL_SUPPORT YES)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(DOXYGEN_QUIET YES)
doxygen_add_docs(docs ${headers})
