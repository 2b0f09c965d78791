#include "app/conversion_run.h"

#include <algorithm>
#include <set>
#include <string>

#include "app/console_text.h"
#include "app/conversion_services.h"
#include "app/link_output.h"
#include "app/list_operations.h"
#include "app/output_sink.h"
#include "app/reading_remarks.h"
#include "app/settings_command.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/content_search.h"
#include "conversion/fit.h"
#include "conversion/format_search.h"
#include "conversion/loss_description.h"
#include "platform/folder.h"
#include "platform/interruption.h"
#include "services/links/link_writing.h"
#include "settings/settings.h"

namespace {

bool IsSearchForOrder(const ListOperation& operation) {
  return operation.kind == ListOperation::Kind::kOptimize ||
         operation.kind == ListOperation::Kind::kOptimizeBest;
}

// What is shown for a source or a target.
WideString ShownName(const WideString& path, uint32_t streamText) {
  return path == kStream ? LoadText(streamText) : path;
}

}  // namespace

ConversionRun::ConversionRun(const Options& options, const FormatTable& table,
                             const CItineraryFormat& row, uint32_t option,
                             ConversionContext& context)
    : m_options(options),
      m_row(row),
      m_option(option),
      m_context(context),
      m_front(options),
      m_driver(table, m_front, context, ChangeTracking::kOff) {}

// Links are shown unless a file is asked for.
bool ConversionRun::MakesFile() const { return m_row.facts.isFile || !m_options.output.empty(); }

// The source's path up to its last dot, and the key's extension. A name without a dot stays whole.
// What comes out of a link goes into the current folder.
WideString ConversionRun::TargetBeside(const WideString& source) const {
  if (IsWebAddress(source)) return LoadText(kTextItinerary) + u"." + m_row.extension;
  if (HasNoExtension(source)) return source + u"." + m_row.extension;
  return source.substr(0, source.rfind(u'.') + 1) + m_row.extension;
}

// What came as a stream goes on as one.
WideString ConversionRun::TargetOfOne(const WideString& source) const {
  const bool isStream = source == kStream;
  if (m_options.output.empty()) return isStream ? WideString(kStream) : TargetBeside(source);
  if (FileAttributes(m_options.output) != kAttributeDirectory) return m_options.output;
  const WideString name = isStream ? WideString(u"stdin.") + m_row.extension : TargetBeside(source);
  return JoinedPath(m_options.output, NameIn(name));
}

// The folders of a folder that was given are made anew in that of the targets.
WideString ConversionRun::TargetOfOneOfMany(const ConversionSource& source) const {
  WideString beside = TargetBeside(source.path);
  if (m_options.output.empty()) return beside;
  const WideString& top = m_options.output;
  const WideString folder = source.below.empty() ? top : JoinedPath(top, source.below);
  return JoinedPath(folder, NameIn(beside));
}

int ConversionRun::ConvertOne(const WideString& source) {
  const WideString target = TargetOfOne(source);
  m_files.emplace(FilesOfRun::Replaces::kAllButSources).AddSource(source);
  ClearUnfinishedBeside(target);
  m_tally.Count(Convert({source}, target));
  return ExitStatus();
}

int ConversionRun::Merge(const std::vector<ConversionSource>& sources) {
  const WideString target = TargetOfOne(sources.front().path);
  m_files.emplace(FilesOfRun::Replaces::kAllButSources);
  ClearUnfinishedBeside(target);
  bool append = false;
  for (const ConversionSource& source : sources) {
    m_files->AddSource(source.path);
    const uint32_t status = Read(source, append);
    if (status != kStatusSuccess) {
      m_tally.Count(FinishRead(source, status));
      PrintFailure(ShownName(source.path, kTextStandardInput),
                   ShownName(target, kTextStandardOutput), status);
      return ExitStatus();
    }
    append = true;
  }
  m_tally.Count(PrepareAndWrite(sources.front().path, target));
  return ExitStatus();
}

