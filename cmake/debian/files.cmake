# Run by cpack after it installed each component into a folder of its own: adds what Debian asks of every
# package, and moves what Debian has elsewhere.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)  # of SOURCE_DATE_EPOCH
string(TIMESTAMP year "%Y" UTC)
set(version "${CPACK_PACKAGE_VERSION}")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" upper)
  set(package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  set(share "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr/share")
  file(WRITE "${share}/doc/${package}/changelog" "\
depcompare (${version}) unstable; urgency=medium

  * Version ${version}: CHANGELOG.md of the package depcompare says what is new.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
  file(WRITE "${share}/doc/${package}/copyright" "\
Copyright ${year} the maintainers of depcompare

The project has not declared a license yet.
")
  file(GLOB to_pack "${share}/doc/${package}/changelog" "${share}/man/man1/*.1")
  execute_process(COMMAND gzip -9n ${to_pack} COMMAND_ERROR_IS_FATAL ANY)
  set(overrides "${CMAKE_CURRENT_LIST_DIR}/${component}.lintian")
  if(EXISTS "${overrides}")
    file(MAKE_DIRECTORY "${share}/lintian/overrides")
    file(COPY_FILE "${overrides}" "${share}/lintian/overrides/${package}")
  endif()
  if(EXISTS "${share}/zsh/site-functions")
    file(RENAME "${share}/zsh/site-functions" "${share}/zsh/vendor-completions")
  endif()
endforeach()
