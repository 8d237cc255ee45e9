// Writes behind its buffer, which must end the process: byte by byte, or with an argument through a
// function that is told the buffer's size.
#include <cstring>

int main(int argc, char**) {
  char buffer[8];
  const volatile std::size_t too_many = 64;  // bytes; not known to the compiler
  if (argc > 1) std::memset(buffer, 'x', too_many);
  for (volatile char* at = buffer; at < buffer + too_many; ++at) *at = 'x';
  return buffer[0];
}
