# What the toolchains have in common: libraries are those of the target alone, programs those of this machine, and Boost,
# of which velum needs nothing but headers, is this machine's too. Its folder is linked into the build folder: all of
# /usr/include would bring the headers of another system.

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(what IN ITEMS LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${what} ONLY)
endforeach()

set(VELUM_BOOST_HEADERS /usr/include CACHE PATH "The folder with the folder boost, for a cross compiler")
get_property(is_trial GLOBAL PROPERTY IN_TRY_COMPILE)
if(NOT is_trial)
  set(Boost_NO_BOOST_CMAKE ON)
  set(Boost_INCLUDE_DIR "${CMAKE_BINARY_DIR}/headers")
  file(MAKE_DIRECTORY "${Boost_INCLUDE_DIR}")
  file(CREATE_LINK "${VELUM_BOOST_HEADERS}/boost" "${Boost_INCLUDE_DIR}/boost" SYMBOLIC)
endif()
