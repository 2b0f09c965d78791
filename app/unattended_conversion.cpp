#include "app/unattended_conversion.h"

#include <set>
#include <string>

#include "app/console_front.h"
#include "app/console_text.h"
#include "app/list_operations.h"
#include "app/loss_description.h"
#include "app/output_sink.h"
#include "base/format_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/conversion_driver.h"
#include "conversion/format_search.h"
#include "platform/folder.h"

namespace {

enum class Outcome { kConverted, kWithLosses, kNotRecognised, kFailed };

/// One run over a file or a folder.
class Conversion {
 public:
  Conversion(const Options& options, const FormatTable& table, const CItineraryFormat& row,
             ConversionContext& context)
      : m_options(options),
        m_row(row),
        m_front(options),
        m_driver(table, m_front, context, ChangeTracking::kOff) {}

  int ConvertFile(const WideString& source);
  int ConvertFolder(const WideString& folder);

 private:
  Outcome Convert(const WideString& source, const WideString& target);
  Outcome Write(const WideString& source, const WideString& target);
  void Tell(const WideString& source, const WideString& target, const LossCheck& check);
  int ExitStatus(size_t converted, size_t withLosses, size_t failed) const;
  WideString TargetBeside(const WideString& source) const;
  void ShowProgress(size_t done, size_t count) const;

  const Options& m_options;
  const CItineraryFormat& m_row;
  ConsoleFront m_front;
  ConversionDriver m_driver;
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
  const Outcome outcome = Convert(source, target);
  const bool withLosses = outcome == Outcome::kWithLosses;
  return ExitStatus(withLosses || outcome == Outcome::kConverted ? 1 : 0, withLosses ? 1 : 0, 0);
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
      reason = " " + FormatText(kTextReason, LoadTextUtf8(kTextReasonFile));
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
    const Outcome outcome = Convert(source, target);
    const bool isConverted = outcome == Outcome::kConverted || outcome == Outcome::kWithLosses;
    if (isConverted && target != source && !taken.insert(target).second && !m_options.quiet)
      Complain(FormatText(kTextReplacedInFolder, ShownPath(target), ShownPath(source)));
    switch (outcome) {
      case Outcome::kWithLosses:
        ++withLosses;
        [[fallthrough]];
      case Outcome::kConverted:
        ++converted;
        break;
      case Outcome::kNotRecognised:
        ++unknown;
        break;
      case Outcome::kFailed:
        ++failed;
        break;
    }
  }
  ShowProgress(0, 0);
  if (!m_options.quiet) {
    Complain(FormatText(kTextSummary, converted, unknown, failed));
    if (withLosses > 0) Complain(FormatText(kTextFilesWithLosses, withLosses));
  }
  return ExitStatus(converted, withLosses, failed);
}

Outcome Conversion::Convert(const WideString& source, const WideString& target) {
  m_front.SetSubject(source);
  const uint32_t status = m_driver.OpenFile(source, false, true);
  const uint64_t lookedUp = m_driver.readNotes.Count(ConversionNote::kStopLookedUp);
  if (lookedUp > 0 && !m_options.quiet) {
    Complain(FormatText(kTextStopsLookedUp, ShownPath(source), lookedUp,
                        m_driver.readNotes.Count(ConversionNote::kStopNotFound)));
  }
  if (status != kStatusSuccess && m_front.Declined()) {
    Complain(FormatText(kTextNoSuchList, m_options.lists.text, ShownPath(source)));
    return Outcome::kFailed;
  }
  if (status == kStatusBadFormat) return Outcome::kNotRecognised;
  if (status != kStatusSuccess) return Outcome::kFailed;
  ApplyListOperations(m_options.operations, source, m_options.quiet, m_driver.current);
  return Write(source, target);
}

Outcome Conversion::Write(const WideString& source, const WideString& target) {
  WriteOptions options;
  options.option = m_options.split;
  options.silent = true;
  options.checks = !m_options.quiet || m_options.strict || m_options.check;
  options.keepsNothing = m_options.check;
  m_front.SetSubject(target);
  const TripWrite trip = m_driver.Export(target, m_row, options);
  if (trip.refusal == WriteRefusal::kSourceHoldsMore)
    Complain(FormatText(kTextTargetIsSource, ShownPath(source)));
  const uint64_t countries = trip.notes.Count(ConversionNote::kCountryNotFound);
  if (countries > 0 && !m_options.quiet)
    Complain(FormatText(kTextCountriesNotFound, ShownPath(target), countries));
  if (trip.status != kStatusSuccess) return Outcome::kFailed;
  if (!trip.check) return Outcome::kConverted;
  Tell(source, target, *trip.check);
  return trip.check->HasLosses() ? Outcome::kWithLosses : Outcome::kConverted;
}

void Conversion::Tell(const WideString& source, const WideString& target, const LossCheck& check) {
  if (m_options.json) {
    OutputSink sink;
    WriteJsonCheck(sink, source, target, check);
    sink.Put('\n');
    m_outputFailed = !sink.Finish() || m_outputFailed;
  } else if (!m_options.quiet && (!m_inFolder || check.HasLosses())) {
    WriteError(DescribeCheck(source, target, check));
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
    Complain(FormatText(kTextUnknownKey, ShownPath(key)));
    return kExitWrongUsage;
  }
  if (IsPseudoFormat(*row)) {
    Complain(FormatText(kTextNoFileFormat, ShownPath(key)));
    return kExitWrongUsage;
  }
  uint32_t error = kStatusSuccess;
  const uint32_t attributes = FileAttributes(source, &error);
  if (attributes == kNoAttributes && error == kStatusFileNotFound) {
    Complain(FormatText(kTextNoSource, ShownPath(source)));
    return kExitWrongUsage;
  }
  // Never destroyed: to free a million points one by one takes longer than to end the process.
  static auto* const conversion = new Conversion(options, table, *row, context);
  return attributes == kAttributeDirectory ? conversion->ConvertFolder(source)
                                           : conversion->ConvertFile(source);
}
