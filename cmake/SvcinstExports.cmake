# svcinst_export_log(TARGET): makes an executable export the functions that log/log.h declares, each in a line
# that begins with its type, and nothing else. They are linked in even where the executable calls none of them.
function(svcinst_export_log target)
  set(header "${PROJECT_SOURCE_DIR}/log/log.h")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
  file(STRINGS "${header}" names REGEX "^[a-z].*[(]")
  list(TRANSFORM names REPLACE "^[^(]*[ *]([a-z0-9_]+)[(].*" "\\1")
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_exports")
  target_link_libraries(${target} PRIVATE svcinst_log)
  if(WIN32)
    list(JOIN names "\n  " lines)
    file(CONFIGURE OUTPUT "${list}.def" CONTENT "EXPORTS\n  ${lines}\n")
    target_sources(${target} PRIVATE "${list}.def")
    return()
  endif()
  list(JOIN names "; " lines)
  file(CONFIGURE OUTPUT "${list}.list" CONTENT "{ ${lines}; };\n")
  # What a shared library refers to is exported as well unless the version script hides it.
  file(CONFIGURE OUTPUT "${list}.map" CONTENT "{ global: ${lines}; local: *; };\n")
  list(TRANSFORM names PREPEND "LINKER:--require-defined=")
  target_link_options(${target} PRIVATE ${names} "LINKER:--dynamic-list=${list}.list"
                      "LINKER:--version-script=${list}.map")
endfunction()
