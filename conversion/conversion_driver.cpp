#include "conversion/conversion_driver.h"

#include <algorithm>
#include <utility>

#include "base/localized_text.h"
#include "base/status.h"
#include "base/text.h"
#include "base/text_ids.h"
#include "conversion/format_search.h"
#include "conversion/read_trip.h"

namespace {

// More points than this make the editor slow.
constexpr size_t kManyPoints = 300;
// Longer names are cut when an itinerary is exported.
constexpr size_t kLongestName = 250;
constexpr size_t kLongestDroppedPath = 260;

// A button's text as the title of the dialog behind it.
WideString TitleOf(uint32_t textId) {
  WideString title = LoadText(textId);
  std::erase(title, u'&');
  return title;
}

// The message for a status of a read; 0 for none.
uint32_t ReadFailureText(uint32_t status) {
  switch (status) {
    case kStatusSuccess:
    case kStatusDeclined:
    case kStatusCancelled:
      return 0;
    case kStatusSharingViolation:
    case kStatusStorageSharing:
      return kTextAlreadyOpened;
    case kStatusBadFormat:
      return kTextUnknownFormat;
    default:
      return kTextCannotBeRead;
  }
}

/// The front is busy as long as this lives.
class BusyScope {
 public:
  explicit BusyScope(ConversionFront& front) : m_front(front) { m_front.SetBusy(true); }
  ~BusyScope() { m_front.SetBusy(false); }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  ConversionFront& m_front;
};

}  // namespace

ConversionDriver::ConversionDriver(FormatTable formats, ConversionFront& front,
                                   ConversionContext& context, ChangeTracking tracking)
    : table(std::move(formats)), m_front(front), m_context(context), m_tracking(tracking) {}

uint32_t ConversionDriver::OpenFile(const WideString& path, bool append, bool silent) {
  ReadOptions options;
  options.silent = silent;
  return Open(path, append, options);
}

uint32_t ConversionDriver::Open(const WideString& path, bool append, const ReadOptions& options) {
  return Read(path, append, options, [this, &path](const ReadOptions& next) {
    return ReadTrip(table, path, m_context, next);
  });
}

uint32_t ConversionDriver::OpenBytes(std::string_view bytes, bool append,
                                     const ReadOptions& options) {
  return Read(WideString(), append, options, [this, bytes](const ReadOptions& next) {
    return ReadTripBytes(table, bytes, m_context, next);
  });
}

// Where the user wants none of a reader's lists, the next one may see others in the file.
template <typename ReadNext>
uint32_t ConversionDriver::Read(const WideString& path, bool append, ReadOptions options,
                                ReadNext readNext) {
  readNotes = {};
  uint32_t status = kStatusBadFormat;
  FailureReason reason;
  {
    const BusyScope busy(m_front);
    do {
      TripRead trip;
      m_front.Run([&] { trip = readNext(options); });
      if (options.after && !trip.row) break;
      options.after = trip.row;
      status = trip.status == kStatusSuccess ? MergeLists(trip, path, append) : trip.status;
      readNotes.Add(trip.notes);
      reason = trip.reason;
    } while (status == kStatusDeclined && options.after);
  }
  return Report(status, reason, path, append);
}

uint32_t ConversionDriver::MergeLists(TripRead& trip, const WideString& path, bool append) {
  const std::vector<size_t> chosen = m_front.ChooseLists(trip.lists);
  if (chosen.empty()) return kStatusDeclined;
  if (!append) {
    current.Clear();
    sourcePath.clear();
    m_source = {};
  }
  if (!path.empty()) m_source.paths.push_back(path);
  m_source.listsFound += trip.lists.size();
  m_source.listsTaken += chosen.size();
  m_source.notes.Add(trip.notes);
  m_front.ItineraryCleared();
  for (const size_t index : chosen) {
    CGpsPointArray& list = *trip.lists[index];
    current.TakePoints(list);
    if (current.name.empty()) current.name = list.name;
  }
  return kStatusSuccess;
}

uint32_t ConversionDriver::Report(uint32_t status, const FailureReason& reason,
                                  const WideString& path, bool append) {
  if (status == kStatusSuccess) return ReportSuccess(path, append);
  if (const uint32_t textId = ReadFailureText(status))
    m_front.ShowMessage(MessageIcon::kError, textId, reason);
  return status;
}

uint32_t ConversionDriver::ReportSuccess(const WideString& path, bool append) {
  if (!m_context.lookups.lastForRun) m_context.lookups.answers->Clear();
  if (current.points.empty()) {
    m_front.ShowMessage(MessageIcon::kWarning, kTextNoItinerary, {});
    return kStatusFailure;
  }
  if (current.Count() > kManyPoints && m_front.HasEditor() &&
      !m_front.AskYesNo(MessageIcon::kWarning, kTextManyPoints)) {
    return kStatusDeclined;
  }
  if (!append) {
    sourcePath = path;
    if (current.name.empty()) current.name = WideToUtf8Lossy(FileTitleOfPath(path));
  }
  RememberState();
  m_front.ItineraryLoaded();
  return kStatusSuccess;
}

