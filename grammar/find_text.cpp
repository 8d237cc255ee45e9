#include "grammar/find_text.h"

#include <array>
#include <cstring>

#include "common/text_view.h"

namespace svcinst {
namespace {

constexpr std::uint64_t kLongestPlainNeedle = 256;

// Sunday's quick search: the byte just past the compared span tells how far to move on.
std::optional<std::uint64_t> quick_search(TextView text, std::uint64_t first, TextView needle) {
  std::array<std::uint64_t, 256> shift{};
  shift.fill(needle.size() + 1);
  for (std::uint64_t i = 0; i < needle.size(); ++i) {
    shift[static_cast<unsigned char>(needle[i])] = needle.size() - i;
  }
  for (std::uint64_t k = first; needle.size() <= text.size() - k;) {
    if (text.compare(k, needle.size(), needle) == 0) return k;
    const std::uint64_t past = k + needle.size();
    if (past == text.size()) break;
    k += shift[static_cast<unsigned char>(text[past])];
    if (k > text.size()) break;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::uint64_t> find_text(const char* text, std::uint64_t first, std::uint64_t last,
                                       const char* needle, std::uint64_t needle_length) {
  if (needle_length == 0) return first;
  if (last < first || last - first < needle_length - 1) return std::nullopt;
  const TextView haystack(text, last + 1);
  const TextView wanted(needle, needle_length);
  if (needle_length > kLongestPlainNeedle) return quick_search(haystack, first, wanted);
  const std::uint64_t found = haystack.find(wanted, first);
  if (found == TextView::npos) return std::nullopt;
  return found;
}

}  // namespace svcinst
