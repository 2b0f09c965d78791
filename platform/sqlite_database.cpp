#include "platform/sqlite_database.h"

#include <sqlite3.h>

#include "platform/posix/settings_news.h"

namespace {

// A null pointer would bind NULL instead of nothing.
const char* NotNull(std::string_view bytes) { return bytes.empty() ? "" : bytes.data(); }

}  // namespace

int SqliteDatabase::Open(const std::string& path, Mode mode) {
  Close();
  int access = mode == Mode::kReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  if (mode == Mode::kCreate) access |= SQLITE_OPEN_CREATE;
  const int result =
      sqlite3_open_v2(path.c_str(), &m_database, access | SQLITE_OPEN_NOMUTEX, nullptr);
  if (result != SQLITE_OK) {
    Close();
    return result;
  }
  sqlite3_extended_result_codes(m_database, 1);
  m_path = path;
  sqlite3_busy_handler(m_database, WaitForLock, this);
  // Nothing in a file that somebody else made may run.
  sqlite3_db_config(m_database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(m_database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(m_database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  return SQLITE_OK;
}

int SqliteDatabase::WaitForLock(void* self, int attempts) {
  auto& database = *static_cast<SqliteDatabase*>(self);
  std::atomic<bool>& isLocked = SettingsReporter::Instance().isLocked;
  if (isLocked) return 0;
  if (attempts == 0) database.m_patience.emplace(database.m_path);
  if (database.m_patience->WaitAMoment()) return 1;
  isLocked = true;
  return 0;
}

void SqliteDatabase::Close() {
  sqlite3_close(m_database);
  m_database = nullptr;
}

int SqliteDatabase::Execute(const char* statements) {
  return sqlite3_exec(m_database, statements, nullptr, nullptr, nullptr);
}

int SqliteDatabase::Query(const char* statement, int64_t& number) {
  SqliteStatement query(*this, statement);
  const int result = query.Step();
  if (result != SQLITE_ROW) return result;
  number = query.Number(0);
  return SQLITE_OK;
}

int SqliteDatabase::Query(const char* statement, std::string& text) {
  SqliteStatement query(*this, statement);
  const int result = query.Step();
  if (result != SQLITE_ROW) return result;
  text = query.Text(0);
  return SQLITE_OK;
}

int SqliteDatabase::Changes() const { return sqlite3_changes(m_database); }

SqliteStatement::SqliteStatement(SqliteDatabase& database, std::string_view statement) {
  Keep(sqlite3_prepare_v2(database.Get(), statement.data(), static_cast<int>(statement.size()),
                          &m_statement, nullptr));
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(m_statement); }

void SqliteStatement::Keep(int result) {
  if (m_failure == SQLITE_OK) m_failure = result;
}

void SqliteStatement::BindNumber(int parameter, int64_t number) {
  Keep(sqlite3_bind_int64(m_statement, parameter, number));
}

void SqliteStatement::BindReal(int parameter, double number) {
  Keep(sqlite3_bind_double(m_statement, parameter, number));
}

void SqliteStatement::BindText(int parameter, std::string_view text) {
  Keep(sqlite3_bind_text64(m_statement, parameter, NotNull(text), text.size(), SQLITE_STATIC,
                           SQLITE_UTF8));
}

void SqliteStatement::BindBytes(int parameter, std::string_view bytes) {
  Keep(sqlite3_bind_blob64(m_statement, parameter, NotNull(bytes), bytes.size(), SQLITE_STATIC));
}

int SqliteStatement::Step() {
  return m_failure != SQLITE_OK ? m_failure : sqlite3_step(m_statement);
}

void SqliteStatement::Reset() { Keep(sqlite3_reset(m_statement)); }

int64_t SqliteStatement::Number(int column) const {
  return sqlite3_column_int64(m_statement, column);
}

double SqliteStatement::Real(int column) const {
  return sqlite3_column_double(m_statement, column);
}

std::string_view SqliteStatement::Text(int column) const {
  const unsigned char* const text = sqlite3_column_text(m_statement, column);
  if (!text) return {};
  return {reinterpret_cast<const char*>(text),
          static_cast<size_t>(sqlite3_column_bytes(m_statement, column))};
}

std::string_view SqliteStatement::Bytes(int column) const {
  const void* const bytes = sqlite3_column_blob(m_statement, column);
  if (!bytes) return {};
  return {static_cast<const char*>(bytes),
          static_cast<size_t>(sqlite3_column_bytes(m_statement, column))};
}