int ConversionRun::ConvertEach(const std::vector<ConversionSource>& sources) {
  using Replaces = FilesOfRun::Replaces;
  m_files.emplace(m_options.output.empty() ? Replaces::kNothing : Replaces::kAllButSources);
  std::set<WideString> folders;
  // Trips of several formats may have one name, which then leads them to one target.
  std::set<WideString> taken;
  for (const ConversionSource& source : sources) {
    m_files->AddSource(source.path);
    taken.insert(source.path);
  }
  m_isOneOfMany = true;
  for (size_t i = 0; i < sources.size(); ++i) {
    ShowProgress(i + 1, sources.size());
    const WideString& source = sources[i].path;
    const WideString target = TargetOfOneOfMany(sources[i]);
    if (folders.insert(FolderOf(target)).second) {
      if (!m_options.output.empty() && !m_options.check) CreateFolders(FolderOf(target));
      ClearUnfinishedBeside(target);
    }
    const Outcome outcome = Convert(sources[i], target);
    const bool isConverted = outcome == Outcome::kConverted || outcome == Outcome::kWithLosses;
    if (isConverted && MakesFile() && target != source && !taken.insert(target).second &&
        !m_options.quiet)
      Complain(FormatText(kTextReplacedInFolder, ShownPath(target), ShownPath(source)));
    m_tally.Count(outcome, !sources[i].fromFolder);
  }
  ShowProgress(0, 0);
  SyncWhatWasWritten(folders);
  if (!m_options.quiet) m_tally.Tell();
  return ExitStatus();
}

// What a killed run has left there.
void ConversionRun::ClearUnfinishedBeside(const WideString& target) const {
  if (!m_options.check && MakesFile() && target != kStream) ClearUnfinishedFiles(FolderOf(target));
}

// Many new files go to the disk together, which takes no longer than for one of them.
void ConversionRun::SyncWhatWasWritten(const std::set<WideString>& folders) {
  if (m_options.noSync || m_options.check || !MakesFile() || !m_tally.HasConverted()) return;
  for (const WideString& folder : folders) {
    const uint32_t error = SyncFileSystem(folder);
    if (error == kStatusSuccess) continue;
    m_front.SetSubject(folder);
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, {.platformError = error});
    m_tally.Count(Outcome::kFailed);
  }
}

int ConversionRun::ExitStatus() const {
  if (m_isWrongUsage) return kExitWrongUsage;
  const bool hasFailedLegs = m_legs && m_legs->HasFailures();
  if (!m_tally.IsComplete() || m_outputFailed || hasFailedLegs) return kExitFailed;
  if (m_options.tolerant) return kExitConverted;
  const bool hasLosses = m_options.strict ? m_tally.HasLosses() : m_hasGraveLosses;
  return hasLosses ? kExitLosses : kExitConverted;
}

Outcome ConversionRun::Convert(const ConversionSource& source, const WideString& target) {
  const uint32_t status = Read(source, false);
  if (status == kStatusSuccess) return PrepareAndWrite(source.path, target);
  const Outcome outcome = FinishRead(source, status);
  PrintFailure(ShownName(source.path, kTextStandardInput), ShownName(target, kTextStandardOutput),
               status);
  return outcome;
}

uint32_t ConversionRun::Read(const ConversionSource& from, bool append) {
  const WideString& source = from.path;
  m_error.clear();
  m_front.SetSubject(ShownName(source, kTextStandardInput));
  m_front.SetReportsUnknown(!m_options.quiet || !from.fromFolder);
  ReadOptions options;
  options.silent = true;
  options.key = m_options.from;
  options.byContent = !from.fromFolder;
  if (source != kStream) {
    const uint32_t status = m_driver.Open(source, append, options);
    if (!m_options.quiet) TellColumns(source, m_context.csvLayouts);
    return status;
  }
  std::string bytes;
  if (const uint32_t error = ReadInput(bytes)) {
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeRead, {.platformError = error});
    return kStatusFailure;
  }
  const uint32_t status = m_driver.OpenBytes(bytes, append, options);
  if (!m_options.quiet) TellColumns(LoadText(kTextStandardInput), m_context.csvLayouts);
  return status;
}

