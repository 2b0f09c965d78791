#include "app/unattended_conversion.h"

#include <string>

#include "app/console_front.h"
#include "app/console_text.h"
#include "core/conversion_driver.h"
#include "core/conversion_notes.h"
#include "core/format_search.h"
#include "core/status.h"
#include "core/text.h"
#include "platform/folder.h"
#include "platform/last_error.h"

namespace {

constexpr uint32_t kTextCannotBeWritten = 109;

enum class EOutcome { kConverted, kNotRecognised, kFailed };

WideString JoinedPath(const WideString& folder, std::u16string_view name) {
  WideString path = folder;
  if (!path.empty() && path.back() != u'/' && path.back() != kPathSeparator) path += kPathSeparator;
  return path.append(name);
}

/// One run over a file or a folder.
class Conversion {
 public:
  Conversion(const Options& options, const FormatTable& table, const CItineraryFormat& row)
      : m_options(options),
        m_row(row),
        m_front(options),
        m_driver(table, m_front, EChangeTracking::kOff) {}

  int ConvertFile(const WideString& source);
  int ConvertFolder(const WideString& folder);

 private:
  EOutcome Convert(const WideString& source, const WideString& target);
  EOutcome Write(const WideString& source, const WideString& target);
  WideString TargetBeside(const WideString& source) const;
  void ShowProgress(size_t done, size_t count) const;

  const Options& m_options;
  const CItineraryFormat& m_row;
  ConsoleFront m_front;
  CConversionDriver m_driver;
};

// The source's path up to its last dot, and the key's extension. A path without a dot stays whole.
WideString Conversion::TargetBeside(const WideString& source) const {
  const size_t dot = source.rfind(u'.');
  return source.substr(0, dot == WideString::npos ? dot : dot + 1) + m_row.extension;
}

int Conversion::ConvertFile(const WideString& source) {
  WideString target = TargetBeside(source);
  if (FileAttributes(m_options.output) == kAttributeDirectory) {
    target = JoinedPath(m_options.output, FileNameOfPath(target));
  } else if (!m_options.output.empty()) {
    target = m_options.output;
  }
  return Convert(source, target) == EOutcome::kConverted ? kExitConverted : kExitFailed;
}

int Conversion::ConvertFolder(const WideString& folder) {
  std::vector<WideString> names;
  if (ListFolder(folder, names) != kStatusSuccess) {
    Complain(folder, std::string(LoadTextUtf8(kTextReasonSystem)) + FailureReason(folder));
    return kExitFailed;
  }
  if (!m_options.output.empty() && CreateFolders(m_options.output) != kStatusSuccess) {
    Complain(m_options.output,
             std::string(LoadTextUtf8(kTextCannotBeWritten)) + FailureReason(m_options.output));
    return kExitFailed;
  }

  m_front.SetReportsUnknown(!m_options.quiet);
  size_t converted = 0;
  size_t unknown = 0;
  size_t failed = 0;
  for (size_t i = 0; i < names.size(); ++i) {
    ShowProgress(i + 1, names.size());
    const WideString source = JoinedPath(folder, names[i]);
    WideString target = TargetBeside(source);
    if (!m_options.output.empty()) target = JoinedPath(m_options.output, FileNameOfPath(target));
    switch (Convert(source, target)) {
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
  if (!m_options.quiet) Complain(Text(kTextSummary, converted, unknown, failed));
  return failed == 0 && converted > 0 ? kExitConverted : kExitFailed;
}

EOutcome Conversion::Convert(const WideString& source, const WideString& target) {
  m_front.SetSubject(source);
  SetLastError(kStatusSuccess);
  const ConversionNotes notes;
  const uint32_t status = m_driver.OpenFile(source, false, true);
  const uint64_t lookedUp = notes.Count(EConversionNote::kStopLookedUp);
  if (lookedUp > 0) {
    Complain(Text(kTextStopsLookedUp, ShownPath(source), lookedUp,
                  notes.Count(EConversionNote::kStopNotFound)));
  }
  if (status == kStatusBadFormat) return EOutcome::kNotRecognised;
  if (status != kStatusSuccess) return EOutcome::kFailed;
  return Write(source, target);
}

EOutcome Conversion::Write(const WideString& source, const WideString& target) {
  // What was left out of the file would be lost with it.
  if (m_front.LeftListsBehind() && IsSameFile(source, target)) {
    Complain(Text(kTextTargetIsSource, ShownPath(source)));
    return EOutcome::kFailed;
  }
  m_front.SetSubject(target);
  SetLastError(kStatusSuccess);
  const ConversionNotes notes;
  const uint32_t status = m_driver.ExportTo(target, m_row, true, m_options.split);
  const uint64_t countries = notes.Count(EConversionNote::kCountryNotFound);
  if (countries > 0) Complain(Text(kTextCountriesNotFound, ShownPath(target), countries));
  if (status != kStatusSuccess) return EOutcome::kFailed;
  // Some devices' writers call it a success when a file could not be made. We don't.
  if (LastError() != kStatusSuccess) {
    m_front.ShowMessage(EMessageIcon::kError, kTextCannotBeWritten);
    return EOutcome::kFailed;
  }
  return EOutcome::kConverted;
}

void Conversion::ShowProgress(size_t done, size_t count) const {
  if (m_options.quiet || !IsErrorTerminal()) return;
  WriteError(count == 0 ? std::string("\r\x1B[K") : fmt::format("\r\x1B[K{}/{} ", done, count));
}

}  // namespace

int RunConversion(const Options& options, const FormatTable& table) {
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
  const uint32_t attributes = FileAttributes(source);
  if (attributes == kNoAttributes) {
    Complain(Text(kTextNoSource, ShownPath(source)));
    return kExitWrongUsage;
  }
  Conversion conversion(options, table, *row);
  return attributes == kAttributeDirectory ? conversion.ConvertFolder(source)
                                           : conversion.ConvertFile(source);
}
