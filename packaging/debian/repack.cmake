# Takes out the scripts that CPack puts into the package of a shared library: they call ldconfig, and Debian wants the
# trigger alone, which is there too.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(files "${package}.files")
  file(REMOVE_RECURSE "${files}")
  execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${files}" COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE "${files}/DEBIAN/postinst" "${files}/DEBIAN/postrm")
  execute_process(COMMAND dpkg-deb --root-owner-group --build "${files}" "${package}"
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${files}")
endforeach()