// What came of a read that has failed.
Outcome ConversionRun::FinishRead(const ConversionSource& from, uint32_t status) {
  const WideString& source = from.path;
  TellLookups(ShownName(source, kTextStandardInput));
  if (m_front.Declined()) {
    Complain(FormatText(kTextNoSuchList, m_options.lists.text,
                        ShownPath(ShownName(source, kTextStandardInput))));
    return Outcome::kFailed;
  }
  if (status != kStatusBadFormat) return Outcome::kFailed;
  if (HasNoExtension(source) && !IsWebAddress(source) && m_options.from.empty() && !from.fromFolder)
    Complain(FormatText(kTextContentUnknown, ShownPath(ShownName(source, kTextStandardInput))));
  return Outcome::kNotRecognised;
}

void ConversionRun::TellLookups(const WideString& source) const {
  if (m_options.quiet) return;
  const auto count = [this](ConversionNote note) { return m_driver.readNotes.Count(note); };
  if (const uint64_t lookedUp = count(ConversionNote::kStopLookedUp)) {
    ::Complain(FormatText(kTextStopsLookedUp, ShownPath(source), lookedUp,
                          count(ConversionNote::kStopNotFound)));
  }
  if (count(ConversionNote::kStopNotAsked) > 0) ::Complain(PositionRemedy(m_options));
  if (const uint64_t left = count(ConversionNote::kPlaceNotAsked)) {
    ::Complain(FormatText(kTextPlacesNotAsked, ShownPath(source), left));
    ::Complain(PlaceRemedy(m_options));
  }
  if (count(ConversionNote::kPageNotFetched) > 0)
    ::Complain(FormatText(kTextSavedMapNotFetched, ShownPath(source)));
}

// Does with the itinerary what the options want, up to the way in its place. False when nothing is
// left to be written, and the user has been told.
bool ConversionRun::Prepare(const WideString& source, const WideString& target) {
  const bool becomesWay = m_options.directions.asTrack;
  const auto isOfWay = [becomesWay](const ListOperation& operation) {
    return becomesWay && operation.kind == ListOperation::Kind::kSimplify;
  };
  // A way is thinned when it is there; all else is done with its stops.
  std::vector<ListOperation> ofStops;
  std::vector<ListOperation> ofWay;
  for (const ListOperation& operation : m_options.operations)
    (isOfWay(operation) ? ofWay : ofStops).push_back(operation);

  CGpsRoute& itinerary = m_driver.current;
  const WideString shown = ShownName(source, kTextStandardInput);
  if (!m_legs) {
    ApplyListOperations(ofStops, shown, m_options.quiet, itinerary);
    return true;
  }
  if (std::ranges::any_of(ofStops, IsSearchForOrder)) {
    const std::string refusal = m_legs->WhyNotOrderByRoad(shown, itinerary.Count());
    if (!refusal.empty()) return Complain(refusal);
  }
  const RoadOrder roads = m_legs->Roads();
  ApplyListOperations(ofStops, shown, m_options.quiet, itinerary, &roads);
  const bool replacesStops = becomesWay && !m_options.check && !m_options.force;
  if (replacesStops && IsSameFile(source, target))
    return Complain(FormatText(kTextTargetIsSource, ShownPath(shown)));
  const bool hasWay = m_legs->Calculate(shown, itinerary);
  if (!becomesWay) return true;
  ReplaceStopsByWay(itinerary);
  ApplyListOperations(ofWay, shown, m_options.quiet, itinerary);
  if (!hasWay || itinerary.points.empty())
    return Complain(FormatText(kTextNoWayToWrite, ShownPath(shown)));
  return true;
}

// An encoding that neither the source nor the target has any use for was meant for something else.
bool ConversionRun::HasUseForEncoding(const WideString& source) {
  const bool isIdle = !m_options.encoding.empty() && !m_context.usesEncoding &&
                      m_row.facts.text != TextForm::kNarrow;
  if (!isIdle || m_isOneOfMany) return true;
  m_isWrongUsage = true;
  return Complain(FormatText(kTextEncodingUnused, ShownPath(source)));
}

