# velum_drop_other_systems(<list>): takes the files out of the list that are for another system. A file whose name ends in
# _linux or _windows is for that system alone.

function(velum_drop_other_systems list_of_files)
  if(WIN32)
    list(FILTER ${list_of_files} EXCLUDE REGEX "_linux[.]cpp$")
  else()
    list(FILTER ${list_of_files} EXCLUDE REGEX "_windows[.]cpp$")
  endif()
  set(${list_of_files} "${${list_of_files}}" PARENT_SCOPE)
endfunction()
