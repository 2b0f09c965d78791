#include "platform/posix/sqlite_settings.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include <sqlite3.h>
#include <sys/stat.h>

#include "base/status.h"
#include "base/text.h"
#include "platform/known_folders.h"
#include "platform/path_text.h"
#include "platform/posix/settings_file.h"
#include "platform/posix/settings_news.h"
#include "platform/sqlite_database.h"

namespace {

// Version of the tables below, kept in the file as SQLite's user_version. 0 is a file without any.
constexpr int64_t kVersion = 1;

// Numbers and texts stand in the file as such, so that a person can read and change them there.
// The size of a value is asked of its bytes: the length of a text ends at its first zero.
constexpr const char* kMakeTables =
    "CREATE TABLE folder(id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE COLLATE NOCASE);"
    "CREATE TABLE value(folder INTEGER NOT NULL REFERENCES folder(id),"
    " name TEXT NOT NULL COLLATE NOCASE, kind INTEGER NOT NULL, data NOT NULL,"
    " PRIMARY KEY(folder, name)) WITHOUT ROWID;"
    "PRAGMA user_version = 1;";
constexpr std::string_view kAddFolder = "INSERT OR IGNORE INTO folder(path) VALUES(?1)";
constexpr std::string_view kWriteValue =
    "INSERT INTO value(folder, name, kind, data) SELECT id, ?2, ?3, ?4 FROM folder WHERE path = ?1"
    " ON CONFLICT(folder, name) DO UPDATE SET kind = excluded.kind, data = excluded.data";
constexpr std::string_view kReadValues =
    "SELECT value.name, value.kind, value.data FROM folder JOIN value ON value.folder = folder.id"
    " WHERE folder.path = ?1 AND length(CAST(value.data AS BLOB)) <= ?2";
// ?1 ends with a separator.
constexpr std::string_view kReadFolders =
    "SELECT substr(path, length(?1) + 1) AS name FROM folder"
    " WHERE substr(path, 1, length(?1)) = ?1 COLLATE NOCASE AND instr(name, '\\') = 0";
constexpr std::string_view kRemoveValue =
    "DELETE FROM value WHERE name = ?2 AND folder = (SELECT id FROM folder WHERE path = ?1)";
// ?2 is ?1 with a separator behind it.
constexpr std::string_view kRemoveValuesBelow =
    "DELETE FROM value WHERE folder IN (SELECT id FROM folder"
    " WHERE path = ?1 OR substr(path, 1, length(?2)) = ?2 COLLATE NOCASE)";
constexpr std::string_view kRemoveFolders =
    "DELETE FROM folder WHERE path = ?1 OR substr(path, 1, length(?2)) = ?2 COLLATE NOCASE";

// The column `kind`.
enum ValueKind : int64_t { kKindBinary = 1, kKindNumber = 2, kKindNumber64 = 3, kKindText = 4 };

uint32_t StatusOf(int result) {
  switch (result & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return 0;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return kStatusFileCorrupt;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return kStatusSharingViolation;
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
      return kStatusAccessDenied;
    case SQLITE_NOMEM:
      return kStatusOutOfMemory;
    case SQLITE_FULL:
      return kStatusDiskFull;
    case SQLITE_TOOBIG:
      return kStatusBadLength;
    default:
      return kStatusInternalError;
  }
}

struct LessIgnoringCase {
  bool operator()(std::string_view left, std::string_view right) const {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return Lower(a) < Lower(b); });
  }
  static int Lower(char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; }
};

using FolderValues = std::map<std::string, SettingsValue, LessIgnoringCase>;

// The value in the columns `kind` and `data` of a row; none when its kind is not one of ours.
std::optional<SettingsValue> ValueOf(const SqliteStatement& row, int kind, int data) {
  switch (row.Number(kind)) {
    case kKindBinary:
      return std::string(row.Bytes(data));
    case kKindNumber:
      return static_cast<uint32_t>(row.Number(data));
    case kKindNumber64:
      return static_cast<uint64_t>(row.Number(data));
    case kKindText:
      return Utf8ToWideLossy(row.Text(data));
    default:
      return std::nullopt;
  }
}

