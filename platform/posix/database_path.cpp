#include "platform/posix/database_path.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

namespace svcinst {
namespace {

// The value of an environment variable; empty when it is not set.
std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool can_add_files(const std::string& folder) {
  return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

std::string database_path() {
  const std::string chosen = environment("SVCINST_DATABASE");
  // SQLite gives names such as ":memory:" and "file:x" a meaning of its own; with a folder they are
  // plain files.
  if (!chosen.empty()) return chosen[0] == '/' ? chosen : "./" + chosen;
  if (geteuid() == 0) return "/var/lib/svcinst/services.db";
  const std::string state = environment("XDG_STATE_HOME");
  if (!state.empty() && state[0] == '/') return state + "/svcinst/services.db";
  const std::string home = environment("HOME");
  return home.empty() ? "" : home + "/.local/state/svcinst/services.db";
}

bool prepare_folder(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('/') + 1);
  if (can_add_files(folder)) return true;
  if (errno != ENOENT) return false;
  for (std::size_t end = folder.find('/', 1); end != std::string::npos;
       end = folder.find('/', end + 1))
    mkdir(folder.substr(0, end).c_str(), 0755);
  return can_add_files(folder);
}

}  // namespace svcinst
