#include "app/conversion_run.h"

#include <set>
#include <string>

#include "app/console_text.h"
#include "app/list_operations.h"
#include "app/loss_description.h"
#include "app/output_sink.h"
#include "app/unattended_conversion.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/content_search.h"
#include "conversion/format_search.h"
#include "markup/json_string.h"
#include "platform/folder.h"
#include "platform/interrupt.h"

namespace {

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
      m_front(options),
      m_driver(table, m_front, context, ChangeTracking::kOff) {}

// The source's path up to its last dot, and the key's extension. A path without a dot stays whole.
WideString ConversionRun::TargetBeside(const WideString& source) const {
  const size_t dot = source.rfind(u'.');
  return source.substr(0, dot == WideString::npos ? dot : dot + 1) + m_row.extension;
}

// What came as a stream goes on as one.
WideString ConversionRun::TargetOfOne(const WideString& source) const {
  const bool isStream = source == kStream;
  if (m_options.output.empty()) return isStream ? WideString(kStream) : TargetBeside(source);
  if (FileAttributes(m_options.output) != kAttributeDirectory) return m_options.output;
  const WideString name = isStream ? WideString(u"stdin.") + m_row.extension : TargetBeside(source);
  return JoinedPath(m_options.output, NameIn(name));
}

int ConversionRun::ConvertOne(const WideString& source) {
  const WideString target = TargetOfOne(source);
  if (!m_options.check) ClearUnfinishedFiles(FolderOf(target));
  Count(Convert(source, target));
  return ExitStatus();
}

int ConversionRun::Merge(const std::vector<WideString>& sources) {
  const WideString target = TargetOfOne(sources.front());
  if (!m_options.check) ClearUnfinishedFiles(FolderOf(target));
  bool append = false;
  for (const WideString& source : sources) {
    const uint32_t status = Read(source, append);
    if (status != kStatusSuccess) {
      Count(FinishRead(source, status));
      PrintFailure(ShownName(source, kTextStandardInput), target, status);
      return ExitStatus();
    }
    append = true;
  }
  Count(Write(sources.front(), target));
  return ExitStatus();
}

int ConversionRun::ConvertEach(const std::vector<ConversionSource>& sources) {
  using Replaces = FilesOfRun::Replaces;
  FilesOfRun files(m_options.output.empty() ? Replaces::kNothing : Replaces::kAllButSources);
  std::set<WideString> folders;
  // Trips of several formats may have one name, which then leads them to one target.
  std::set<WideString> taken;
  for (const ConversionSource& source : sources) {
    files.AddSource(source.path);
    taken.insert(source.path);
  }
  m_filesOfRun = &files;
  m_front.SetReportsUnknown(!m_options.quiet);
  m_inFolder = true;
  for (size_t i = 0; i < sources.size() && !InterruptScope::IsPending(); ++i) {
    ShowProgress(i + 1, sources.size());
    const WideString& source = sources[i].path;
    WideString target = TargetBeside(source);
    if (!m_options.output.empty()) {
      const WideString folder = sources[i].below.empty()
                                    ? m_options.output
                                    : JoinedPath(m_options.output, sources[i].below);
      target = JoinedPath(folder, NameIn(target));
      if (!m_options.check && folders.insert(folder).second) CreateFolders(folder);
    }
    if (!m_options.check && folders.insert(FolderOf(target)).second)
      ClearUnfinishedFiles(FolderOf(target));
    const Outcome outcome = Convert(source, target);
    const bool isConverted = outcome == Outcome::kConverted || outcome == Outcome::kWithLosses;
    if (isConverted && target != source && !taken.insert(target).second && !m_options.quiet)
      Complain(FormatText(kTextReplacedInFolder, ShownPath(target), ShownPath(source)));
    Count(outcome);
  }
  ShowProgress(0, 0);
  m_filesOfRun = nullptr;
  SyncWhatWasWritten(folders);
  if (!m_options.quiet) TellCounts();
  return ExitStatus();
}

// Many new files go to the disk together, which takes no longer than for one of them.
void ConversionRun::SyncWhatWasWritten(const std::set<WideString>& folders) {
  if (m_options.noSync || m_options.check || m_converted == 0) return;
  for (const WideString& folder : folders) {
    const uint32_t error = SyncFileSystem(folder);
    if (error == kStatusSuccess) continue;
    m_front.SetSubject(folder);
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, {error, 0, 0, {}});
    Count(Outcome::kFailed);
  }
}

