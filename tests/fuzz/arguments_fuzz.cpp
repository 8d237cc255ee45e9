// Any argument vector, one argument a line, through the whole program with a scripted Service
// Control Manager. The first line is the manager's script: which call fails, then a status a byte.
#include <string>
#include <vector>

#include "app/arguments.h"
#include "app/program.h"
#include "cmdline/option_lookup.h"
#include "grammar/matcher.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/support/scripted_services.h"

namespace svcinst {
namespace {

void play(TextView script) {
  reset_scripted_services();
  if (script.empty()) return;
  scripted_services().failing_call = script[0] - '0';
  if (script.size() > 1) scripted_services().statuses.clear();
  for (const char c : script.substr(1)) {
    const auto byte = static_cast<unsigned char>(c);
    scripted_services().statuses.push_back({byte & 7U, byte >> 3 & 3U, (byte >> 5) * 1000U});
  }
}

// The value of an option as the program is to use it; absent for one that isn't given.
TextView value_of(const Grammar& grammar, const ExactText& line, TextView long_name,
                  TextView short_name) {
  TextView value;
  for (const TextView name : {long_name, short_name})
    require(get_option_value(grammar, name, value) == has_option(grammar, name));
  const TextView bare = strip_quotes(value);
  if (is_absent(value)) return value;
  require(line.begin() <= value.data() && value.data() + value.size() <= line.end());
  require(value.data() <= bare.data() && bare.data() + bare.size() <= value.data() + value.size());
  const bool quoted = value.starts_with('"') && value.ends_with('"');
  require(quoted ? !bare.starts_with('"') && !bare.ends_with('"') : bare == value);
  return bare;
}

// No handle is used after it was closed, none is left open; the exit code says what was done.
void check_calls(int result, const std::string& created) {
  require(result == 0 || result == -1);
  bool done = false;
  for (const std::string& call : call_log()) {
    const TextView first_argument = TextView(call).substr(call.find('(') + 1);
    require(!first_argument.starts_with("closed ") && !first_argument.starts_with("unknown"));
    const bool creates = call.starts_with("CreateServiceA");
    require(!creates || call.starts_with(created));
    done |= creates && !call.ends_with(") = null");
    done |= call.starts_with("DeleteService") && !call.ends_with(" = FALSE");
  }
  require(open_handles() == 0);
  require((result == 0) == done);
}

}  // namespace
}  // namespace svcinst

using namespace svcinst;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TextView rest = as_text(data, size);
  play(take_until(rest, "\n"));
  std::vector<ExactText> arguments;
  std::vector<const char*> argv;
  std::string joined;
  while (!rest.empty()) {
    TextView line = take_until(rest, "\n");
    const TextView argument = take_until(line, TextView("", 1));
    const std::string quote = argument.find(' ') != TextView::npos ? "\"" : "";
    if (!arguments.empty()) joined.append(" ").append(quote).append(argument).append(quote);
    argv.push_back(arguments.emplace_back(argument).begin());
  }
  const int argc = static_cast<int>(argv.size());
  argv.push_back(nullptr);
  require(view(join_arguments(argc, argv.data())) == joined);

  const int result = run_program(argc, argv.data());
  const ExactText line(joined);
  static Grammar grammar;
  grammar.result.reset();
  if (!joined.empty())
    grammar.result = match(grammar.start_rule, line.begin(), joined.size(), *grammar.rules);
  if (!grammar.result) require(result == -1 && call_log().size() == 1);  // the record's time
  std::string created = "CreateServiceA(manager, \"";
  created.append(value_of(grammar, line, "name", "n")).append("\", ");
  for (const char* name : {"binpath", "disname", "dep", "desc", "install", "u"})
    value_of(grammar, line, name, TextView(name, 1));
  check_calls(result, created);
  return 0;
}
