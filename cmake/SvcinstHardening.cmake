# What makes a fault in the program harder to use: checked stack frames and buffer sizes, code at addresses
# that nobody knows, tables that are read-only before the program begins. scripts/check-hardening looks
# whether an executable has it.
include(CheckPIESupported)
check_pie_supported(LANGUAGES C CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(-fstack-protector-strong)
# The sizes are known to an optimising compiler only; sanitizers check them in their own way.
add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")

if(WIN32)
  # Makes the compiler link the checks' library in; SvcinstWindows says what the linker is to do.
  target_link_options(svcinst_options INTERFACE -fstack-protector-strong)
  # Of that library we replace the guard, in every executable of ours.
  add_library(svcinst_stack_guard OBJECT platform/windows/stack_guard.cpp)
  target_include_directories(svcinst_stack_guard PRIVATE platform/windows/include)
  target_link_libraries(svcinst_stack_guard PUBLIC svcinst_options)
  link_libraries($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:svcinst_stack_guard>)
else()
  # Such code could be part of a shared library, where a call within a file could lead elsewhere.
  add_compile_options(-fno-semantic-interposition)
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
