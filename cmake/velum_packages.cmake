# cpack: Debian's packages, one for each component of velum_install.cmake. They need a build with the prefix /usr, as
# the preset `packages` makes it; scripts/packages does all of it.

set(velum_debian "${PROJECT_SOURCE_DIR}/packaging/debian")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "velum developers <velum@example.com>")
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${velum_debian}/finish.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${velum_debian}/repack.cmake")
# What stands here becomes the first line of every description, but for these words, which are CPack's own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE velum)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/velum")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# velum_package(<component> <package> <section> <first line> <last line>)
macro(velum_package component package section synopsis has)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  string(TOUPPER ${component} velum_component)
  set(CPACK_DEBIAN_${velum_component}_PACKAGE_NAME "${package}")
  set(CPACK_DEBIAN_${velum_component}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${velum_component}_DESCRIPTION "${synopsis}
velum keeps data in typed values under names and behaviour in counted objects
behind interfaces, and carries both in a tagged binary form: what is read back
has the types that it had, and objects that share others still do.

${has}")
endmacro()

velum_package(velum_runtime libvelum${velum_abi} libs
  "Counted objects and typed value maps: library"
  "This package has what programs need to run.")
set(CPACK_DEBIAN_VELUM_RUNTIME_PACKAGE_CONTROL_EXTRA "${velum_debian}/triggers")

velum_package(velum_development libvelum-dev libdevel
  "Counted objects and typed value maps: development files"
  "This package has the headers, the files for CMake and pkg-config, printers for\ngdb, the manual and the examples.")
set(CPACK_COMPONENT_VELUM_DEVELOPMENT_DEPENDS velum_runtime)
set(CPACK_DEBIAN_VELUM_DEVELOPMENT_PACKAGE_DEPENDS "libboost-dev (>= 1.74)")

if(TARGET velum-inspect)
  velum_package(velum_tool velum-inspect utils
    "Counted objects and typed value maps: look into documents"
    "This package has a program that shows what such documents hold.")
  set(CPACK_COMPONENT_VELUM_TOOL_DEPENDS velum_runtime)
endif()

include(CPack)
