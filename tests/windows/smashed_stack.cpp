// Writes behind its buffer, which must end the process: byte by byte, or with an argument through a
// function that is told the buffer's size.
#include <cstring>

int main(int argc, char**) {
  char buffer[8];
  const volatile std::size_t too_many = 64;  // bytes; not known to the compiler
  if (argc > 1) {
    std::memset(buffer, 'x', too_many);
  } else {
    volatile char* const bytes = buffer;
    for (std::size_t i = 0; i < too_many; ++i) bytes[i] = 'x';
  }
  return buffer[0];
}
