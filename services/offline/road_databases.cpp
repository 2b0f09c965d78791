#include "services/offline/road_databases.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/status.h"
#include "base/text.h"
#include "platform/child_process.h"
#include "platform/folder.h"
#include "platform/input_file.h"
#include "platform/interruption.h"
#include "platform/known_folders.h"
#include "platform/output_file.h"
#include "platform/path_text.h"
#include "platform/sequential_file.h"
#include "services/offline/road_profile.h"

namespace {

constexpr char kMaker[] = "planetsplitter";
constexpr char kTeller[] = "filedumper";
constexpr char16_t kRulesOfMaker[] = u"/usr/share/routino/tagging.xml";
constexpr char16_t kBoundsFile[] = u"bounds";
// In front of the names of databases that are being made; no finished one begins so.
constexpr std::u16string_view kUnfinished = u".new-";
constexpr std::u16string_view kReplaced = u".old-";
constexpr char16_t kNodesFile[] = u"nodes.mem";

WideString RoadsFolder() {
  const WideString data = DataFolder();
  return data.empty() ? data : data + u"/roads";
}

WideString FolderOf(std::string_view name) { return RoadsFolder() + u"/" + WidenAscii(name); }

// One beside it that is not listed.
WideString HiddenFolder(std::u16string_view mark, std::string_view name) {
  return RoadsFolder() + u"/" + WideString(mark) + WidenAscii(name);
}

std::string BytesOf(const WideString& path) {
  InputFile file;
  return file.Open(path) == kStatusSuccess ? std::string(file.Bytes()) : std::string();
}

bool WriteFile(const WideString& path, std::string_view bytes) {
  OutputFile file(path);
  file.Write(bytes);
  return file.Commit() == kStatusSuccess;
}

// Whether the file's first bytes are those of an extract, packed or not; its name must say the same
// since the maker goes by the name.
bool IsExtract(const WideString& path) {
  struct Kind {
    std::u16string_view ending;
    std::string_view start;  // of its bytes
    size_t at;
  };
  constexpr size_t kAnywhere = std::string_view::npos;
  constexpr Kind kKinds[] = {{u".gz", "\x1F\x8B", 0},
                             {u".bz2", "BZh", 0},
                             {u".pbf", "OSMHeader", 6},
                             {u".osm", "<osm", kAnywhere}};
  SequentialFile file;
  std::array<char, 4096> head{};
  if (file.Open(path) != kStatusSuccess) return false;
  const std::string_view bytes(head.data(), file.Read(head.data(), head.size()).value_or(0));
  const WideString name = ToLowerAscii(path);
  for (const Kind& kind : kKinds) {
    if (!name.ends_with(kind.ending)) continue;
    const size_t found = bytes.find(kind.start);
    return kind.at == kAnywhere ? found != std::string_view::npos : found == kind.at;
  }
  return false;
}

/// Takes whole lines out of what a program writes.
class LineGatherer {
 public:
  explicit LineGatherer(const std::function<void(std::string_view)>& onLine) : m_onLine(onLine) {}

  void Take(std::string_view output) {
    for (const char c : output) {
      if (c != '\n' && c != '\r') {
        m_line += c;
      } else if (!m_line.empty()) {
        m_last = m_line;
        if (m_onLine) m_onLine(m_line);
        m_line.clear();
      }
    }
  }
  /// The last line so far, whole or not.
  const std::string& LastLine() const { return m_line.empty() ? m_last : m_line; }