// Whether the tables are not what their version says.
bool IsDamaged(SqliteDatabase& database, int64_t version) {
  if (version == 0) {
    // Tables without a version are somebody else's.
    int64_t tables = 0;
    const int result = database.Query("SELECT count(*) FROM sqlite_schema", tables);
    return tables != 0 || StatusOf(result) == kStatusFileCorrupt;
  }
  if (version == kVersion) {
    for (const std::string_view statement : {kAddFolder, kWriteValue, kReadValues}) {
      const SqliteStatement probe(database, statement);
      if ((probe.Failure() & 0xFF) == SQLITE_ERROR) return true;
    }
  }
  std::string report;
  const int result = database.Query("PRAGMA quick_check(1)", report);
  if (result == SQLITE_OK) return report != "ok";
  // A plain error is a file of a format that does not exist.
  return StatusOf(result) == kStatusFileCorrupt || (result & 0xFF) == SQLITE_ERROR;
}

bool IsFileDamaged(const std::string& path) {
  SqliteDatabase database;
  int64_t version = 0;
  int result = database.Open(path, SqliteDatabase::Mode::kReadWrite);
  if (result == SQLITE_OK) result = database.Query("PRAGMA user_version", version);
  if (result == SQLITE_OK) return IsDamaged(database, version);
  return StatusOf(result) == kStatusFileCorrupt;
}

class SqliteSettings final : public SettingsBackend {
 public:
  explicit SqliteSettings(std::string path) : m_path(std::move(path)) {}

  uint32_t CreateFolder(std::string_view path) override;
  uint32_t Read(std::string_view folder, std::string_view name, SettingsValue& value) override;
  uint32_t Write(std::string_view folder, std::string_view name,
                 const SettingsValue& value) override;
  uint32_t ListValues(std::string_view folder, std::vector<std::string>& names) override;
  uint32_t ListFolders(std::string_view path, std::vector<std::string>& names) override;
  uint32_t RemoveValue(std::string_view folder, std::string_view name) override;
  uint32_t RemoveFolder(std::string_view path) override;
  uint32_t BeginSave() override;
  uint32_t CommitSave() override;
  void AbandonSave() override;

 private:
  // What stands in one folder, as it was read.
  struct Content {
    FolderValues values;
    std::vector<std::string> folders;
  };
  struct Snapshot {
    std::string folder;
    uint32_t status;
    Content content;
  };

  const Snapshot& SnapshotOf(std::string_view folder);
  uint32_t ReadFile(std::string_view folder, Content& content);
  static uint32_t ReadContent(SqliteDatabase& database, std::string_view folder, Content& content);
  uint32_t OpenForSave();
  uint32_t PrepareTables();
  uint32_t RemoveDamage();
  // Runs `write` in the save that is under way, or in one of its own.
  template <typename WriteFn>
  uint32_t InSave(WriteFn write);

  std::string m_path;
  SqliteDatabase m_saving;  // open from BeginSave to its end
  std::optional<Snapshot> m_snapshot;
};

// Reading

uint32_t SqliteSettings::Read(std::string_view folder, std::string_view name,
                              SettingsValue& value) {
  const Snapshot& snapshot = SnapshotOf(folder);
  if (snapshot.status != 0) return snapshot.status;
  const FolderValues& values = snapshot.content.values;
  const auto found = values.find(std::string(name));
  if (found == values.end()) return kStatusFileNotFound;
  value = found->second;
  return 0;
}

uint32_t SqliteSettings::ListValues(std::string_view folder, std::vector<std::string>& names) {
  const Snapshot& snapshot = SnapshotOf(folder);
  for (const auto& [name, value] : snapshot.content.values) names.push_back(name);
  return snapshot.status;
}

uint32_t SqliteSettings::ListFolders(std::string_view path, std::vector<std::string>& names) {
  const Snapshot& snapshot = SnapshotOf(path);
  const std::vector<std::string>& folders = snapshot.content.folders;
  names.insert(names.end(), folders.begin(), folders.end());
  return snapshot.status;
}

