# cmake --install: headers, library, CMake package and pkg-config module. Nothing in them states an absolute path, so an
# installed tree may be moved. The components become packages (velum_packages.cmake): velum_runtime has what programs
# need to run, velum_tool the command-line program, and velum_development all else.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME velum_development)
set(velum_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/velum")

# CMake before 3.23, which a user may have, knows no file sets: for it the include folder is stated once more.
install(TARGETS velum EXPORT velumTargets
  RUNTIME COMPONENT velum_runtime
  LIBRARY COMPONENT velum_runtime NAMELINK_COMPONENT velum_development
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT velumTargets NAMESPACE velum:: DESTINATION "${velum_package_dir}")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/velumConfig.cmake.in" "${PROJECT_BINARY_DIR}/velumConfig.cmake"
  INSTALL_DESTINATION "${velum_package_dir}"
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
# Before 1.0 a new minor version may change the interface; from 1.0 on this becomes SameMajorVersion.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/velumConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/velumConfig.cmake" "${PROJECT_BINARY_DIR}/velumConfigVersion.cmake"
        DESTINATION "${velum_package_dir}")

file(RELATIVE_PATH velum_pc_to_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" velum_pc_to_prefix "${velum_pc_to_prefix}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/velum.pc.in" "${PROJECT_BINARY_DIR}/velum.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/velum.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# Within another project the folder of that name is the other project's.
set(velum_doc_dir "${CMAKE_INSTALL_DOCDIR}")
if(NOT PROJECT_IS_TOP_LEVEL)
  set(velum_doc_dir "${CMAKE_INSTALL_DATAROOTDIR}/doc/velum")
endif()
foreach(page IN ITEMS README SECURITY CHANGELOG CONTRIBUTING)
  install(FILES "${PROJECT_SOURCE_DIR}/${page}.md" DESTINATION "${velum_doc_dir}")
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${velum_doc_dir}"
        FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.ksy")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${velum_doc_dir}")
