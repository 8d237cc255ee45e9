/* Registers the service that process_bench registers: the same table, the same row, as safe on
 * disk. install_peer DATABASE */
#include <sqlite3.h>
#include <stdio.h>

static const char kTable[] =
    "CREATE TABLE IF NOT EXISTS services(id INTEGER PRIMARY KEY, name TEXT NOT NULL,"
    " display_name TEXT, service_type INTEGER NOT NULL, start_type INTEGER NOT NULL,"
    " error_control INTEGER NOT NULL, binary_path TEXT NOT NULL, dependencies BLOB,"
    " account TEXT NOT NULL, description TEXT, current_state INTEGER NOT NULL,"
    " controls_accepted INTEGER NOT NULL, win32_exit_code INTEGER NOT NULL,"
    " service_specific_exit_code INTEGER NOT NULL, checkpoint INTEGER NOT NULL,"
    " wait_hint INTEGER NOT NULL, process_id INTEGER NOT NULL, service_flags INTEGER NOT NULL,"
    " delete_pending INTEGER NOT NULL)";

static const char kInsert[] =
    "INSERT INTO services VALUES(NULL, ?1, ?2, 16, 2, 1, ?3, ?4, 'LocalSystem', NULL,"
    " 1, 0, 1077, 0, 0, 0, 0, 0, 0)";

static int insert(sqlite3* database) {
  sqlite3_stmt* statement = NULL;
  if (sqlite3_prepare_v2(database, kInsert, -1, &statement, NULL) != SQLITE_OK) return 1;
  sqlite3_bind_text(statement, 1, "hello", -1, SQLITE_STATIC);
  sqlite3_bind_text(statement, 2, "Hello", -1, SQLITE_STATIC);
  sqlite3_bind_text(statement, 3, "C:\\hello\\hello.exe", -1, SQLITE_STATIC);
  sqlite3_bind_blob(statement, 4, "Tcpip\0", 7, SQLITE_STATIC);
  const int result = sqlite3_step(statement);
  sqlite3_finalize(statement);
  return result == SQLITE_DONE ? 0 : 1;
}

int main(int argc, char** argv) {
  sqlite3* database = NULL;
  if (argc != 2 || sqlite3_open(argv[1], &database) != SQLITE_OK) return 1;
  const int failed =
      sqlite3_exec(database, "PRAGMA synchronous=EXTRA", NULL, NULL, NULL) != SQLITE_OK ||
      sqlite3_exec(database, "BEGIN IMMEDIATE", NULL, NULL, NULL) != SQLITE_OK ||
      sqlite3_exec(database, kTable, NULL, NULL, NULL) != SQLITE_OK || insert(database) != 0 ||
      sqlite3_exec(database, "COMMIT", NULL, NULL, NULL) != SQLITE_OK;
  sqlite3_close(database);
  return failed;
}
