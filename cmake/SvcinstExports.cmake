# svcinst_export_log(TARGET): makes an executable export the logger's functions, log/exports.txt, and
# nothing else. They are linked in even where the executable calls none of them.
set(SVCINST_LOG_EXPORTS "${PROJECT_SOURCE_DIR}/log/exports.txt")

function(svcinst_export_log target)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${SVCINST_LOG_EXPORTS}")
  file(STRINGS "${SVCINST_LOG_EXPORTS}" names)
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_exports")
  target_link_libraries(${target} PRIVATE svcinst_log)
  if(WIN32)
    list(JOIN names "\n  " lines)
    file(WRITE "${list}.def" "EXPORTS\n  ${lines}\n")
    target_sources(${target} PRIVATE "${list}.def")
    return()
  endif()
  list(JOIN names "; " lines)
  file(WRITE "${list}.list" "{ ${lines}; };\n")
  # What a shared library refers to is exported as well unless the version script hides it.
  file(WRITE "${list}.map" "{ global: ${lines}; local: *; };\n")
  list(TRANSFORM names PREPEND "LINKER:--require-defined=")
  target_link_options(${target} PRIVATE ${names} "LINKER:--dynamic-list=${list}.list"
                      "LINKER:--version-script=${list}.map")
endfunction()
