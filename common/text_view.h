// Text that somebody else owns: a start pointer and a length in bytes.
// A view must not outlive the text it looks into.
#pragma once

#include <string_view>

namespace svcinst {

using TextView = std::string_view;

/// True for a view without a start pointer. An empty text (a start pointer, length 0) is not
/// absent.
constexpr bool is_absent(TextView view) {
  return view.data() == nullptr;
}

}  // namespace svcinst
