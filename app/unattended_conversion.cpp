#include "app/unattended_conversion.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "app/console_text.h"
#include "app/conversion_run.h"
#include "app/conversion_sources.h"
#include "app/directions_choice.h"
#include "app/service_outcome.h"
#include "app/writer_option.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"
#include "platform/folder.h"
#include "platform/interruption.h"
#include "platform/scratch_folder.h"

namespace {

/// What is converted into what.
struct Request {
  std::vector<WideString> sources;
  const CItineraryFormat* row = nullptr;
};

bool IsFolder(const WideString& path) {
  return path != kStream && FileAttributes(path) == kAttributeDirectory;
}

bool IsCsv(std::u16string_view key) {
  return EqualsIgnoringCase(key.substr(0, key.find(u':')), u"csv");
}

int Refuse(const std::string& message) {
  Complain(message);
  return kExitWrongUsage;
}

// A key that comes second has one source in front of it, as it always had, and whatever comes
// behind does not count. Else the last token is the key and all before it are sources.
int Understand(const Options& options, const FormatTable& table, Request& request) {
  const std::vector<WideString>& tokens = options.tokens;
  const bool isPlain = tokens.size() == 2 || FindWriter(table, ToLowerAscii(tokens[1]));
  const size_t count = isPlain ? 1 : tokens.size() - 1;
  const WideString& key = tokens[count];
  request.row = FindWriter(table, ToLowerAscii(key));
  if (!request.row) {
    const bool isRead = FindReader(table, ToLowerAscii(key)) != nullptr;
    return Refuse(FormatText(isRead ? kTextReadOnlyFormat : kTextUnknownKey, ShownPath(key)));
  }
  if (isPlain && tokens.size() > 2 && !options.quiet) {
    std::string ignored;
    for (size_t i = 2; i < tokens.size(); ++i) ignored += (i > 2 ? " " : "") + ShownPath(tokens[i]);
    Complain(FormatText(kTextTokensIgnored, ignored));
  }
  request.sources.assign(tokens.begin(), tokens.begin() + static_cast<ptrdiff_t>(count));
  return kExitConverted;
}

// Whether the sources are there. 0, or the exit status.
int CheckSources(const std::vector<WideString>& sources) {
  for (const WideString& source : sources) {
    uint32_t error = kStatusSuccess;
    if (source != kStream && !IsWebAddress(source) &&
        FileAttributes(source, &error) == kNoAttributes && error == kStatusFileNotFound) {
      return Refuse(FormatText(kTextNoSource, ShownPath(source)));
    }
  }
  return kExitConverted;
}

// What does not go together with streams. 0, or the exit status.
int CheckStreams(const Options& options, const Request& request) {
  const auto& sources = request.sources;
  const auto inputs = std::count(sources.begin(), sources.end(), kStream);
  const bool isOne = sources.size() == 1 || options.merge;
  if (inputs > 1 || (inputs == 1 && !isOne)) return Refuse(FormatText(kTextOneFileFromInput));
  const bool toOutput =
      options.output == kStream || (options.output.empty() && sources.front() == kStream);
  const RowFacts& facts = request.row->facts;
  const bool isSplit = options.split != 0 && facts.option == WriterOption::kSplit && facts.isFile;
  const bool isMany = !isOne || isSplit || std::any_of(sources.begin(), sources.end(), IsFolder);
  if (toOutput && (isMany || (options.json && !options.check)))
    return Refuse(FormatText(kTextOneFileToOutput));
  return kExitConverted;
}

// Options that would do nothing here. 0, or the exit status.
int CheckEffects(const Options& options, const Request& request) {
  const auto& sources = request.sources;
  const bool hasFolder = std::any_of(sources.begin(), sources.end(), IsFolder);
  const bool isOneFile = sources.size() == 1 && !hasFolder;
  const std::u16string_view format =
      options.from.empty() ? ExtensionOfPath(sources.front()) : options.from;
  const bool fromCsv = !isOneFile || format.empty() || IsCsv(format);
  const bool readsCsv = options.csvRead || options.findsCsvColumns;
  const bool writesNothing = options.check;
  const DirectionsOptions::Typed& typed = options.directions.typed;
  // Links tell planners what to ask for.
  const bool asksNoWay = !options.directions.directions && request.row->facts.isFile;
  const struct {
    const char* name;
    bool isIdle;
  } kinds[] = {
      {"--merge", options.merge && isOneFile},
      {"--recursive", options.recursive && !hasFolder},
      {"--summary", options.summary},
      {"--csv-read", readsCsv && !options.remember && !fromCsv},
      {"--csv-write", options.csvWrite && !options.remember && !IsCsv(request.row->extension)},
      {"--remember", options.remember && !options.csvRead && !options.csvWrite},
      {"--fit", options.fit && !request.row->facts.isFile},
      {"--mode", typed.mode && asksNoWay},
      {"--type", typed.type && asksNoWay},
      {"--avoid", typed.avoid && asksNoWay},
      {"--hilliness", typed.hilliness && asksNoWay},
      {"--windingness", typed.windingness && asksNoWay},
      {"--tractor", options.directions.tractor && asksNoWay},
      {"--point", options.send.stop != 0},
      {"--near", options.services.typed.near.has_value()},
      {"--radius", options.services.typed.radius.has_value()},
      {"--force", options.force && writesNothing},
      {"--no-sync", options.noSync && writesNothing},
  };
  for (const auto& kind : kinds) {
    if (kind.isIdle) return Refuse(FormatText(kTextOptionWithoutEffect, kind.name));
  }
  return kExitConverted;
}

// The files of the sources. 0, or the exit status; what cannot be listed was told then.
int ListAll(const Options& options, const std::vector<WideString>& given,
            std::vector<ConversionSource>& sources) {
  for (const WideString& source : given) {
    if (!IsFolder(source)) {
      sources.push_back({source});
    } else if (const uint32_t error = ListSources(source, options.recursive, sources)) {
      // That it is a folder is no reason here.
      Complain(source,
               std::string(LoadTextUtf8(kTextCannotBeRead)) + DescribeReason(error, WideString()));
      return kExitFailed;
    }
  }
  return kExitConverted;
}

// The folder for the targets of several sources. 0, or the exit status.
int MakeOutputFolder(const Options& options) {
  if (options.output.empty()) return kExitConverted;
  const uint32_t error = CreateFolders(options.output);
  if (error == kStatusSuccess) return kExitConverted;
  std::string reason = DescribeReason(error, options.output);
  if (FileAttributes(options.output) == kAttributeNormal)
    reason = " " + FormatText(kTextReason, LoadTextUtf8(kTextReasonFile));
  Complain(options.output, std::string(LoadTextUtf8(kTextCannotBeWritten)) + reason);
  return kExitFailed;
}

// Has legs asked for, where the options want them. 0, or the exit status.
int TakeDirections(const Options& options, ConversionContext& context, ConversionRun& run) {
  const DirectionsOptions& directions = options.directions;
  if (!directions.directions) return kExitConverted;
  PrepareServices();
  DirectionsChoice choice = ChooseDirections(
      options, directions.provider ? directions.provider : options.services.typed.provider);
  if (!choice.IsToBeAsked()) {
    Complain(choice.service.message);
    return choice.service.exitStatus;
  }
  run.SetDirections(std::move(choice));
  context.writesWay = directions.withWay;
  return kExitConverted;
}

int Convert(const Options& options, const Request& request, ConversionRun& run) {
  const std::vector<WideString>& given = request.sources;
  const bool hasFolder = std::any_of(given.begin(), given.end(), IsFolder);
  if (given.size() == 1 && !hasFolder) return run.ConvertOne(given.front());
  std::vector<ConversionSource> sources;
  if (const int status = ListAll(options, given, sources)) return status;
  if (options.merge) return run.Merge(sources);
  if (const int status = options.check ? 0 : MakeOutputFolder(options)) return status;
  return run.ConvertEach(sources);
}

}  // namespace

int RunConversion(const Options& options, const FormatTable& table, ConversionContext& context) {
  Request request;
  if (const int status = Understand(options, table, request)) return status;
  if (!options.from.empty() && !FindReader(table, options.from))
    return Refuse(FormatText(kTextNothingReads, ShownPath(options.from)));
  if (const int status = CheckSources(request.sources)) return status;
  if (options.directions.withWay && !request.row->facts.takesWay)
    return Refuse(FormatText(kTextWithWayRows));
  if (const int status = CheckStreams(options, request)) return status;
  if (const int status = CheckEffects(options, request)) return status;
  uint32_t option = 0;
  std::string error;
  if (!TakeWriterOption(options, *request.row, option, error)) return Refuse(error);
  const std::string effect = DescribeSwitch(options, *request.row);
  if (!effect.empty() && !options.quiet) Complain(effect);

  ScratchFolder::ClearLeftBehind();
  context.progress = [](const ConversionProgress&) { return !InterruptionScope::IsPending(); };
  // Never destroyed: to free a million points one by one takes longer than to end the process.
  static auto* const run = new ConversionRun(options, table, *request.row, option, context);
  if (const int status = TakeDirections(options, context, *run)) return status;
  return Convert(options, request, *run);
}
