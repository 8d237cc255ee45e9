// Formatting on Windows, beside the C runtime there: windows_format_bench ours|peer COUNT prints
// the ten messages so many times into memory. Fails when both don't print the same.
#include <cstdio>
#include <cstdlib>

#include "bench/messages.h"

namespace svcinst::bench {
namespace {

int print_peer(char* buffer, const char* format, std::va_list arguments) {
  return _vsnprintf(buffer, kSize, format, arguments);
}

template <Print print>
void repeat(int count) {
  while (count-- > 0) print_mix(Printf<print>(), keep);
}

}  // namespace
}  // namespace svcinst::bench

int main(int argc, char** argv) {
  using namespace svcinst::bench;
  if (argc != 3 || mix_text(Printf<print_ours>()) != mix_text(Printf<print_peer>()))
    return EXIT_FAILURE;
  const bool ours = std::string_view(argv[1]) == "ours";
  (ours ? repeat<print_ours> : repeat<print_peer>)(std::atoi(argv[2]));
}