void ConversionRun::Count(Outcome outcome) {
  switch (outcome) {
    case Outcome::kWithLosses:
      ++m_withLosses;
      [[fallthrough]];
    case Outcome::kConverted:
      ++m_converted;
      break;
    case Outcome::kNotRecognised:
      ++m_unknown;
      break;
    case Outcome::kKept:
      ++m_kept;
      break;
    case Outcome::kFailed:
      ++m_failed;
      break;
  }
}

void ConversionRun::TellCounts() const {
  std::string line = FormatText(kTextSummary, m_converted, m_unknown, m_failed);
  if (m_kept > 0) line += ", " + FormatText(kTextKeptCount, m_kept);
  ::Complain(line);
  if (m_withLosses > 0) ::Complain(FormatText(kTextFilesWithLosses, m_withLosses));
}

int ConversionRun::ExitStatus() const {
  if (m_failed > 0 || m_kept > 0 || m_converted == 0 || m_outputFailed) return kExitFailed;
  return m_options.strict && m_withLosses > 0 ? kExitLosses : kExitConverted;
}

ConversionRun::Outcome ConversionRun::Convert(const WideString& source, const WideString& target) {
  const uint32_t status = Read(source, false);
  if (status == kStatusSuccess) return Write(source, target);
  const Outcome outcome = FinishRead(source, status);
  PrintFailure(ShownName(source, kTextStandardInput), ShownName(target, kTextStandardOutput),
               status);
  return outcome;
}

uint32_t ConversionRun::Read(const WideString& source, bool append) {
  m_error.clear();
  m_front.SetSubject(ShownName(source, kTextStandardInput));
  ReadOptions options;
  options.silent = true;
  options.key = m_options.from;
  options.byContent = !m_inFolder;
  if (source != kStream) return m_driver.Open(source, append, options);
  std::string bytes;
  if (const uint32_t error = ReadInput(bytes)) {
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeRead, {error, 0, 0, {}});
    return kStatusFailure;
  }
  return m_driver.OpenBytes(bytes, append, options);
}

// What came of a read that has failed.
ConversionRun::Outcome ConversionRun::FinishRead(const WideString& source, uint32_t status) {
  if (InterruptScope::IsPending()) return Outcome::kFailed;
  TellLookups(source);
  if (m_front.Declined()) {
    Complain(FormatText(kTextNoSuchList, m_options.lists.text,
                        ShownPath(ShownName(source, kTextStandardInput))));
    return Outcome::kFailed;
  }
  if (status != kStatusBadFormat) return Outcome::kFailed;
  if (HasNoExtension(source) && m_options.from.empty() && !m_inFolder)
    Complain(FormatText(kTextContentUnknown, ShownPath(ShownName(source, kTextStandardInput))));
  return Outcome::kNotRecognised;
}

void ConversionRun::TellLookups(const WideString& source) {
  const uint64_t lookedUp = m_driver.readNotes.Count(ConversionNote::kStopLookedUp);
  if (lookedUp == 0 || m_options.quiet) return;
  Complain(FormatText(kTextStopsLookedUp, ShownPath(source), lookedUp,
                      m_driver.readNotes.Count(ConversionNote::kStopNotFound)));
}

