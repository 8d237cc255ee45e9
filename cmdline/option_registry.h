// The declared options of a program, for its help text. Parsing does not ask the registry.
#pragma once

#include <cstdint>

#include "common/byte_string.h"
#include "common/linked_list.h"

namespace svcinst {

struct OptionSpec {
  ByteString short_name;  // the letter behind "-"; may be empty
  ByteString long_name;   // the word behind "--"; may be empty
  ByteString help_text;   // one line
};

struct OptionRegistry {
  LinkedList<OptionSpec> options;  // in the order in which they are printed
  std::uint64_t count = 0;
  ByteString description;  // of the program, one line

  explicit OptionRegistry(TextView program_description) : description(program_description) {}
};

/// Appends a copy of `spec`. Prints a message to standard output and returns false, with the
/// registry unchanged, when an option with the same long or short name is there already; empty
/// names are never the same. Throws std::bad_alloc.
bool add_option(OptionRegistry& registry, const OptionSpec& spec);

/// The description, three empty lines and a line for each option: its names in 32 bytes, cut or
/// padded, and its help text. Throws std::bad_alloc.
ByteString build_help_text(const OptionRegistry& registry);

}  // namespace svcinst
