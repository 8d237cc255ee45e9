# What this project's own files are compiled with. As errors only where the presets say so: a compiler that
# we haven't seen may warn of more.
add_compile_options(
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-align -Wformat=2 -Wnull-dereference
  -Wundef "$<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast;-Wnon-virtual-dtor;-Woverloaded-virtual>")

# What whoever links a library of ours needs as well.
add_library(svcinst_options INTERFACE)
target_include_directories(svcinst_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_features(svcinst_options INTERFACE cxx_std_20)

# svcinst_library(NAME sources...): the library of one folder.
function(svcinst_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC svcinst_options)
  # A function that log.h does not declare would be exported under a name of C++, or not at all.
  target_compile_options(${name} PRIVATE -Wmissing-declarations)
endfunction()