ConversionRun::Outcome ConversionRun::Write(const WideString& source, const WideString& target) {
  const WideString from = ShownName(source, kTextStandardInput);
  TellLookups(from);
  WriteOptions options;
  const size_t count = m_driver.current.Count();
  ApplyListOperations(m_options.operations, from, m_options.quiet, m_driver.current);
  options.leavesPointsOut = m_driver.current.Count() < count;
  options.option = m_option;
  options.silent = true;
  options.checks = !m_options.quiet || m_options.json || m_options.strict || m_options.check;
  options.keepsNothing = m_options.check;
  options.force = m_options.force;
  options.run = m_options.force ? nullptr : m_filesOfRun;
  options.durability = m_options.noSync ? Durability::kLeftToTheSystem
                       : m_inFolder     ? Durability::kSyncedTogether
                                        : Durability::kSynced;
  const WideString shown = ShownName(target, kTextStandardOutput);
  m_front.SetSubject(shown);
  if (target != kStream) return Finish(from, shown, m_driver.Export(target, m_row, options));
  if (m_options.check) {
    const WideString name = WideString(u"stdout.") + m_row.extension;
    return Finish(from, shown, m_driver.Export(name, m_row, options));
  }
  OutputSink sink;
  const TripWrite trip = m_driver.Stream(sink, m_row, options);
  m_outputFailed = !sink.Finish() || m_outputFailed;
  return Finish(from, shown, trip);
}

ConversionRun::Outcome ConversionRun::Finish(const WideString& source, const WideString& target,
                                             const TripWrite& trip) {
  // What was not done because the user interrupted it is no finding.
  if (InterruptScope::IsPending()) return Outcome::kFailed;
  const uint64_t countries = trip.notes.Count(ConversionNote::kCountryNotFound);
  if (countries > 0 && !m_options.quiet)
    Complain(FormatText(kTextCountriesNotFound, ShownPath(target), countries));
  const bool isWritten = trip.status == kStatusSuccess;
  if (trip.check && (isWritten || !m_options.json)) TellCheck(source, target, *trip.check);
  Outcome outcome = Outcome::kFailed;
  if (trip.refusal != WriteRefusal::kNone) outcome = TellRefusal(source, trip);
  if (!isWritten) {
    PrintFailure(source, target, trip.status);
    return outcome;
  }
  return trip.check && trip.check->HasLosses() ? Outcome::kWithLosses : Outcome::kConverted;
}

ConversionRun::Outcome ConversionRun::TellRefusal(const WideString& source, const TripWrite& trip) {
  if (trip.refusal == WriteRefusal::kKept) {
    Complain(FormatText(kTextFileKept, ShownPath(trip.refusedFile)));
    return Outcome::kKept;
  }
  const bool holdsMore = trip.refusal == WriteRefusal::kSourceHoldsMore;
  Complain(FormatText(holdsMore ? kTextTargetIsSource : kTextSourceWouldLose, ShownPath(source)));
  return Outcome::kFailed;
}

void ConversionRun::TellCheck(const WideString& source, const WideString& target,
                              const LossCheck& check) {
  if (m_options.json) {
    OutputSink sink;
    WriteJsonCheck(sink, source, target, check);
    sink.Put('\n');
    m_outputFailed = !sink.Finish() || m_outputFailed;
  } else if (!m_options.quiet && (!m_inFolder || check.HasLosses())) {
    WriteError(DescribeCheck(source, target, check));
  }
}

// One line for other programs, as of the files that were converted.
void ConversionRun::PrintFailure(const WideString& source, const WideString& target,
                                 uint32_t status) {
  if (!m_options.json || InterruptScope::IsPending()) return;
  OutputSink sink;
  sink.Write("{\"source\": ");
  WriteJsonString(sink, ShownPath(source));
  sink.Write(", \"target\": ");
  WriteJsonString(sink, ShownPath(target));
  sink.Printf(", \"status\": %u, \"error\": ", status);
  WriteJsonString(sink, m_front.Message().empty() ? m_error : m_front.Message());
  sink.Write("}\n");
  m_outputFailed = !sink.Finish() || m_outputFailed;
}

void ConversionRun::Complain(const std::string& message) {
  m_error = message;
  ::Complain(message);
}

void ConversionRun::ShowProgress(size_t done, size_t count) const {
  if (m_options.quiet || !IsErrorTerminal()) return;
  WriteError(count == 0 ? std::string("\r\x1B[K") : fmt::format("\r\x1B[K{}/{}\r", done, count));
}
