// A thin layer over SQLite: owners for what it hands out, and results as booleans.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace svcinst {

struct SqliteDeleter {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Connection = std::unique_ptr<sqlite3, SqliteDeleter>;
using Statement = std::unique_ptr<sqlite3_stmt, SqliteDeleter>;

/// Opens the database at `path`, for reading only when the user can't write it; makes the file when
/// there is none. Waits a minute for other users' locks; what it commits survives a loss of power.
/// None when that fails, or the file is no database or a damaged one: all of it is read to find
/// out.
Connection open_database(const std::string& path);

/// Compiles `sql`. None when it doesn't fit the database.
Statement prepare(const Connection& database, const char* sql);

/// Runs a statement without results. False, with nothing changed, when that fails.
bool run(const Statement& statement);
bool run(const Connection& database, const char* sql);

/// A change that other users wait for. Undone by the destructor unless it was committed.
class Transaction {
 public:
  explicit Transaction(const Connection& database)
      : database_(database), open_(run(database, "BEGIN IMMEDIATE")) {}
  ~Transaction() {
    if (open_) run(database_, "ROLLBACK");
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  [[nodiscard]] bool is_open() const { return open_; }
  /// True when the change is on the disk.
  bool commit() {
    if (!run(database_, "COMMIT")) return false;
    open_ = false;
    return true;
  }

 private:
  const Connection& database_;
  bool open_;
};

}  // namespace svcinst
