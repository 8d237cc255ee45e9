// Any bytes as a grammar text and, behind a NUL, an input for it: the sanitizers watch.
#include <string>

#include "grammar/matcher.h"

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::string text = bytes.substr(0, bytes.find('\0'));
  const std::string input = bytes.substr(std::min(text.size() + 1, size));
  const Grammar grammar{TextView(text)};
  // Nothing is remembered, so a match may take exponential time. Short ones show as much.
  if (text.size() <= 128 && input.size() <= 12)
    match(grammar.start_rule, input.data(), input.size(), *grammar.rules);
  return 0;
}
