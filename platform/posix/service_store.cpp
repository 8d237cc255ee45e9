#include "platform/posix/service_store.h"

#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/posix/database_path.h"
#include "platform/posix/service_names.h"

namespace svcinst {
namespace {

constexpr char kTable[] =
    "CREATE TABLE IF NOT EXISTS services(id INTEGER PRIMARY KEY, name TEXT NOT NULL,"
    " display_name TEXT, service_type INTEGER NOT NULL, start_type INTEGER NOT NULL,"
    " error_control INTEGER NOT NULL, binary_path TEXT NOT NULL, dependencies BLOB,"
    " account TEXT NOT NULL, description TEXT, current_state INTEGER NOT NULL,"
    " controls_accepted INTEGER NOT NULL, win32_exit_code INTEGER NOT NULL,"
    " service_specific_exit_code INTEGER NOT NULL, checkpoint INTEGER NOT NULL,"
    " wait_hint INTEGER NOT NULL, process_id INTEGER NOT NULL, service_flags INTEGER NOT NULL,"
    " delete_pending INTEGER NOT NULL)";

// Every column is named: where damage has changed one, nothing is made. 1 is SERVICE_STOPPED, 1077
// ERROR_SERVICE_NEVER_STARTED.
constexpr char kInsert[] =
    "INSERT INTO services(id, name, display_name, service_type, start_type, error_control,"
    " binary_path, dependencies, account, description, current_state, controls_accepted,"
    " win32_exit_code, service_specific_exit_code, checkpoint, wait_hint, process_id,"
    " service_flags, delete_pending) VALUES"
    "(NULL, ?1, ?2, ?3, ?4, ?5, ?6, ?7, ifnull(?8, 'LocalSystem'), NULL,"
    " 1, 0, 1077, 0, 0, 0, 0, 0, 0)";

constexpr char kSameNames[] =
    "SELECT id, delete_pending FROM services WHERE ?1 COLLATE any_case IN (name, display_name)"
    " OR ?2 COLLATE any_case IN (name, display_name)";

constexpr char kByName[] =
    "SELECT id, delete_pending FROM services WHERE name = ?1 COLLATE any_case";

constexpr char kStatus[] =
    "SELECT service_type, current_state, controls_accepted, win32_exit_code,"
    " service_specific_exit_code, checkpoint, wait_hint, process_id, service_flags"
    " FROM services WHERE id = ?1";

// 4 is SERVICE_RUNNING, 7 SERVICE_PAUSED.
constexpr char kStop[] =
    "UPDATE services SET current_state = 1, controls_accepted = 0, win32_exit_code = 0,"
    " service_specific_exit_code = 0, checkpoint = 0, wait_hint = 0, process_id = 0,"
    " service_flags = 0 WHERE id = ?1 AND current_state IN (4, 7)";

// The bytes of a list of names, its last NUL included; reads no further than that.
std::size_t list_size(const char* list) {
  const char* end = list;
  while (*end != '\0') end += std::strlen(end) + 1;
  return static_cast<std::size_t>(end - list) + 1;
}

void bind(const Statement& statement, int place, std::int64_t value) {
  sqlite3_bind_int64(statement.get(), place, value);
}

void bind(const Statement& statement, int place, const char* text) {
  sqlite3_bind_text(statement.get(), place, text, -1, SQLITE_STATIC);
}

void bind_list(const Statement& statement, int place, const char* list) {
  const std::size_t size = list == nullptr ? 0 : list_size(list);
  sqlite3_bind_blob64(statement.get(), place, list, size, SQLITE_STATIC);
}

bool has_row(const Statement& statement) {
  return sqlite3_step(statement.get()) == SQLITE_ROW;
}

std::int64_t number(const Statement& statement, int column) {
  return sqlite3_column_int64(statement.get(), column);
}

// Runs a change of one row, `service`, with `text` as second value. False when no row was changed.
bool change_row(const Connection& database, const char* sql, std::int64_t service,
                const char* text = nullptr) {
  const Statement statement = prepare(database, sql);
  bind(statement, 1, service);
  if (text != nullptr) bind(statement, 2, text);
  return run(statement) && sqlite3_changes(database.get()) == 1;
}

}  // namespace

std::unique_ptr<ServiceStore> ServiceStore::open() {
  const std::string path = database_path();
  if (path.empty()) return nullptr;
  const bool folder_is_writable = prepare_folder(path);
  Connection database = open_database(path);
  if (database == nullptr) return nullptr;
  return std::unique_ptr<ServiceStore>(
      new ServiceStore(path, std::move(database), folder_is_writable));
}

// SQLite opens no file as standard input, output or error and leaves none of these free, so that
// the locks' file, opened after it, gets none of them either.
ServiceStore::ServiceStore(const std::string& path, Connection database, bool folder_is_writable)
    : locks_(path),
      database_(std::move(database)),
      writable_(folder_is_writable && sqlite3_db_readonly(database_.get(), "main") == 0) {
  sqlite3_create_collation(database_.get(), "any_case", SQLITE_UTF8, nullptr, compare_names);
}

// False when a name of `service` is taken; marked services that nobody holds make room.
bool ServiceStore::free_names(const NewService& service) {
  const Statement same = prepare(database_, kSameNames);
  bind(same, 1, service.name);
  const bool has_display_name = service.display_name != nullptr && service.display_name[0] != '\0';
  bind(same, 2, has_display_name ? service.display_name : nullptr);
  std::vector<std::int64_t> marked;
  int result = sqlite3_step(same.get());
  for (; result == SQLITE_ROW; result = sqlite3_step(same.get())) {
    if (number(same, 1) == 0) return false;
    marked.push_back(number(same, 0));
  }
  if (result != SQLITE_DONE) return false;
  for (const std::int64_t row : marked)
    if (!remove_marked(row)) return false;
  return true;
}

std::int64_t ServiceStore::create(const NewService& service) {
  const std::int64_t created = try_to_create(service);
  locks_.drop_claims();
  return created;
}

std::int64_t ServiceStore::try_to_create(const NewService& service) {
  Transaction change(database_);
  if (!change.is_open() || !run(database_, kTable) || !free_names(service)) return 0;
  const Statement insert = prepare(database_, kInsert);
  bind(insert, 1, service.name);
  bind(insert, 2, service.display_name);
  bind(insert, 3, service.service_type);
  bind(insert, 4, service.start_type);
  bind(insert, 5, service.error_control);
  bind(insert, 6, service.binary_path);
  bind_list(insert, 7, service.dependencies);
  bind(insert, 8, service.account);
  if (!run(insert)) return 0;
  const std::int64_t created = sqlite3_last_insert_rowid(database_.get());
  if (!locks_.hold(created)) return 0;
  if (change.commit()) return created;
  locks_.release(created);
  return 0;
}

std::int64_t ServiceStore::find(const char* name) {
  std::int64_t service = 0;
  {
    const Statement known = prepare(database_, kByName);
    bind(known, 1, name);
    if (!has_row(known)) return 0;
    service = number(known, 0);
    // As long as the statement reads, nobody's removal of the row can end: this hold comes in time.
    if (number(known, 1) == 0 || locks_.is_held(service)) return locks_.hold(service) ? service : 0;
  }
  remove_abandoned(service);
  return 0;
}

// The hold goes before the mark is read: of several who do this at once, the last one removes the
// row.
void ServiceStore::release(std::int64_t service) {
  locks_.release(service);
  Statement known = prepare(database_, "SELECT delete_pending FROM services WHERE id = ?1");
  bind(known, 1, service);
  const bool marked = has_row(known) && number(known, 0) != 0;
  known.reset();
  if (marked) remove_abandoned(service);
}

// Removes a marked service unless somebody holds it.
void ServiceStore::remove_abandoned(std::int64_t service) {
  {
    Transaction change(database_);
    if (change.is_open() && remove_marked(service)) change.commit();
  }
  locks_.drop_claims();
}

// A part of a transaction, after which the claims are to be dropped.
bool ServiceStore::remove_marked(std::int64_t service) {
  return locks_.claim(service) &&
         change_row(database_, "DELETE FROM services WHERE id = ?1 AND delete_pending <> 0",
                    service);
}

bool ServiceStore::read_status(std::int64_t service, SERVICE_STATUS_PROCESS& status) const {
  const Statement row = prepare(database_, kStatus);
  bind(row, 1, service);
  if (!has_row(row)) return false;
  DWORD fields[9];
  static_assert(sizeof fields == sizeof status);
  for (int i = 0; i < 9; ++i) {
    const std::int64_t value = number(row, i);
    fields[i] = static_cast<DWORD>(value);
    if (sqlite3_column_type(row.get(), i) != SQLITE_INTEGER || fields[i] != value) return false;
  }
  std::memcpy(&status, fields, sizeof status);
  // Whoever waits for a service to settle would wait for ever in a state that is none.
  return status.dwCurrentState >= SERVICE_STOPPED && status.dwCurrentState <= SERVICE_PAUSED;
}

bool ServiceStore::stop(std::int64_t service) {
  return change_row(database_, kStop, service);
}

bool ServiceStore::describe(std::int64_t service, const char* description) {
  return change_row(database_,
                    "UPDATE services SET description = nullif(?2, '')"
                    " WHERE id = ?1 AND delete_pending = 0",
                    service, description);
}

bool ServiceStore::mark_for_deletion(std::int64_t service) {
  return change_row(database_,
                    "UPDATE services SET delete_pending = 1 WHERE id = ?1 AND delete_pending = 0",
                    service);
}

}  // namespace svcinst
