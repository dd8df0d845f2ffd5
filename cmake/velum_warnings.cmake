# Warnings for velum's own targets; nothing here reaches the targets of a project that uses velum.

function(velum_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    # gcc 12 sees overlapping copies in inlined std::string code at -O3 where there are none, and a count behind the end
    # of an object where it has guessed a class wrong.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict -Wno-stringop-overflow)
    endif()
    if(VELUM_WARNINGS_AS_ERRORS)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()

# velum_forbid_global_constructors(<target> EXCEPT <source>...)
#
# clang only. Its companion -Wexit-time-destructors stays off: it also reports the tables that stand inside functions,
# which are made on first use and destroyed at exit on purpose.
function(velum_forbid_global_constructors target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "EXCEPT")
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${target} PRIVATE -Wglobal-constructors)
    set_property(SOURCE ${arg_EXCEPT} APPEND PROPERTY COMPILE_OPTIONS -Wno-global-constructors)
  endif()
endfunction()