Outcome ConversionRun::PrepareAndWrite(const WideString& source, const WideString& target) {
  const WideString shown = ShownName(source, kTextStandardInput);
  TellLookups(shown);
  const size_t count = m_driver.current.Count();
  if (!HasUseForEncoding(shown) || !Prepare(source, target)) {
    PrintFailure(shown, ShownName(target, kTextStandardOutput), kStatusFailure);
    return Outcome::kFailed;
  }
  m_leavesPointsOut = m_options.directions.asTrack || m_driver.current.Count() < count;
  return m_row.facts.isFile ? Write(source, target) : WriteLinks(source, target);
}

Outcome ConversionRun::Write(const WideString& source, const WideString& target) {
  const WideString from = ShownName(source, kTextStandardInput);
  WriteOptions options;
  options.leavesPointsOut = m_leavesPointsOut;
  options.option = m_option;
  if (m_options.fit) options.fit = FitItinerary(m_driver.current, m_row, m_options.encoding);
  // An itinerary that the writer splits as told needs no more of it, and a stream is one file.
  const bool isSplit = m_row.facts.option == WriterOption::kSplit && m_option != 0;
  if (isSplit || target == kStream) options.fit.mostPoints = 0;
  options.silent = true;
  options.checks = !m_options.quiet || m_options.json || m_options.strict || m_options.check;
  options.keepsNothing = m_options.check;
  options.force = m_options.force;
  options.run = m_options.force ? nullptr : &*m_files;
  options.durability = m_options.noSync ? Durability::kLeftToTheSystem
                       : m_isOneOfMany  ? Durability::kSyncedTogether
                                        : Durability::kSynced;
  const WideString shown = ShownName(target, kTextStandardOutput);
  m_front.SetSubject(shown);
  return Finish(from, shown, Export(target, options));
}

TripWrite ConversionRun::Export(const WideString& target, const WriteOptions& options) {
  // What is half made goes when the user interrupts.
  const InterruptionScope interrupt;
  if (target != kStream) return m_driver.Export(target, m_row, options);
  if (m_options.check)
    return m_driver.Export(WideString(u"stdout.") + m_row.extension, m_row, options);
  OutputSink sink;
  TripWrite trip = m_driver.Stream(sink, m_row, options);
  m_outputFailed = !sink.Finish() || m_outputFailed;
  return trip;
}

Outcome ConversionRun::Finish(const WideString& source, const WideString& target, TripWrite trip) {
  const uint64_t countries = trip.notes.Count(ConversionNote::kCountryNotFound);
  if (countries > 0 && !m_options.quiet) {
    ::Complain(FormatText(kTextCountriesNotFound, ShownPath(target), countries));
    if (const std::string remedy = CountryRemedy(m_options); !remedy.empty()) ::Complain(remedy);
  }
  const bool isWritten = trip.status == kStatusSuccess;
  if (trip.check) {
    trip.check->fitHelps = !m_options.fit && trip.check->MayBeFitted() &&
                           WouldFit(m_driver.current, m_row, m_options.encoding);
    m_hasGraveLosses = m_hasGraveLosses || (isWritten && trip.check->HasGraveLosses());
    if (isWritten || !m_options.json) TellCheck(source, target, *trip.check);
  }
  Outcome outcome = Outcome::kFailed;
  if (trip.refusal != WriteRefusal::kNone) outcome = TellRefusal(source, trip);
  if (!isWritten) {
    PrintFailure(source, target, trip.status);
    return outcome;
  }
  return trip.check && trip.check->HasLosses() ? Outcome::kWithLosses : Outcome::kConverted;
}

Outcome ConversionRun::TellRefusal(const WideString& source, const TripWrite& trip) {
  if (trip.refusal == WriteRefusal::kKept) {
    Complain(FormatText(kTextFileKept, ShownPath(trip.refusedFile)));
    return Outcome::kKept;
  }
  const bool holdsMore = trip.refusal == WriteRefusal::kSourceHoldsMore;
  Complain(FormatText(holdsMore ? kTextTargetIsSource : kTextSourceWouldLose, ShownPath(source)));
  return Outcome::kFailed;
}

