# What makes a fault in the program harder to use: checked stack frames and buffer sizes, code at addresses
# that nobody knows, tables that are read-only before the program begins. scripts/check-hardening looks
# whether an executable has it.
include(CheckPIESupported)
check_pie_supported(LANGUAGES C CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(-fstack-protector-strong)
# The sizes are known to an optimising compiler only; sanitizers check them in their own way.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

if(WIN32)
  # Makes the compiler link the checks' library in; SvcinstWindows says what the linker is to do.
  add_link_options(-fstack-protector-strong)
else()
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
