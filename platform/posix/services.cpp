// The Service Control Manager, played by a table in SQLite with one row a service. It refuses the
// names that Windows refuses; that programs don't disturb one another is SQLite's work.
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "platform/service_api.h"

namespace {

struct SqliteDeleter {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Connection = std::unique_ptr<sqlite3, SqliteDeleter>;
using Statement = std::unique_ptr<sqlite3_stmt, SqliteDeleter>;

}  // namespace

// A service is known by its name: the number of a row that is gone comes again.
struct ServiceHandleTag {
  Connection connection;  // a manager's, which the handles of its services use
  sqlite3* database;
  std::string name;  // a service's
};

namespace {

// A new service is stopped (1) and was never started (1077).
constexpr char kTable[] =
    "services(id INTEGER PRIMARY KEY, name TEXT NOT NULL, display_name TEXT,"
    " service_type INTEGER NOT NULL, start_type INTEGER NOT NULL, error_control INTEGER NOT NULL,"
    " binary_path TEXT NOT NULL, dependencies BLOB, account TEXT NOT NULL, description TEXT,"
    " current_state INTEGER NOT NULL DEFAULT 1, controls_accepted INTEGER NOT NULL DEFAULT 0,"
    " win32_exit_code INTEGER NOT NULL DEFAULT 1077,"
    " service_specific_exit_code INTEGER NOT NULL DEFAULT 0,"
    " checkpoint INTEGER NOT NULL DEFAULT 0, wait_hint INTEGER NOT NULL DEFAULT 0,"
    " process_id INTEGER NOT NULL DEFAULT 0, service_flags INTEGER NOT NULL DEFAULT 0)";

// 1 for a database that is new, or holds our table and nothing else, undamaged.
constexpr char kIsOurs[] =
    "SELECT CASE group_concat(sql) WHEN 'CREATE TABLE ' || ?1 THEN (SELECT quick_check = 'ok'"
    " FROM pragma_quick_check(1)) ELSE count(*) = 0 END FROM sqlite_schema";

// Adds a service, unless one of its names is taken or not allowed.
constexpr char kCreate[] =
    "INSERT INTO services(name, display_name, service_type, start_type, error_control,"
    " binary_path, dependencies, account)"
    " SELECT ?1, ?2, ?3, ?4, ?5, ?6, ?7, ifnull(?8, 'LocalSystem')"
    " WHERE length(?1) BETWEEN 1 AND 256 AND ?1 NOT GLOB '*[/\\]*'"
    " AND ifnull(length(?2), 0) <= 256"
    " AND NOT EXISTS (SELECT 1 FROM services WHERE ?1 COLLATE NOCASE IN (name, display_name)"
    " OR nullif(?2, '') COLLATE NOCASE IN (name, display_name))";

constexpr char kFind[] = "SELECT 1 FROM services WHERE name = ?1 COLLATE NOCASE";

constexpr char kStatus[] =
    "SELECT service_type, current_state, controls_accepted, win32_exit_code,"
    " service_specific_exit_code, checkpoint, wait_hint, process_id, service_flags FROM services"
    " WHERE name = ?1 COLLATE NOCASE";

constexpr char kDescribe[] = "UPDATE services SET description = ?2 WHERE name = ?1 COLLATE NOCASE";

// 4 is SERVICE_RUNNING, 7 SERVICE_PAUSED.
constexpr char kStop[] =
    "UPDATE services SET current_state = 1, controls_accepted = 0, win32_exit_code = 0,"
    " service_specific_exit_code = 0, checkpoint = 0, wait_hint = 0, process_id = 0,"
    " service_flags = 0 WHERE name = ?1 COLLATE NOCASE AND current_state IN (4, 7)";

constexpr char kDelete[] = "DELETE FROM services WHERE name = ?1 COLLATE NOCASE";

bool run(sqlite3* database, const char* sql) {
  return sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

// Compiles `sql`, whose first value is `text`; that must outlive the statement.
Statement prepare(sqlite3* database, const char* sql, const char* text) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
  sqlite3_bind_text(statement, 1, text, -1, SQLITE_STATIC);
  return Statement(statement);
}

bool changes_one_row(sqlite3* database, const Statement& statement) {
  return sqlite3_step(statement.get()) == SQLITE_DONE && sqlite3_changes(database) == 1;
}

// Runs a change of one service, with `text` as its second value. False when there is none to
// change.
bool change_service(SC_HANDLE service, const char* sql, const char* text = nullptr) {
  if (service == nullptr) return false;
  const Statement change = prepare(service->database, sql, service->name.c_str());
  sqlite3_bind_text(change.get(), 2, text, -1, SQLITE_STATIC);
  return changes_one_row(service->database, change);
}

// The value of an environment variable; empty when it is not set, or may be another user's.
std::string environment(const char* name) {
  const char* value = secure_getenv(name);
  return value == nullptr ? "" : value;
}

// Where the database lies; empty when the user has no such place.
std::string database_path() {
  const std::string chosen = environment("SVCINST_DATABASE");
  // SQLite gives names such as ":memory:" and "file:x" a meaning of its own; with a folder they are
  // plain files.
  if (!chosen.empty()) return chosen.starts_with('/') ? chosen : "./" + chosen;
  if (geteuid() == 0) return "/var/lib/svcinst/services.db";
  const std::string state = environment("XDG_STATE_HOME");
  if (state.starts_with('/')) return state + "/svcinst/services.db";
  const std::string home = environment("HOME");
  return home.starts_with('/') ? home + "/.local/state/svcinst/services.db" : "";
}

// SQLite's journal goes to the folder that the database lies in once all links are followed.
bool has_writable_folder(sqlite3* database) {
  const std::string file = sqlite3_db_filename(database, "main");
  return access(file.substr(0, file.rfind('/') + 1).c_str(), W_OK | X_OK) == 0;
}

// The table is there afterwards; false when it isn't, or anything else is.
bool prepare_table(sqlite3* database) {
  Statement check = prepare(database, kIsOurs, kTable);
  if (sqlite3_step(check.get()) != SQLITE_ROW || sqlite3_column_int(check.get(), 0) != 1)
    return false;
  check.reset();  // SQLite doesn't wait for the lock of a change while something is being read
  return run(database, (std::string("CREATE TABLE IF NOT EXISTS ") + kTable).c_str());
}

// None when the database can't be written, is damaged or somebody else's.
Connection open_database() {
  constexpr int kLockTimeout = 10'000;  // milliseconds
  const std::string path = database_path();
  for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
    mkdir(path.substr(0, end).c_str(), 0755);
  // SQLite takes a file of one byte for an empty one; none of its databases has less than 512. A
  // journal bears one name of the file only: under another one nobody would look for it.
  struct stat file {};
  stat(path.c_str(), &file);
  if (path.empty() || (file.st_size > 0 && file.st_size < 512) || file.st_nlink > 1) return nullptr;
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(path.c_str(), &opened);
  Connection database(opened);
  // EXTRA: with FULL a loss of power can bring back the journal, which undoes the last change.
  if (result != SQLITE_OK || sqlite3_busy_timeout(opened, kLockTimeout) != SQLITE_OK ||
      !run(opened, "PRAGMA synchronous=EXTRA") || sqlite3_db_readonly(opened, "main") != 0 ||
      !has_writable_folder(opened) || !prepare_table(opened))
    return nullptr;
  return database;
}

// The bytes of a list of names, its last NUL included; reads no further than that.
int list_size(const char* list) {
  const char* end = list;
  while (*end != '\0') end += std::strlen(end) + 1;
  return static_cast<int>(end - list) + 1;
}

std::unique_ptr<ServiceHandleTag> new_handle(SC_HANDLE manager, const char* name) {
  return std::make_unique<ServiceHandleTag>(ServiceHandleTag{nullptr, manager->database, name});
}

}  // namespace

SC_HANDLE OpenSCManagerA(LPCSTR /*machine*/, LPCSTR /*database*/, DWORD /*access*/) {
  auto manager = std::make_unique<ServiceHandleTag>();
  manager->connection = open_database();
  manager->database = manager->connection.get();
  return manager->database != nullptr ? manager.release() : nullptr;
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD /*access*/) {
  auto service = new_handle(manager, name);
  const Statement known = prepare(manager->database, kFind, name);
  return sqlite3_step(known.get()) == SQLITE_ROW ? service.release() : nullptr;
}

SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR display_name, DWORD /*access*/,
                         DWORD service_type, DWORD start_type, DWORD error_control,
                         LPCSTR binary_path, LPCSTR /*group*/, LPDWORD /*tag_id*/,
                         LPCSTR dependencies, LPCSTR account, LPCSTR /*password*/) {
  auto service = new_handle(manager, name);
  const Statement create = prepare(manager->database, kCreate, name);
  sqlite3_bind_text(create.get(), 2, display_name, -1, SQLITE_STATIC);
  sqlite3_bind_int64(create.get(), 3, service_type);
  sqlite3_bind_int64(create.get(), 4, start_type);
  sqlite3_bind_int64(create.get(), 5, error_control);
  sqlite3_bind_text(create.get(), 6, binary_path, -1, SQLITE_STATIC);
  if (dependencies != nullptr)
    sqlite3_bind_blob(create.get(), 7, dependencies, list_size(dependencies), SQLITE_STATIC);
  sqlite3_bind_text(create.get(), 8, account, -1, SQLITE_STATIC);
  return changes_one_row(manager->database, create) ? service.release() : nullptr;
}

