# Included where it is needed, takes effect once.
include_guard(GLOBAL)

# svcinst_export_log(TARGET): makes an executable export the logger's functions, log/exports.txt, and
# nothing else. They are linked in even where the executable calls none of them.
set(SVCINST_LOG_EXPORTS "${PROJECT_SOURCE_DIR}/log/exports.txt")

# Code that addresses another library's data directly (`stdout`) would make the executable carry and
# export a copy of it; position-independent code doesn't. Calls within a file stay direct and inlined.
if(NOT WIN32)
  target_compile_options(svcinst_options INTERFACE -fPIC -fno-semantic-interposition)
endif()

function(svcinst_export_log target)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${SVCINST_LOG_EXPORTS}")
  file(STRINGS "${SVCINST_LOG_EXPORTS}" names)
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_exports")
  target_link_libraries(${target} PRIVATE svcinst_log)
  if(WIN32)
    list(JOIN names "\n  " lines)
    file(WRITE "${list}.def" "EXPORTS\n  ${lines}\n")
    target_sources(${target} PRIVATE "${list}.def")
    # The linker writes the import library before an optimisation as a whole brings the functions in.
    list(TRANSFORM names PREPEND "LINKER:--undefined=")
    target_link_options(${target} PRIVATE ${names})
    return()
  endif()
  list(JOIN names "; " lines)
  file(WRITE "${list}.list" "{ ${lines}; };\n")
  # What a shared library refers to is exported as well unless the version script hides it.
  file(WRITE "${list}.map" "{ global: ${lines}; local: *; };\n")
  list(TRANSFORM names PREPEND "LINKER:--require-defined=")
  target_link_options(${target} PRIVATE ${names} "LINKER:--dynamic-list=${list}.list"
                      "LINKER:--version-script=${list}.map")
  # An optimisation as a whole compiles when it links. Among the libraries this stands behind CMake's -fPIE.
  target_link_libraries(${target} PRIVATE -fPIC)
endfunction()
