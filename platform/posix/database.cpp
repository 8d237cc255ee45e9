#include "platform/posix/database.h"

#include <sys/stat.h>

#include <cstring>

namespace svcinst {
namespace {

// Enough for hundreds of installers in a row on a slow disk; a lock that is never given up ends
// too.
constexpr int kLockTimeout = 60'000;  // milliseconds

// Damage that SQLite would not notice on its way would be written on. A file that was just made has
// none, and looking at that would take as long as a fourteenth of registering a service.
bool is_whole(const Connection& database, const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) == 0 && file.st_size == 0) return true;
  const Statement check = prepare(database, "PRAGMA quick_check(1)");
  if (sqlite3_step(check.get()) != SQLITE_ROW) return false;
  const auto* const verdict = sqlite3_column_text(check.get(), 0);
  return verdict != nullptr && std::strcmp(reinterpret_cast<const char*>(verdict), "ok") == 0;
}

}  // namespace

Connection open_database(const std::string& path) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  Connection database(opened);
  // EXTRA: with FULL, a loss of power can bring a deleted journal back, which undoes the last
  // change.
  if (result != SQLITE_OK || sqlite3_busy_timeout(opened, kLockTimeout) != SQLITE_OK ||
      !run(database, "PRAGMA synchronous=EXTRA") || !is_whole(database, path))
    return nullptr;
  return database;
}

Statement prepare(const Connection& database, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database.get(), sql, -1, &statement, nullptr);
  return Statement(statement);
}

bool run(const Statement& statement) {
  return sqlite3_step(statement.get()) == SQLITE_DONE;
}

bool run(const Connection& database, const char* sql) {
  return sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

}  // namespace svcinst
