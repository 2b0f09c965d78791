#include "app/unattended_conversion.h"

#include <set>
#include <string>

#include "app/console_front.h"
#include "app/console_text.h"
#include "app/loss_check.h"
#include "app/output_sink.h"
#include "base/status.h"
#include "base/text.h"
#include "conversion/conversion_driver.h"
#include "conversion/format_search.h"
#include "platform/folder.h"
#include "platform/scratch_folder.h"

namespace {

constexpr uint32_t kTextCannotBeRead = 108;
constexpr uint32_t kTextCannotBeWritten = 109;

enum class EOutcome { kConverted, kWithLosses, kNotRecognised, kFailed };

WideString JoinedPath(const WideString& folder, std::u16string_view name) {
  WideString path = folder;
  if (!path.empty() && path.back() != u'/' && path.back() != kPathSeparator) path += kPathSeparator;
  return path.append(name);
}

// What stands behind the folder in a path, whole: two names may differ in front of a backslash.
std::u16string_view NameIn(std::u16string_view path) {
  return path.substr(path.find_last_of(kPathSeparators) + 1);
}

/// One run over a file or a folder.
class Conversion {
 public:
  Conversion(const Options& options, const FormatTable& table, const CItineraryFormat& row,
             ConversionContext& context)
      : m_options(options),
        m_row(row),
        m_context(context),
        m_front(options),
        m_driver(table, m_front, context, ChangeTracking::kOff) {}

  int ConvertFile(const WideString& source);
  int ConvertFolder(const WideString& folder);

 private:
  EOutcome Convert(const WideString& source, const WideString& target);
  EOutcome Write(const WideString& target, ConversionCheck& check);
  void Tell(const ConversionCheck& check);
  int ExitStatus(size_t converted, size_t withLosses, size_t failed) const;
  WideString TargetBeside(const WideString& source) const;
  void ShowProgress(size_t done, size_t count) const;

  const Options& m_options;
  const CItineraryFormat& m_row;
  ConversionContext& m_context;
  ConsoleFront m_front;
  CConversionDriver m_driver;
  bool m_inFolder = false;
  bool m_outputFailed = false;
};

// The source's path up to its last dot, and the key's extension. A path without a dot stays whole.
WideString Conversion::TargetBeside(const WideString& source) const {
  const size_t dot = source.rfind(u'.');
  return source.substr(0, dot == WideString::npos ? dot : dot + 1) + m_row.extension;
}

int Conversion::ConvertFile(const WideString& source) {
  WideString target = TargetBeside(source);
  if (FileAttributes(m_options.output) == kAttributeDirectory) {
    target = JoinedPath(m_options.output, NameIn(target));
  } else if (!m_options.output.empty()) {
    target = m_options.output;
  }
  const EOutcome outcome = Convert(source, target);
  const bool withLosses = outcome == EOutcome::kWithLosses;
  return ExitStatus(withLosses || outcome == EOutcome::kConverted ? 1 : 0, withLosses ? 1 : 0, 0);
}

int Conversion::ExitStatus(size_t converted, size_t withLosses, size_t failed) const {
  if (failed > 0 || converted == 0 || m_outputFailed) return kExitFailed;
  return m_options.strict && withLosses > 0 ? kExitLosses : kExitConverted;
}

int Conversion::ConvertFolder(const WideString& folder) {
  std::vector<WideString> names;
  if (const uint32_t error = ListFolder(folder, names)) {
    // That it is a folder is no reason here.
    Complain(folder,
             std::string(LoadTextUtf8(kTextCannotBeRead)) + DescribeReason(error, WideString()));
    return kExitFailed;
  }
  const uint32_t error = m_options.output.empty() ? 0 : CreateFolders(m_options.output);
  if (error != kStatusSuccess) {
    std::string reason = DescribeReason(error, m_options.output);
    if (FileAttributes(m_options.output) == kAttributeNormal)
      reason = " " + Text(kTextReason, LoadTextUtf8(kTextReasonFile));
    Complain(m_options.output, std::string(LoadTextUtf8(kTextCannotBeWritten)) + reason);
    return kExitFailed;
  }

  m_front.SetReportsUnknown(!m_options.quiet);
  m_inFolder = true;
  size_t converted = 0;
  size_t withLosses = 0;
  size_t unknown = 0;
  size_t failed = 0;
  // Trips of several formats may have one name, which then leads them to one target.
  std::set<WideString> taken;
  for (const WideString& name : names) taken.insert(JoinedPath(folder, name));
  for (size_t i = 0; i < names.size(); ++i) {
    ShowProgress(i + 1, names.size());
    const WideString source = JoinedPath(folder, names[i]);
    WideString target = TargetBeside(source);
    if (!m_options.output.empty()) target = JoinedPath(m_options.output, NameIn(target));
    const EOutcome outcome = Convert(source, target);
    const bool isConverted = outcome == EOutcome::kConverted || outcome == EOutcome::kWithLosses;
    if (isConverted && target != source && !taken.insert(target).second && !m_options.quiet)
      Complain(Text(kTextReplacedInFolder, ShownPath(target), ShownPath(source)));
    switch (outcome) {
      case EOutcome::kWithLosses:
        ++withLosses;
        [[fallthrough]];
      case EOutcome::kConverted:
        ++converted;
        break;
      case EOutcome::kNotRecognised:
        ++unknown;
        break;
      case EOutcome::kFailed:
        ++failed;
        break;
    }
  }
  ShowProgress(0, 0);
  if (!m_options.quiet) {
    Complain(Text(kTextSummary, converted, unknown, failed));
    if (withLosses > 0) Complain(Text(kTextFilesWithLosses, withLosses));
  }
  return ExitStatus(converted, withLosses, failed);
}

EOutcome Conversion::Convert(const WideString& source, const WideString& target) {
  m_front.SetSubject(source);
  const uint32_t status = m_driver.OpenFile(source, false, true);
  const ConversionNotes& notes = m_context.notes;
  const uint64_t lookedUp = notes.Count(ConversionNote::kStopLookedUp);
  if (lookedUp > 0 && !m_options.quiet) {
    Complain(Text(kTextStopsLookedUp, ShownPath(source), lookedUp,
                  notes.Count(ConversionNote::kStopNotFound)));
  }
  if (status != kStatusSuccess && m_front.Declined()) {
    Complain(Text(kTextNoSuchList, m_options.lists.text, ShownPath(source)));
    return EOutcome::kFailed;
  }
  if (status == kStatusBadFormat) return EOutcome::kNotRecognised;
  if (status != kStatusSuccess) return EOutcome::kFailed;

  ConversionCheck check;
  check.source = source;
  check.target = target;
  check.listsMerged = m_front.ListsTaken() > 1 ? m_front.ListsTaken() : 0;
  TakeReaderNotes(notes, check);
  if (!m_options.check) return Write(target, check);
  // Nothing of the target is to stay: it is written into a folder of its own that goes again.
  const ScratchFolder scratch;
  if (scratch.Path().empty()) {
    m_front.SetSubject(target);
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, {scratch.Status(), 0, 0, {}});
    return EOutcome::kFailed;
  }
  return Write(JoinedPath(scratch.Path(), NameIn(target)), check);
}

