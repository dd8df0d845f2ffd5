# What Debian wants in each package and `cmake --install` doesn't make. cpack includes this with its own variables, when
# the components are installed each in a folder of its own.

string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "velum (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}; changelog.gz in libvelum-dev says what it has.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")

function(compress)
  execute_process(COMMAND gzip -9n ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} name)
  set(share "${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share")
  set(doc "${share}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}")
  configure_file("${CMAKE_CURRENT_LIST_DIR}/copyright" "${doc}/copyright" COPYONLY)
  file(WRITE "${doc}/changelog.Debian" "${changelog}")
  file(GLOB manual_pages "${share}/man/man*/*[0-9]")
  compress("${doc}/changelog.Debian" ${manual_pages})
  if(EXISTS "${doc}/CHANGELOG.md") # by the name that Debian has for it; the pages lead to the other
    configure_file("${doc}/CHANGELOG.md" "${doc}/changelog" COPYONLY)
    compress("${doc}/changelog")
  endif()
endforeach()