const SqliteSettings::Snapshot& SqliteSettings::SnapshotOf(std::string_view folder) {
  if (m_snapshot && m_snapshot->folder == folder) return *m_snapshot;
  m_snapshot.emplace(Snapshot{std::string(folder), 0, {}});
  Snapshot& snapshot = *m_snapshot;
  if (m_saving.IsOpen()) {
    snapshot.status = ReadContent(m_saving, folder, snapshot.content);
    return snapshot;
  }
  snapshot.status = ReadFile(folder, snapshot.content);
  if (snapshot.status == kStatusFileCorrupt) {
    snapshot.status = RemoveDamage();
    // Another program may have made it sound meanwhile.
    if (snapshot.status == 0) snapshot.status = ReadFile(folder, snapshot.content);
  }
  if (snapshot.status != 0) snapshot.content = {};
  if (snapshot.status == kStatusSharingViolation) SettingsReporter::Instance().TellLocked();
  return snapshot;
}

uint32_t SqliteSettings::ReadFile(std::string_view folder, Content& content) {
  struct stat details {};
  if (stat(m_path.c_str(), &details) != 0)
    return errno == ENOENT || errno == ENOTDIR ? kStatusFileNotFound : kStatusAccessDenied;
  if (!S_ISREG(details.st_mode)) return kStatusAccessDenied;
  uint32_t status = 0;
  // A save that was killed is taken back by the next program that opens the file, which has to
  // write for that.
  for (const auto mode : {SqliteDatabase::Mode::kReadOnly, SqliteDatabase::Mode::kReadWrite}) {
    SqliteDatabase database;
    content = {};
    status = StatusOf(database.Open(m_path, mode));
    // All that is asked must be of one moment, and costs one lock.
    if (status == 0) status = StatusOf(database.Execute("BEGIN"));
    if (status == 0) status = ReadContent(database, folder, content);
    if (status != kStatusAccessDenied) break;
  }
  if (status == kStatusSuccess) SettingsReporter::Instance().isLocked = false;
  return status;
}

uint32_t SqliteSettings::ReadContent(SqliteDatabase& database, std::string_view folder,
                                     Content& content) {
  int64_t version = 0;
  if (const int result = database.Query("PRAGMA user_version", version)) return StatusOf(result);
  if (version != kVersion) {
    if (IsDamaged(database, version)) return kStatusFileCorrupt;
    return version == 0 ? kStatusFileNotFound : kStatusNotSupported;
  }

  SqliteStatement rows(database, kReadValues);
  rows.BindText(1, folder);
  rows.BindNumber(2, kLargestSettingsValue);
  int result = rows.Step();
  for (; result == SQLITE_ROW; result = rows.Step()) {
    if (std::optional<SettingsValue> value = ValueOf(rows, 1, 2))
      content.values.insert_or_assign(std::string(rows.Text(0)), std::move(*value));
  }
  if (result == SQLITE_DONE) {
    const std::string below = std::string(folder) + kSettingsPathSeparator;
    SqliteStatement folders(database, kReadFolders);
    folders.BindText(1, below);
    for (result = folders.Step(); result == SQLITE_ROW; result = folders.Step())
      content.folders.emplace_back(folders.Text(0));
  }
  // With this version the tables must be there.
  return (result & 0xFF) == SQLITE_ERROR ? kStatusFileCorrupt : StatusOf(result);
}

// Writing

template <typename WriteFn>
uint32_t SqliteSettings::InSave(WriteFn write) {
  const bool isWhole = !m_saving.IsOpen();
  if (isWhole) {
    if (const uint32_t status = BeginSave()) return status;
  }
  m_snapshot.reset();
  const uint32_t status = write();
  if (!isWhole) return status;
  if (status == 0) return CommitSave();
  AbandonSave();
  return status;
}

uint32_t SqliteSettings::CreateFolder(std::string_view path) {
  return InSave([this, path] {
    for (size_t end = path.find(kSettingsPathSeparator);;
         end = path.find(kSettingsPathSeparator, end + 1)) {
      SqliteStatement add(m_saving, kAddFolder);
      add.BindText(1, path.substr(0, end));
      if (const uint32_t status = StatusOf(add.Step())) return status;
      if (end == std::string_view::npos) return uint32_t{0};
    }
  });
}

