# What every target of this project is compiled with.
add_library(svcinst_options INTERFACE)
target_include_directories(svcinst_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(svcinst_options INTERFACE
  -Werror -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-align -Wformat=2
  -Wnull-dereference -Wundef
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>)

# svcinst_library(NAME sources...): the library of one folder.
function(svcinst_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC svcinst_options)
endfunction()