// Targets that are no file get links.
Outcome ConversionRun::WriteLinks(const WideString& source, const WideString& target) {
  std::vector<std::string> links;
  m_context.takeLink = [&links](const std::string& link) {
    links.push_back(link);
    return uint32_t{kStatusSuccess};
  };
  LoadUserSettings();
  m_context.linkOptions = LinkOptionsFor(m_options.directions.wishes, CSettings::Instance());
  WriteOptions options;
  options.option = m_option;
  options.silent = true;
  const WideString from = ShownName(source, kTextStandardInput);
  m_front.SetSubject(from);
  const TripWrite trip = m_driver.Export(target, m_row, options);
  m_context.takeLink = {};
  const bool isSaved = MakesFile() && target != kStream && !m_options.check;
  const WideString shown = isSaved ? target : WideString();
  const Outcome outcome = trip.status != kStatusSuccess ? Outcome::kFailed
                          : isSaved                     ? SaveLinks(target, links)
                                                        : Outcome::kConverted;
  if (outcome != Outcome::kConverted) {
    PrintFailure(from, shown, trip.status != kStatusSuccess ? trip.status : kStatusFailure);
    return outcome;
  }
  if (m_options.json) {
    m_outputFailed = !PrintJsonLinks(from, shown, links) || m_outputFailed;
  } else if (m_options.check) {
    if (!m_options.quiet) ::Complain(FormatText(kTextOnlyWritten, FormatLabel(m_row)));
  } else if (!isSaved) {
    m_outputFailed = !PrintLinks(links) || m_outputFailed;
  }
  // Of a folder they would be too many.
  const bool opens = !MakesFile() && !m_isOneOfMany && !m_options.check;
  if (opens && OpenLinks(links) != kStatusSuccess && !m_options.quiet)
    ::Complain(FormatText(kTextLinksNotOpened));
  return outcome;
}

Outcome ConversionRun::SaveLinks(const WideString& target, const std::vector<std::string>& links) {
  if (!m_options.force && !m_files->MayWrite(target)) {
    Complain(FormatText(m_isOneOfMany ? kTextFileKept : kTextSourceWouldLose, ShownPath(target)));
    return m_isOneOfMany ? Outcome::kKept : Outcome::kFailed;
  }
  const InterruptionScope interrupt;
  const uint32_t error = ::SaveLinks(target, links);
  if (error == kStatusSuccess) return Outcome::kConverted;
  m_front.SetSubject(target);
  m_front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, {.platformError = error});
  return Outcome::kFailed;
}

void ConversionRun::TellCheck(const WideString& source, const WideString& target,
                              const LossCheck& check) {
  if (m_options.json) {
    OutputSink sink;
    WriteJsonCheck(sink, source, target, check);
    sink.Put('\n');
    m_outputFailed = !sink.Finish() || m_outputFailed;
  } else if (!m_options.quiet && (!m_isOneOfMany || check.IsWorthTelling())) {
    WriteError(DescribeCheck(source, target, check));
  }
}

// One line for other programs, as of the files that were converted.
void ConversionRun::PrintFailure(const WideString& source, const WideString& target,
                                 uint32_t status) {
  if (!m_options.json) return;
  OutputSink sink;
  WriteJsonFailure(sink, source, target, status,
                   m_front.Message().empty() ? m_error : m_front.Message());
  sink.Put('\n');
  m_outputFailed = !sink.Finish() || m_outputFailed;
}

bool ConversionRun::Complain(const std::string& message) {
  m_error = message;
  ::Complain(message);
  return false;
}

void ConversionRun::ShowProgress(size_t done, size_t count) const {
  if (m_options.quiet || !IsErrorTerminal()) return;
  WriteError(count == 0 ? std::string("\r\x1B[K") : fmt::format("\r\x1B[K{}/{}\r", done, count));
}