EOutcome Conversion::Write(const WideString& target, ConversionCheck& check) {
  // What was left out of the file would be lost with it.
  if (m_front.LeftListsBehind() && IsSameFile(check.source, target)) {
    Complain(Text(kTextTargetIsSource, ShownPath(check.source)));
    return EOutcome::kFailed;
  }
  m_front.SetSubject(target);
  const uint32_t status = m_driver.ExportTo(target, m_row, true, m_options.split);
  const uint64_t countries = m_context.notes.Count(ConversionNote::kCountryNotFound);
  if (countries > 0 && !m_options.quiet)
    Complain(Text(kTextCountriesNotFound, ShownPath(target), countries));
  if (status != kStatusSuccess) return EOutcome::kFailed;
  // Some devices' writers call it a success when a file could not be made. We don't.
  if (m_context.failure.platformError != kStatusSuccess) {
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, m_context.failure);
    return EOutcome::kFailed;
  }

  if (m_options.quiet && !m_options.strict && !m_options.check) return EOutcome::kConverted;
  CheckWrittenFiles(m_driver.table, m_row, m_context.writtenFiles, m_driver.current, m_context,
                    check);
  Tell(check);
  return check.HasLosses() ? EOutcome::kWithLosses : EOutcome::kConverted;
}

void Conversion::Tell(const ConversionCheck& check) {
  if (m_options.json) {
    OutputSink sink;
    WriteJsonCheck(sink, check);
    sink.Put('\n');
    m_outputFailed = !sink.Finish() || m_outputFailed;
  } else if (!m_options.quiet && (!m_inFolder || check.HasLosses())) {
    WriteError(DescribeCheck(check));
  }
}

void Conversion::ShowProgress(size_t done, size_t count) const {
  if (m_options.quiet || !IsErrorTerminal()) return;
  WriteError(count == 0 ? std::string("\r\x1B[K") : fmt::format("\r\x1B[K{}/{}\r", done, count));
}

}  // namespace

int RunConversion(const Options& options, const FormatTable& table, ConversionContext& context) {
  const WideString& source = options.tokens[0];
  const WideString& key = options.tokens[1];
  const CItineraryFormat* row = FindWriter(table, ToLowerAscii(key));
  if (!row) {
    Complain(Text(kTextUnknownKey, ShownPath(key)));
    return kExitWrongUsage;
  }
  if (IsPseudoFormat(*row)) {
    Complain(Text(kTextNoFileFormat, ShownPath(key)));
    return kExitWrongUsage;
  }
  uint32_t error = kStatusSuccess;
  const uint32_t attributes = FileAttributes(source, &error);
  if (attributes == kNoAttributes && error == kStatusFileNotFound) {
    Complain(Text(kTextNoSource, ShownPath(source)));
    return kExitWrongUsage;
  }
  // Never destroyed: to free a million points one by one takes longer than to end the process.
  static auto* const conversion = new Conversion(options, table, *row, context);
  return attributes == kAttributeDirectory ? conversion->ConvertFolder(source)
                                           : conversion->ConvertFile(source);
}