 private:
  const std::function<void(std::string_view)>& m_onLine;
  std::string m_line;
  std::string m_last;
};

// The number of degrees in parentheses behind a title of the teller's: "Lat zero=  857 ( 47.9516
// deg)", or the whole number behind it.
bool NumberBehind(std::string_view text, std::string_view title, bool inParentheses,
                  double& number) {
  const size_t found = text.find(title);
  if (found == std::string_view::npos) return false;
  std::string_view rest = text.substr(found + title.size());
  rest = rest.substr(0, rest.find('\n'));
  if (inParentheses) {
    const size_t open = rest.find('(');
    if (open == std::string_view::npos) return false;
    rest.remove_prefix(open + 1);
  }
  return TryParseReal(TrimLeft(rest, " "), number);
}

// The area is a grid of bins; the teller gives where it begins and how many bins there are.
std::optional<RoadBounds> AskForBounds(const std::string& folder) {
  std::string text;
  const ChildResult result =
      RunChild({kTeller, "--dir=" + folder, "--statistics"}, [&text](std::string_view output) {
        text += output;
        return true;
      });
  double latitudeBins = 0.0;
  double longitudeBins = 0.0;
  double firstLatitudeBin = 0.0;
  RoadBounds bounds;
  const bool isTold = result.status == 0 && NumberBehind(text, "Lat bins=", false, latitudeBins) &&
                      NumberBehind(text, "Lon bins=", false, longitudeBins) &&
                      NumberBehind(text, "Lat zero=", false, firstLatitudeBin) &&
                      NumberBehind(text, "Lat zero=", true, bounds.south) &&
                      NumberBehind(text, "Lon zero=", true, bounds.west);
  // The size of a bin in degrees: 2^16 of 2^26 of a radian.
  constexpr double kBin = 57.29577951308232 / 1024.0;
  if (!isTold) return std::nullopt;
  bounds.north = bounds.south + latitudeBins * kBin;
  bounds.east = bounds.west + longitudeBins * kBin;
  return bounds;
}

std::optional<RoadBounds> ReadBounds(const WideString& folder) {
  const std::string text = BytesOf(folder + u"/" + kBoundsFile);
  std::vector<std::string_view> fields;
  SplitFields(Trim(text, "\n"), ' ', fields);
  RoadBounds bounds;
  double* const kNumbers[] = {&bounds.south, &bounds.west, &bounds.north, &bounds.east};
  if (fields.size() != std::size(kNumbers)) return std::nullopt;
  for (size_t i = 0; i < fields.size(); ++i) {
    if (!TryParseReal(fields[i], *kNumbers[i])) return std::nullopt;
  }
  return bounds;
}

// What a maker of this database that was killed has left. Others may be made at the same time.
void RemoveLeftovers(std::string_view name) {
  for (const std::u16string_view mark : {kUnfinished, kReplaced})
    RemoveFolder(HiddenFolder(mark, name));
}

/// A folder that is removed with its content unless it is kept.
class UnfinishedFolder {
 public:
  explicit UnfinishedFolder(WideString path) : m_path(std::move(path)) {}
  ~UnfinishedFolder() { RemoveFolder(m_path); }
  UnfinishedFolder(const UnfinishedFolder&) = delete;
  UnfinishedFolder& operator=(const UnfinishedFolder&) = delete;

  const WideString& Path() const { return m_path; }

  /// Puts it in the place of `target`, of which nothing stays.
  bool PutInPlaceOf(const WideString& target, const WideString& aside) const {
    const bool hadFormer = RenameFolder(target, aside) == kStatusSuccess;
    if (RenameFolder(m_path, target) == kStatusSuccess) {
      RemoveFolder(aside);
      return true;
    }
    if (hadFormer) RenameFolder(aside, target);
    return false;
  }

 private:
  WideString m_path;
};

RoadsChange RunMaker(const WideString& folder, const WideString& extract, LineGatherer& lines) {
  const std::string folderBytes = PathBytes(folder);
  const WideString rules = folder + u"/rules.xml";
  std::vector<std::string> arguments = {kMaker, "--dir=" + folderBytes, "--loggable"};
  const std::string rulesOfMaker = BytesOf(kRulesOfMaker);
  if (!rulesOfMaker.empty()) {
    if (!WriteFile(rules, RulesWithTolls(rulesOfMaker))) return RoadsChange::kNotWritable;
    arguments.push_back("--tagging=" + PathBytes(rules));
  }
  // A name that begins with a dash would be taken for an option.
  const std::string extractBytes = PathBytes(extract);
  arguments.push_back(extractBytes.starts_with('-') ? "./" + extractBytes : extractBytes);

  const ChildResult result = RunChild(arguments, [&lines](std::string_view output) {
    lines.Take(output);
    return true;
  });
  if (result.status != 0) return RoadsChange::kNotInstalled;
  if (result.interrupted) return RoadsChange::kInterrupted;
  const bool hasNodes = FileSize(folder + u"/" + kNodesFile) > 0;
  if (result.exitCode == 0 && hasNodes) return RoadsChange::kDone;
  // What the maker says where nothing is left to be stored.
  return lines.LastLine().starts_with("Cannot mmap file") ? RoadsChange::kNoRoads
                                                          : RoadsChange::kFailed;
}

}  // namespace

