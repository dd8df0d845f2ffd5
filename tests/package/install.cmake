# Installs into an empty place and moves the result, so that nothing in it can lean on where it was installed.

set(first "${prefix} (first)")
file(REMOVE_RECURSE "${first}" "${prefix}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${build}" --config "${config}" --prefix "${first}"
                COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${first}" "${prefix}")

file(GLOB_RECURSE private "${prefix}/include/*/detail/*")
if(private)
  message(FATAL_ERROR "installed, but not public: ${private}")
endif()