uint32_t SqliteSettings::Write(std::string_view folder, std::string_view name,
                               const SettingsValue& value) {
  return InSave([this, folder, name, &value]() -> uint32_t {
    std::string bytes;
    SqliteStatement write(m_saving, kWriteValue);
    write.BindText(1, folder);
    write.BindText(2, name);
    if (const auto* const binary = std::get_if<std::string>(&value)) {
      bytes = *binary;
      write.BindNumber(3, kKindBinary);
      write.BindBytes(4, bytes);
    } else if (const auto* const number = std::get_if<uint32_t>(&value)) {
      write.BindNumber(3, kKindNumber);
      write.BindNumber(4, static_cast<int32_t>(*number));
    } else if (const auto* const large = std::get_if<uint64_t>(&value)) {
      write.BindNumber(3, kKindNumber64);
      write.BindNumber(4, static_cast<int64_t>(*large));
    } else {
      bytes = WideToUtf8Lossy(std::get<WideString>(value));
      write.BindNumber(3, kKindText);
      write.BindText(4, bytes);
    }
    if (bytes.size() > kLargestSettingsValue) return kStatusBadLength;
    if (const uint32_t status = StatusOf(write.Step())) return status;
    return m_saving.Changes() == 0 ? kStatusInvalidHandle : kStatusSuccess;
  });
}

uint32_t SqliteSettings::RemoveValue(std::string_view folder, std::string_view name) {
  return InSave([this, folder, name]() -> uint32_t {
    SqliteStatement remove(m_saving, kRemoveValue);
    remove.BindText(1, folder);
    remove.BindText(2, name);
    if (const uint32_t status = StatusOf(remove.Step())) return status;
    return m_saving.Changes() == 0 ? kStatusFileNotFound : kStatusSuccess;
  });
}

uint32_t SqliteSettings::RemoveFolder(std::string_view path) {
  return InSave([this, path]() -> uint32_t {
    const std::string below = std::string(path) + kSettingsPathSeparator;
    for (const std::string_view statement : {kRemoveValuesBelow, kRemoveFolders}) {
      SqliteStatement remove(m_saving, statement);
      remove.BindText(1, path);
      remove.BindText(2, below);
      if (const uint32_t status = StatusOf(remove.Step())) return status;
    }
    return m_saving.Changes() == 0 ? kStatusFileNotFound : kStatusSuccess;
  });
}

uint32_t SqliteSettings::BeginSave() {
  m_snapshot.reset();
  uint32_t status = OpenForSave();
  if (status == kStatusFileCorrupt) {
    m_saving.Close();
    status = RemoveDamage();
    if (status == 0) status = OpenForSave();
  }
  if (status != 0) m_saving.Close();
  return status;
}

uint32_t SqliteSettings::OpenForSave() {
  if (const uint32_t status = EnsurePrivateFile(m_path)) return status;
  int result = m_saving.Open(m_path, SqliteDatabase::Mode::kReadWrite);
  if (result == SQLITE_OK) result = m_saving.Execute("BEGIN IMMEDIATE");
  if (result != SQLITE_OK) return StatusOf(result);
  SettingsReporter::Instance().isLocked = false;
  return PrepareTables();
}

uint32_t SqliteSettings::PrepareTables() {
  int64_t version = 0;
  if (const int result = m_saving.Query("PRAGMA user_version", version)) return StatusOf(result);
  if (IsDamaged(m_saving, version)) return kStatusFileCorrupt;
  if (version == 0) return StatusOf(m_saving.Execute(kMakeTables));
  return version == kVersion ? kStatusSuccess : kStatusNotSupported;
}

uint32_t SqliteSettings::CommitSave() {
  m_snapshot.reset();
  const uint32_t status = StatusOf(m_saving.Execute("COMMIT"));
  m_saving.Close();
  return status;
}

void SqliteSettings::AbandonSave() {
  m_snapshot.reset();
  m_saving.Close();  // takes the open transaction back
}

// Damage

uint32_t SqliteSettings::RemoveDamage() {
  std::string aside;
  if (const uint32_t status = PutAside(m_path, IsFileDamaged, aside)) return status;
  if (!aside.empty()) SettingsReporter::Instance().TellDamaged(WidePath(aside));
  return 0;
}

}  // namespace

std::unique_ptr<SettingsBackend> OpenSqliteSettings(const WideString& path) {
  return std::make_unique<SqliteSettings>(PathBytes(path));
}

WideString UserSettingsFile() {
  const WideString folder = SettingsFolder();
  return folder.empty() ? WideString() : folder + u"/settings.db";
}

std::unique_ptr<SettingsBackend> OpenUserSettings() {
  const WideString file = UserSettingsFile();
  return file.empty() ? nullptr : OpenSqliteSettings(file);
}
