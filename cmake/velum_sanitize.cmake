# VELUM_SANITIZE instruments everything below this directory: half-instrumented programs give false reports.

if(VELUM_SANITIZE)
  add_compile_options("-fsanitize=${VELUM_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${VELUM_SANITIZE}")
endif()

# Gives a test executable the sanitizers' settings, so that they hold however it is started.
function(velum_sanitizer_defaults target)
  if(VELUM_SANITIZE)
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/sanitizer_defaults.cpp")
  endif()
endfunction()
