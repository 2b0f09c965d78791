#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/lock_patience.h"

struct sqlite3;
struct sqlite3_stmt;

/// A connection to an SQLite file, closed with its owner. Results are SQLite's own codes.
class SqliteDatabase {
 public:
  enum class Mode { kReadOnly, kReadWrite, kCreate };

  SqliteDatabase() = default;
  ~SqliteDatabase() { Close(); }
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  /// Opens an existing file; kCreate makes it where it is not there. A lock of another program is
  /// waited for (`LockPatience`).
  int Open(const std::string& path, Mode mode);
  void Close();
  bool IsOpen() const { return m_database != nullptr; }

  /// Runs statements that give no rows.
  int Execute(const char* statements);
  /// Runs a statement and gives the first column of its first row as a number, or as text.
  int Query(const char* statement, int64_t& number);
  int Query(const char* statement, std::string& text);

  /// Rows that the last statement has changed.
  int Changes() const;
  sqlite3* Get() const { return m_database; }

 private:
  static int WaitForLock(void* self, int attempts);

  sqlite3* m_database = nullptr;
  std::string m_path;
  std::optional<LockPatience> m_patience;  // of the lock that is waited for
};

/// A prepared statement. Texts and bytes that are bound must live as long as it.
class SqliteStatement {
 public:
  SqliteStatement(SqliteDatabase& database, std::string_view statement);
  ~SqliteStatement();
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  /// Parameters count from 1.
  void BindNumber(int parameter, int64_t number);
  void BindReal(int parameter, double number);
  void BindText(int parameter, std::string_view text);
  void BindBytes(int parameter, std::string_view bytes);

  /// SQLITE_ROW, SQLITE_DONE, or the first failure since the statement was made.
  int Step();

  /// Ready for other parameters and another run.
  void Reset();

  /// The first failure since the statement was made, 0 for none.
  int Failure() const { return m_failure; }

  /// Columns count from 0; a view lives up to the next step.
  int64_t Number(int column) const;
  double Real(int column) const;
  std::string_view Text(int column) const;
  std::string_view Bytes(int column) const;

 private:
  void Keep(int result);

  sqlite3_stmt* m_statement = nullptr;
  int m_failure = 0;
};