bool RoadBounds::Holds(const RoadPosition& position) const {
  return south <= position.latitude && position.latitude <= north && west <= position.longitude &&
         position.longitude <= east;
}

std::vector<RoadDatabase> ListRoadDatabases() {
  std::vector<RoadDatabase> databases;
  std::vector<WideString> names;
  const WideString folder = RoadsFolder();
  if (folder.empty() || ListFolder(folder, names) != kStatusSuccess) return databases;
  for (const WideString& name : names) {
    const WideString path = JoinedPath(folder, name);
    if (name.starts_with(u".") || FileSize(path + u"/" + kNodesFile) == 0) continue;
    databases.push_back({PathBytes(name), path, ReadBounds(path)});
  }
  return databases;
}

bool IsRoadDatabaseName(std::string_view name) {
  constexpr size_t kLongest = 64;
  const auto isAllowed = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == '_';
  };
  return !name.empty() && name.size() <= kLongest && std::ranges::all_of(name, isAllowed);
}

RoadsChange AddRoadDatabase(std::string_view name, const WideString& extract,
                            const std::function<void(std::string_view line)>& onProgress,
                            std::string& failure) {
  if (!IsRoadDatabaseName(name)) return RoadsChange::kWrongName;
  if (FileAttributes(extract) != kAttributeNormal) return RoadsChange::kNotThere;
  if (!IsExtract(extract)) return RoadsChange::kNoExtract;
  const WideString parent = RoadsFolder();
  if (parent.empty()) return RoadsChange::kNotWritable;
  // What goes on between and behind the programs must not end half-way either.
  const InterruptionWatch watch;
  const UnfinishedFolder making(HiddenFolder(kUnfinished, name));
  RemoveLeftovers(name);
  if (CreateFolders(making.Path()) != kStatusSuccess) return RoadsChange::kNotWritable;

  LineGatherer lines(onProgress);
  const RoadsChange made = RunMaker(making.Path(), extract, lines);
  failure = lines.LastLine();
  if (made != RoadsChange::kDone) return made;
  if (const auto bounds = AskForBounds(PathBytes(making.Path()))) {
    const std::string text =
        fmt::format("{} {} {} {}\n", bounds->south, bounds->west, bounds->north, bounds->east);
    if (!WriteFile(making.Path() + u"/" + kBoundsFile, text)) return RoadsChange::kNotWritable;
  }
  if (watch.IsInterrupted()) return RoadsChange::kInterrupted;
  const bool isInPlace = making.PutInPlaceOf(FolderOf(name), HiddenFolder(kReplaced, name));
  return isInPlace ? RoadsChange::kDone : RoadsChange::kNotWritable;
}

RoadsChange RemoveRoadDatabase(std::string_view name) {
  if (!IsRoadDatabaseName(name)) return RoadsChange::kWrongName;
  const WideString folder = FolderOf(name);
  if (FileAttributes(folder) != kAttributeDirectory) return RoadsChange::kNotThere;
  // Out of sight first, so that no half of it is ever taken for a database.
  const WideString aside = HiddenFolder(kReplaced, name);
  if (RenameFolder(folder, aside) != kStatusSuccess) return RoadsChange::kNotWritable;
  return RemoveFolder(aside) == kStatusSuccess ? RoadsChange::kDone : RoadsChange::kNotWritable;
}