uint32_t ConversionDriver::ExportTo(const WideString& path, const CItineraryFormat& row,
                                    bool silent) {
  WriteOptions options;
  options.silent = silent;
  options.force = true;
  return Export(path, row, options).status;
}

TripWrite ConversionDriver::Export(const WideString& path, const CItineraryFormat& row,
                                   const WriteOptions& options) {
  const BusyScope busy(m_front);
  TripWrite trip;
  m_front.Run([&] { trip = WriteTrip(table, row, path, current, m_source, options, m_context); });
  if (trip.status == kStatusSuccess) {
    RememberState();
  } else if (trip.refusal == WriteRefusal::kNone) {
    TellFailure(trip);
  }
  return trip;
}

TripWrite ConversionDriver::Stream(ByteSink& sink, const CItineraryFormat& row,
                                   const WriteOptions& options) {
  const BusyScope busy(m_front);
  TripWrite trip = WriteTripTo(sink, row, current, m_source, options, m_context);
  if (trip.status != kStatusSuccess) TellFailure(trip);
  return trip;
}

void ConversionDriver::TellFailure(const TripWrite& trip) {
  if (trip.status != kStatusCancelled)
    m_front.ShowMessage(MessageIcon::kError, kTextCannotBeWritten, trip.reason);
}

void ConversionDriver::OpenCommand() {
  if (!ConfirmDiscard()) return;
  FileDialog dialog;
  dialog.title = TitleOf(kTextOpen);
  dialog.filter = OpenFilter(table);
  dialog.offersAppend = !current.points.empty();
  if (const auto chosen = m_front.AskOpenFile(dialog))
    OpenFile(chosen->path, chosen->append, false);
}

void ConversionDriver::DropFiles(const std::vector<WideString>& paths) {
  if (paths.empty() || paths.front().size() > kLongestDroppedPath) return;
  OpenFile(paths.front(), false, false);
}

void ConversionDriver::ExportCommand(const CItineraryFormat* row) {
  if (!row) return;
  NameFromField();
  if (IsPseudoFormat(*row)) {
    ExportFromCommand(DefaultExportName(), *row);
    return;
  }
  FileDialog dialog;
  dialog.title = TitleOf(kTextExport);
  dialog.filter = SaveFilter(*row);
  dialog.defaultName = DefaultExportName();
  dialog.defaultExtension = row->extension;
  if (const auto chosen = m_front.AskSaveFile(dialog)) ExportFromCommand(chosen->path, *row);
}

void ConversionDriver::ExportFromCommand(const WideString& path, const CItineraryFormat& row) {
  WriteOptions options;
  options.force = true;
  options.checks = checksExports && row.facts.isFile;
  const TripWrite trip = Export(path, row, options);
  if (exported) exported(path, row, trip);
}

void ConversionDriver::NameFromField() {
  current.name = WideToUtf8Lossy(m_front.NameFieldText().substr(0, kLongestName));
  if (current.name.empty()) current.name = LoadTextUtf8(kTextItinerary);
}

WideString ConversionDriver::DefaultExportName() const {
  WideString fromSource(FileTitleOfPath(sourcePath));
  if (!fromSource.empty()) return fromSource;
  const WideString name = Utf8ToWideLossy(current.name);
  return WideString(FileTitleOfPath(name));
}

void ConversionDriver::InterpretLink(const WideString& text) {
  const auto accepts = [&text](const LinkReader& reader) { return reader.accepts(text); };
  if (std::none_of(linkReaders.begin(), linkReaders.end(), accepts)) return;
  if (!m_front.AskYesNo(MessageIcon::kQuestion, kTextLinkDetected) || !ConfirmDiscard()) return;
  uint32_t status = kStatusBadFormat;
  for (const LinkReader& reader : linkReaders) {
    if (!reader.accepts(text)) continue;
    TripRead trip;
    {
      const BusyScope busy(m_front);
      m_front.Run([&] { trip = ReadTripWith(reader.row, text, m_context, /*silent=*/false); });
      status = trip.status == kStatusSuccess ? MergeLists(trip, WideString(), false) : trip.status;
    }
    status = Report(status, trip.reason, text, false);
  }
  if (status != kStatusSuccess) return;
  sourcePath.clear();
  m_front.NameChanged();
}

bool ConversionDriver::ConfirmDiscard() {
  const bool unchanged = current.name == current.snapshot.name &&
                         std::equal(current.points.begin(), current.points.end(),
                                    current.snapshot.points.begin(), current.snapshot.points.end());
  return unchanged || m_front.AskYesNo(MessageIcon::kWarning, kTextChangesWillBeLost);
}

void ConversionDriver::RememberState() {
  if (m_tracking == ChangeTracking::kOn) current.snapshot.Assign(current);
}
