#include "app/roads_command.h"

#include <string>

#include "app/command_line.h"
#include "app/console_text.h"
#include "app/output_sink.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "platform/console.h"
#include "services/offline/road_databases.h"

namespace {

constexpr std::string_view kClearLine = "\r\x1B[K";

// The message for a change that came to nothing.
std::string Describe(RoadsChange change, const std::string& name, const WideString& extract,
                     const std::string& failure) {
  const std::string file = ShownPath(extract);
  switch (change) {
    case RoadsChange::kWrongName:
      return FormatText(kTextRoadsWrongName, name);
    case RoadsChange::kNotThere:
      return FormatText(kTextNoSource, file);
    case RoadsChange::kNoExtract:
      return FormatText(kTextRoadsNoExtract, file);
    case RoadsChange::kNoRoads:
      return FormatText(kTextRoadsNotMade, file, LoadTextUtf8(kTextExtractWithoutRoads));
    case RoadsChange::kNotInstalled:
      return FormatText(kTextPlanetsplitterMissing);
    case RoadsChange::kNotWritable:
      return FormatText(kTextRoadsNotMade, file, LoadTextUtf8(kTextRoadsFolderNotWritable));
    case RoadsChange::kInterrupted:
      return FormatText(kTextRoadsInterrupted, name);
    case RoadsChange::kFailed:
    case RoadsChange::kDone:
      break;
  }
  return FormatText(kTextRoadsNotMade, file, failure);
}

int Add(const Options& options, const std::string& name, const WideString& extract) {
  const bool showsProgress = !options.quiet && IsErrorTerminal();
  const auto showLine = [showsProgress](std::string_view line) {
    // Longer ones would fill two lines, of which the next one replaces only the second.
    constexpr size_t kWidth = 78;
    if (showsProgress) WriteError(std::string(kClearLine) + Printable(line.substr(0, kWidth)));
  };
  std::string failure;
  const RoadsChange change = AddRoadDatabase(name, extract, showLine, failure);
  if (showsProgress) WriteError(kClearLine);
  if (change == RoadsChange::kDone) {
    if (!options.quiet) Complain(FormatText(kTextRoadsAdded, name));
    return kExitConverted;
  }
  Complain(Describe(change, name, extract, failure));
  const bool isWrongUsage = change == RoadsChange::kWrongName || change == RoadsChange::kNotThere;
  return isWrongUsage ? kExitWrongUsage : kExitFailed;
}

int List(const Options& options) {
  OutputSink sink;
  const std::vector<RoadDatabase> databases = ListRoadDatabases();
  for (const RoadDatabase& database : databases) {
    sink.Write(Printable(database.name));
    if (const auto& bounds = database.bounds)
      sink.Write(fmt::format("  {:.2f},{:.2f}  {:.2f},{:.2f}", bounds->south, bounds->west,
                             bounds->north, bounds->east));
    sink.Put('\n');
  }
  if (databases.empty() && !options.quiet) Complain(FormatText(kTextRoadsNone));
  return sink.Finish() ? kExitConverted : kExitFailed;
}

int Remove(const Options& options, const std::string& name) {
  switch (RemoveRoadDatabase(name)) {
    case RoadsChange::kDone:
      if (!options.quiet) Complain(FormatText(kTextRoadsRemoved, name));
      return kExitConverted;
    case RoadsChange::kWrongName:
    case RoadsChange::kNotThere:
      Complain(FormatText(kTextRoadsUnknown, name));
      return kExitWrongUsage;
    default:
      Complain(FormatText(kTextRoadsNotRemoved, name));
      return kExitFailed;
  }
}

}  // namespace

int RunRoads(const Options& options) {
  std::vector<WideString> words = options.tokens;
  DropLanguageTokens(words);
  const WideString verb = words.empty() ? WideString() : words[0];
  const auto name = [&words] { return WideToUtf8Lossy(words[1]); };
  if (verb == u"add" && words.size() == 3) return Add(options, name(), words[2]);
  if (verb == u"list" && words.size() == 1) return List(options);
  if (verb == u"remove" && words.size() == 2) return Remove(options, name());
  Complain(FormatText(kTextRoadsUsage));
  return kExitWrongUsage;
}
