# What is different for a Windows program: how it is linked, and its resources.

# Everything that isn't part of Windows is linked in. The reader and the matcher follow nested groups
# with nested calls, as deep as grammar/nesting.h allows, which needs more than the usual 1 MB of stack.
add_link_options(-static LINKER:--stack,8388608)
# The same sources give the same bytes, wherever and whenever they are built.
add_link_options(LINKER:--no-insert-timestamp)
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")

# The runtime library counts a text's bytes one by one, behind a call through a pointer: formatting takes
# two thirds of the time when the compiler writes its own code for it.
add_compile_options("$<$<CONFIG:Release>:-ffunction-sections;-fdata-sections;-minline-all-stringops>")

# svcinst_windows_program(TARGET): what only the shipped executable gets: its resources and the
# import library for plug-ins.
function(svcinst_windows_program target)
  set(resources "${PROJECT_SOURCE_DIR}/platform/windows/resources")
  configure_file("${resources}/program.rc.in" "${CMAKE_CURRENT_BINARY_DIR}/program.rc" @ONLY)
  set_property(SOURCE "${CMAKE_CURRENT_BINARY_DIR}/program.rc"
    PROPERTY OBJECT_DEPENDS "${resources}/program.manifest")
  target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/program.rc"
    "${PROJECT_SOURCE_DIR}/platform/windows/no_wildcards.cpp")
  target_include_directories(${target} PRIVATE "${resources}")
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
  target_link_options(${target} PRIVATE
    LINKER:--dynamicbase,--nxcompat,--high-entropy-va LINKER:--gc-sections)
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    # Leaves the symbol by which scripts/check-hardening sees whether stack frames are checked, and the date
    # within the file, which is none.
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_STRIP} --preserve-dates --keep-symbol=__stack_chk_fail $<TARGET_FILE:${target}>)
  endif()
  install(TARGETS ${target} ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
endfunction()