BOOL ChangeServiceConfig2A(SC_HANDLE service, DWORD /*level*/, LPVOID info) {
  const char* description = static_cast<const SERVICE_DESCRIPTIONA*>(info)->lpDescription;
  return change_service(service, kDescribe, description) ? TRUE : FALSE;
}

BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE /*level*/, LPBYTE buffer, DWORD size,
                          LPDWORD needed) {
  const Statement status = prepare(service->database, kStatus, service->name.c_str());
  DWORD fields[9];
  *needed = sizeof fields;
  if (size < sizeof fields || sqlite3_step(status.get()) != SQLITE_ROW) return FALSE;
  for (int i = 0; i < 9; ++i) fields[i] = static_cast<DWORD>(sqlite3_column_int64(status.get(), i));
  std::memcpy(buffer, fields, sizeof fields);
  return TRUE;
}

BOOL ControlService(SC_HANDLE service, DWORD /*control*/, LPSERVICE_STATUS status) {
  if (!change_service(service, kStop)) return FALSE;
  *status = {SERVICE_WIN32_OWN_PROCESS, SERVICE_STOPPED, 0, 0, 0, 0, 0};
  return TRUE;
}

BOOL DeleteService(SC_HANDLE service) {
  return change_service(service, kDelete) ? TRUE : FALSE;
}

BOOL CloseServiceHandle(SC_HANDLE handle) {
  const std::unique_ptr<ServiceHandleTag> closed(handle);
  return TRUE;
}
